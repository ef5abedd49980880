// What the host does with a profile: load, hide, disable, unload. The members of clsPlugin report what fails
// here under their names.
#pragma once

#include <cstdint>

#include "plugin/pdat.h"

// Fills the profile's record and arrays from PDAT and rebuilds its memory map. Reports under its own name;
// returns false when it failed.
bool SetProfileData(Long Index, const Pdat& Data) noexcept;

// Embeds the window into the host's window pHwnd and starts the profile's sweep. Index 0 does nothing. Error
// 360, with everything else done, when the sweep runs already; 9 or 13 for PDAT's area, before anything is
// shown.
void LoadInterface(Long Index, std::intptr_t pHwnd, const Pdat& Data);
void HideInterface();
// Discards the per-profile state, unloads the window and takes the packet filter down, whatever the ban
// method. Error 48 or 453, with everything else done, when there is no usable packet filter.
void UnLoadInterface();
// Stops the profile's sweep and clears its working state. Error 9 outside 0 to MaxProfileIndex.
void DisableProfile(Long Index);
