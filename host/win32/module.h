// The DLL as the loader sees it, and what keeps it loaded.
#pragma once

#include <windows.h>

#include <string>

namespace Module {

// The DLL's own instance, also when it is not the process's.
HINSTANCE Instance() noexcept;
// The full path of the DLL; empty when the system does not say.
std::wstring Path();

// Objects, class-factory locks, the window, and calls on the stack (entry.h): while there is one, the DLL
// must stay.
void AddLock() noexcept;
void RemoveLock() noexcept;
bool IsLocked() noexcept;

} // namespace Module
