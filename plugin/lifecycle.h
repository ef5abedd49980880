// What the host does with a profile: load, hide, disable, unload. Each procedure reports under its own name.
#pragma once

#include <cstdint>

#include "plugin/pdat.h"

// Fills the profile's record and arrays from PDAT and rebuilds its memory map. Answers false when it failed.
bool SetProfileData(Long Index, const Pdat& Data) noexcept;

// Embeds the window into the host's window pHwnd and starts the profile's sweep. Index 0 does nothing.
void LoadInterface(Long Index, std::intptr_t pHwnd, const Pdat& Data) noexcept;
void HideInterface() noexcept;
// Discards the per-profile state, unloads the window and takes the packet filter down, whatever the ban
// method.
void UnLoadInterface() noexcept;
// Stops the profile's sweep and clears its working state.
void DisableProfile(Long Index) noexcept;
