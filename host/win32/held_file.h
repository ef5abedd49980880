// Files that others hold: scanners, indexers and backup programs open fresh files for moments, without
// sharing.
#pragma once

#include <windows.h>

// Makes the attempt, and makes it again for a tenth of a second while another program holds the file. Returns
// whether one succeeded; if not, the last error is that of the last attempt.
template <class F> bool TryWhileHeld(F&& Attempt) {
    constexpr ULONGLONG Patience = 100; // milliseconds
    constexpr DWORD Pause = 10;
    const ULONGLONG Start = GetTickCount64();
    for (;;) {
        if (Attempt()) return true;
        const DWORD Error = GetLastError();
        if (Error != ERROR_SHARING_VIOLATION && Error != ERROR_LOCK_VIOLATION) return false;
        if (GetTickCount64() - Start >= Patience) {
            SetLastError(Error);
            return false;
        }
        Sleep(Pause);
    }
}
