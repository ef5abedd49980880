// The Windows side of the boxes: their owner, and what must be tidied up.
#pragma once

#include <cstdint>

namespace Platform {

// The window whose top-level ancestor owns result boxes and dialogs; 0 is none. Called by the window when it
// comes and before it goes.
void SetOwner(std::intptr_t Window) noexcept;

// Drops a waiting error box and the hidden window that would have shown it. An open box stays until it is
// closed, and keeps the DLL loaded.
void CloseErrorBoxes() noexcept;

} // namespace Platform
