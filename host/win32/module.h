// The DLL as the loader sees it, and what keeps it loaded.
#pragma once

#include <windows.h>

namespace Module {

// The DLL's own instance, also when it is not the process's.
HINSTANCE Instance() noexcept;

// Objects, class-factory locks and open boxes: while there is one, the DLL must stay.
void AddLock() noexcept;
void RemoveLock() noexcept;
bool IsLocked() noexcept;

} // namespace Module
