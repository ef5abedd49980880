// The entries of the two pop-up menus.
#pragma once

#include "host/text.h"

// Pops up ID_mnuMain (the grid's; its player entries only WithPlayers) or ID_mnuBannned (the ban lists'),
// with a check mark on some entries. Returns the identifier of the chosen entry, 0 for none.
int ChooseFromMenu(int Menu, bool WithPlayers, const std::vector<int>& Checked);

// The slap messages in the sub-menu; without any the sub-menu is not in the menu.
void SetSlapItems(Lines Captions);
// The caption of a slap message in full; error 9 if there is no such element.
std::wstring SlapItem(int Element);
