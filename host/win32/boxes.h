// The Windows side of the boxes: their owner, and what must be tidied up.
#pragma once

#include <windows.h>

#include <cstdint>

namespace Platform {

// The window whose top-level ancestor owns boxes and dialogs; 0 is none. Called by the window when it comes
// and before it goes: an error box goes with it.
void SetOwner(std::intptr_t Window) noexcept;
// That ancestor; null when there is none.
HWND BoxOwner() noexcept;

// Takes the error box away, the one that waits and the one that stands.
void CloseErrorBoxes() noexcept;

} // namespace Platform
