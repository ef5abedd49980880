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

// What the engine holds and what has become of it so far.
struct Seen {
    bool IsOpen = false;
    std::map<std::uint64_t, Rule> Filters; // those that count, by their identifiers
    int Calls = 0, Transactions = 0;
    int Reports = 0; // entries in the event log
};
Seen Look();
// The rules of the filters, sorted.
std::vector<Rule> Rules();

} // namespace FakeEngine

namespace FakeThreads {

// The library's waits take this fraction of their time. Set it before the first thread.
inline unsigned Haste = 5;
// Waits for the end of every thread that was started; each must have been told to end.
void Join();

} // namespace FakeThreads
