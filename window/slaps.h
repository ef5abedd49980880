// The tab "Slap Messages".
#pragma once

#include "host/failure.h"

// Fills the list from the profile's file, which may be missing: then it stays as it is. Reports under its own
// name.
void GetSlaps(Long Index) noexcept;
// Fills the sub-menu "Slap Player" in the same way. Reports under its own name.
void LoadSlapMenu(Long Index) noexcept;
// Empties list, sub-menu and edit box, for another profile.
void ClearSlapTab();
