// What the compiler's run-time takes from us, so that each of our DLLs minds its own business in a process.
#include <windows.h>

#include <cstdint>

namespace {

// The start code asks for "libgcc_s_dw2-1.dll". When another program's copy is in the process, it would
// register our unwind tables there, and the first failure that is thrown would end the process without a
// word. Nothing else in our DLLs asks by this function.
HMODULE WINAPI NoModule(const char*) { return nullptr; }

} // namespace

extern "C" {

extern decltype(&NoModule) const ModuleSlot asm("__imp__GetModuleHandleA@4");
decltype(&NoModule) const ModuleSlot = NoModule;

// The guard of the stack. The run-time's own loads a cryptographic provider under the loader lock.
std::uintptr_t __stack_chk_guard = 0x5AFE7A11;

__attribute__((constructor, optimize("no-stack-protector"))) void ChooseStackGuard() {
    LARGE_INTEGER Counter;
    FILETIME Time;
    QueryPerformanceCounter(&Counter);
    GetSystemTimeAsFileTime(&Time);
    // The lowest byte stays 0: it ends a text that would be copied over the guard.
    __stack_chk_guard = (Counter.LowPart * 2654435761U ^ Time.dwLowDateTime ^ GetCurrentProcessId() << 16 ^
                         reinterpret_cast<std::uintptr_t>(&Counter))
                        << 8;
}

[[noreturn]] void __stack_chk_fail() {
    constexpr UINT StackBufferOverrun = 0xC0000409;
    TerminateProcess(GetCurrentProcess(), StackBufferOverrun);
    __builtin_unreachable();
}

} // extern "C"
