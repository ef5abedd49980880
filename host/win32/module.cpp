// The instance, path and locks of the DLL.
#include "host/win32/module.h"

#include <atomic>

#include "host/work.h"

namespace Module {

namespace {

std::atomic<long> Locks{0};

} // namespace

HINSTANCE Instance() noexcept {
    HMODULE Own = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&Locks), &Own);
    return Own;
}

std::wstring Path() {
    std::wstring Found(MAX_PATH, L'\0');
    for (;;) {
        const DWORD Length = GetModuleFileNameW(Instance(), Found.data(), static_cast<DWORD>(Found.size()));
        // A path that fills the whole room has been cut.
        if (Length < Found.size()) return Found.substr(0, Length);
        Found.resize(Found.size() * 2);
    }
}

void AddLock() noexcept { ++Locks; }
void RemoveLock() noexcept { --Locks; }
bool IsLocked() noexcept { return Locks != 0 || Work::Depth() != 0; }

} // namespace Module
