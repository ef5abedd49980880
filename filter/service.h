// What the library's calls ask for. They only note it, under a lock that is never held for long; the
// library's own thread brings the engine to it.
#pragma once

#include "filter/rule.h"

namespace Service {

inline constexpr std::int32_t NotInstalled = 0, Stopped = 1, Starting = 2, Running = 3;

// Running while the engine accepts what was asked, Starting until its first answer, otherwise Stopped.
std::int32_t State();

// Starts the thread, or has it try again what failed. False when there is no thread to be had.
bool Load();
// From here on the rules count. Rules that were added before are kept until then.
void Start();
// An address twice for one port is one rule. Throws std::bad_alloc.
void AddRule(const Rule& Blocked);
void ClearRules();
// Forgets the rules and lets the thread end, and with it everything in the engine.
void Stop();

} // namespace Service
