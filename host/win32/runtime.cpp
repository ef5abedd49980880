// What the compiler's run-time takes from us, so that keeps unwind tables, semaphores and TLS slots private
// to this DLL and frees them in a process.
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace {

// The start code asks for "libgcc_s_dw2-1.dll". When another program's copy is in the process, it would
// register our unwind tables there, and the first failure that is thrown would end the process without a
// word. Nothing else in our DLLs asks by this function.
HMODULE WINAPI NoModule(const char*) { return nullptr; }

// The run-time makes a semaphore for each lock of its own, and closes none when the DLL goes.
HANDLE Semaphores[16];
LONG SemaphoreCount = 0;

HANDLE WINAPI MakeSemaphore(SECURITY_ATTRIBUTES*, LONG First, LONG Most, const wchar_t*) {
    const HANDLE Made = CreateSemaphoreA(nullptr, First, Most, nullptr);
    const LONG At = InterlockedIncrement(&SemaphoreCount) - 1;
    if (At < static_cast<LONG>(std::size(Semaphores))) Semaphores[At] = Made;
    return Made;
}

// Nor does it give back the index of thread-local storage that it takes when the first failure is thrown.
DWORD Indexes[4];
LONG IndexCount = 0;

// The linker's way to the real function leads here.
DWORD WINAPI MakeIndex() {
    const FARPROC Real = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "TlsAlloc");
    const DWORD Made = reinterpret_cast<decltype(&MakeIndex)>(reinterpret_cast<void*>(Real))();
    if (Made == TLS_OUT_OF_INDEXES) return Made;
    const LONG At = InterlockedIncrement(&IndexCount) - 1;
    if (At < static_cast<LONG>(std::size(Indexes))) Indexes[At] = Made;
    return Made;
}

void FreeIndexes() {
    const LONG Count = std::min<LONG>(IndexCount, std::size(Indexes));
    for (LONG At = 0; At < Count; ++At) TlsFree(Indexes[At]);
}

} // namespace

// The run-time's store for exceptions that find no memory, some 19 KB: its own way to give it back.
namespace __gnu_cxx { // NOLINT(bugprone-reserved-identifier)
void __freeres();     // NOLINT(bugprone-reserved-identifier)
}

extern "C" {

extern decltype(&NoModule) const ModuleSlot asm("__imp__GetModuleHandleA@4");
decltype(&NoModule) const ModuleSlot = NoModule;
extern decltype(&MakeSemaphore) const SemaphoreSlot asm("__imp__CreateSemaphoreW@16");
decltype(&MakeSemaphore) const SemaphoreSlot = MakeSemaphore;
extern decltype(&MakeIndex) const IndexSlot asm("__imp__TlsAlloc@0");
decltype(&MakeIndex) const IndexSlot = MakeIndex;

// After all destructors of ours.
__attribute__((destructor(101))) void GiveBack() {
    __gnu_cxx::__freeres();
    for (const HANDLE Semaphore : Semaphores)
        if (Semaphore != nullptr) CloseHandle(Semaphore);
    FreeIndexes();
}

// The guard of the stack, under the names that the compiler calls. The run-time's own loads a cryptographic
// provider under the loader lock.
extern std::uintptr_t StackGuard asm("___stack_chk_guard");
std::uintptr_t StackGuard = 0x5AFE7A11;

__attribute__((constructor, no_stack_protector)) void ChooseStackGuard() {
    LARGE_INTEGER Counter;
    FILETIME Time;
    QueryPerformanceCounter(&Counter);
    GetSystemTimeAsFileTime(&Time);
    // The lowest byte stays 0: it ends a text that would be copied over the guard.
    StackGuard = (Counter.LowPart * 2654435761U ^ Time.dwLowDateTime ^ GetCurrentProcessId() << 16 ^
                  reinterpret_cast<std::uintptr_t>(&Counter))
                 << 8;
}

[[noreturn]] void StackIsDamaged() asm("___stack_chk_fail");
void StackIsDamaged() {
    constexpr UINT StackBufferOverrun = 0xC0000409;
    TerminateProcess(GetCurrentProcess(), StackBufferOverrun);
    __builtin_unreachable();
}

} // extern "C"
