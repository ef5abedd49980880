// What stands first in every call from outside: members, exports, window and dialog procedures, hooks.
#pragma once

#include <cstdint>

#include "host/work.h"

namespace Module {

// While one lives, the floating-point unit works by the system's defaults, whatever the host has set (some
// run-times unmask overflow, and a number of 400 digits would end the host), and is given back as it was. The
// file dialog and the host's objects change it, too: calls to them get one of their own.
class FloatingPoint {
public:
    FloatingPoint() noexcept;
    ~FloatingPoint();
    FloatingPoint(const FloatingPoint&) = delete;
    FloatingPoint& operator=(const FloatingPoint&) = delete;

private:
    std::uint16_t X87 = 0;
    std::uint32_t Sse = 0;
};

// While one lives, the DLL stays loaded (IsLocked in module.h), although the host may release everything in
// the meantime: it may pump messages inside a call of ours.
class Entry {
public:
    Entry() noexcept;
    ~Entry();
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

private:
    FloatingPoint Defaults;
    Work Call{Work::Kind::HostCall, 0};
};

// Has the action run whenever the last call leaves the DLL: for what must wait until nothing of ours is on
// the stack.
void WhenLeft(void (*Action)() noexcept) noexcept;

} // namespace Module
