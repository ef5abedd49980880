// Uses the plug-in's window as a person does, so that a script can show what a click does.
#pragma once

#include <windows.h>

#include "host/text.h"

namespace ShownInterface {

// Selects the row of the player list (from 1), opens its pop-up menu and chooses the entry. The menu is
// modal, so the keys follow at a later pulse. Error 5 when no interface is shown or it has no such row.
void ChooseFromMenu(HWND PluginArea, Long Row, const std::wstring& Caption);
// Called now and then: presses the keys once the menu is there.
void Continue();

// Clicks a tab, counted from 1. Error 5 when no interface is shown or it has no such tab.
void TurnTab(HWND PluginArea, Long Tab);

} // namespace ShownInterface
