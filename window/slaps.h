// The tab "Slap Messages", and the messages in the grid's menu.
#pragma once

#include "host/failure.h"

// Fills the list from the profile's file; a missing file leaves it as it is. Reports under its own name.
void GetSlaps(Long Profile) noexcept;
// Fills the sub-menu "Slap Player" in the same way. Reports under its own name.
void LoadSlapMenu(Long Profile) noexcept;
// Empties list, sub-menu and edit box, for another profile.
void ClearSlapTab();

// The selected message goes into the edit box, and "Edit Slap" becomes enabled.
void lstSlaps_DblClick();
void lstSlaps_Click();
void cmdSlapAdd_MouseUp();
void cmdSlapEdit_MouseUp();
// Error 5 if nothing is selected.
void cmdSlapDelete_MouseUp();
