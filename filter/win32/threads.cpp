// The library's lock, signal, clock and thread, from the platform.
#include "filter/threads.h"

#include <windows.h>

#include <new>

namespace Threads {
namespace {

SRWLOCK Lock = SRWLOCK_INIT;
CONDITION_VARIABLE Signal = CONDITION_VARIABLE_INIT;

HMODULE Own() {
    HMODULE Module = nullptr;
    const void* Inside = reinterpret_cast<const void*>(&Own);
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, static_cast<LPCWSTR>(Inside), &Module);
    return Module;
}

struct Thread {
    void (*Body)() noexcept;
    HMODULE Library; // a reference of the thread's own
};

// The library may be let go of while the thread still runs; its code goes with the thread's end.
DWORD WINAPI RunThread(void* Given) {
    const Thread Running = *static_cast<Thread*>(Given);
    delete static_cast<Thread*>(Given);
    Running.Body();
    FreeLibraryAndExitThread(Running.Library, 0);
}

} // namespace

Guard::Guard() { AcquireSRWLockExclusive(&Lock); }
Guard::~Guard() { ReleaseSRWLockExclusive(&Lock); }

bool Wait(unsigned Milliseconds) { return SleepConditionVariableSRW(&Signal, &Lock, Milliseconds, 0) != 0; }
void Wake() { WakeConditionVariable(&Signal); }

std::uint64_t Milliseconds() { return GetTickCount64(); }

bool Start(void (*Body)() noexcept) {
    auto* New = new (std::nothrow) Thread{Body, Own()};
    if (New == nullptr) return false;
    if (New->Library != nullptr) {
        if (const HANDLE Started = CreateThread(nullptr, 0, RunThread, New, 0, nullptr)) {
            CloseHandle(Started);
            return true;
        }
        FreeLibrary(New->Library);
    }
    delete New;
    return false;
}

} // namespace Threads
