// The guard of every call from outside.
#include "host/win32/entry.h"

namespace Module {

namespace {

// All exceptions masked, round to nearest, 53 bits: what the system gives each thread.
constexpr std::uint16_t DefaultX87 = 0x027F;
constexpr std::uint32_t DefaultSse = 0x1F80;

void (*LeftAction)() noexcept = nullptr;

} // namespace

FloatingPoint::FloatingPoint() noexcept {
    asm volatile("fnstcw %0\n\tstmxcsr %1" : "=m"(X87), "=m"(Sse));
    asm volatile("fldcw %0\n\tldmxcsr %1" : : "m"(DefaultX87), "m"(DefaultSse));
}

FloatingPoint::~FloatingPoint() {
    // What an operation of ours left in the status word would be raised as soon as it is unmasked.
    asm volatile("fnclex\n\tfldcw %0\n\tldmxcsr %1" : : "m"(X87), "m"(Sse));
}

Entry::Entry() noexcept = default;

Entry::~Entry() {
    if (Work::Depth() == 1 && LeftAction != nullptr) LeftAction();
}

void WhenLeft(void (*Action)() noexcept) noexcept { LeftAction = Action; }

} // namespace Module
