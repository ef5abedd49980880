// An engine in memory, and what the tests make of it: calls that fail, and a session that gets lost. Misuse
// of it ends the test program.
#pragma once

#include <map>
#include <vector>

#include "filter/engine.h"

namespace FakeEngine {

void Reset();
// The call after so many good ones fails, and all that follow when IsLasting; a negative number: none.
void FailAfter(int Calls, bool IsLasting = false);
// As when the engine's service is restarted: what was in it is gone, and the session is good for nothing.
void LoseSession();

// The filters that count at the moment, by their identifiers.
std::map<std::uint64_t, Rule> Filters();
// Their rules, sorted.
std::vector<Rule> Rules();
int Calls();
int Transactions();
bool IsOpen();
// Entries in the event log.
int Reports();

} // namespace FakeEngine

namespace FakeThreads {

// The library's waits take this fraction of their time. Set it before the first thread.
inline unsigned Haste = 5;
// Waits for the end of every thread that was started; each must have been told to end.
void Join();

} // namespace FakeThreads
