// The filtering engine, as the library needs it: one session, its transactions and its filters. filter/win32
// asks the platform; the native tests have an engine in memory.
//
// Only the library's own thread calls these.
#pragma once

#include <cstdint>

#include "filter/rule.h"

// A call of the engine that failed, with the platform's error code; no failure while the code is 0.
struct Failure {
    const char* Call = "";
    std::uint32_t Code = 0;
    explicit operator bool() const { return Code != 0; }
};

namespace Engine {

// Opens a session whose filters vanish with it. After a failure no session is open.
Failure Open();
// Ends the session and everything that was added in it.
void Close() noexcept;
// Asks the engine for what Open added. IsLoss tells whether a failure means that it is gone.
Failure Check();
// Whether the failure proves that the session, and with it all filters, is gone: the engine's service was
// stopped, or it has ended the session. After any other, a wait for another program's transaction above all,
// they are still there.
bool IsLoss(const Failure& Failed);

// What is added and removed counts from Commit on, all of it or nothing.
Failure Begin();
Failure Commit();
Failure Abort();

// Filter receives the identifier by which Remove finds the filter.
Failure Add(const Rule& Blocked, std::uint64_t& Filter);
Failure Remove(std::uint64_t Filter);

} // namespace Engine
