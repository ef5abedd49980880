// The two pop-up menus.
#pragma once

#include "host/text.h"

// Pops a menu (ID_mnuMain, ID_mnuBannned) up and runs what is chosen.
void PopUp(int Menu);

// Whether the entries that need a player are in the grid's menu.
void ShowPlayerEntries(bool On);
// The slap messages in the sub-menu; without any the sub-menu is not in the menu.
void SetSlapItems(Lines Captions);
// The caption of an element in full; error 9 when there is no such element.
std::wstring SlapItem(int Index);

// As before the window was made.
void ForgetMenus() noexcept;
