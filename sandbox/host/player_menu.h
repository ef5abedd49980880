// Chooses from the pop-up menu of the plug-in's player list as a person does: selects the row, opens the menu
// and presses keys. The menu is modal, so the keys follow at a later pulse.
#pragma once

#include <windows.h>

#include "host/text.h"

namespace PlayerMenu {

// Row counts from 1. Error 5 when no interface is shown or it has no such row.
void Open(HWND PluginArea, Long Row, const std::wstring& Caption);

// Called now and then: presses the keys once the menu is there.
void Continue();

} // namespace PlayerMenu
