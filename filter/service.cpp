#include "filter/service.h"

#include <new>
#include <set>
#include <vector>

#include "filter/engine_rules.h"
#include "filter/event_log.h"
#include "filter/threads.h"

namespace Service {
namespace {

// A rebuild is one call for each address; it is over when no call has come for this long. Reading the list
// may hold up the caller between two calls, and half a list must not take the place of a whole one.
constexpr unsigned PauseMilliseconds = 300;
// A server whose list cannot be read to its end is rebuilt at every tick; many of them never leave such a
// pause. After this time a shorter one, between the ticks of two servers, has to do.
constexpr unsigned PatienceMilliseconds = 30000;
constexpr unsigned ShortPauseMilliseconds = 100;
constexpr unsigned CheckMilliseconds = 1000;
constexpr std::uint32_t OutOfMemory = 14; // ERROR_OUTOFMEMORY

// All of these belong to whoever holds the lock.
bool IsLoaded = false;
bool IsStarted = false;
std::set<Rule> Rules;
bool IsThreadThere = false;
bool IsDue = false;        // the engine is to be brought to the above
bool IsRuleCalled = false; // since the pause began
std::int32_t Standing = Starting;

// The caller asks for another attempt at every tick of every server; this must not put it off.
void Attempt() {
    if (!IsDue) Threads::Wake();
    IsDue = true;
}

// Wakes the thread for the first of many calls only: it looks for the others when the pause is over.
void ChangeRules() {
    Attempt();
    IsRuleCalled = true;
}

void AwaitPause() {
    const std::uint64_t Begin = Threads::Milliseconds();
    do {
        const bool IsPatient = Threads::Milliseconds() - Begin < PatienceMilliseconds;
        IsRuleCalled = false;
        Threads::Wait(IsPatient ? PauseMilliseconds : ShortPauseMilliseconds);
    } while (IsLoaded && IsRuleCalled);
}

enum class Task { Follow, Check, End };

// Waits until there is something to do; for Follow the wanted rules are in Wanted.
Task NextTask(std::vector<Rule>& Wanted) {
    const Threads::Guard Locked;
    for (;;) {
        if (!IsLoaded) return Task::End;
        if (!IsDue) {
            if (!Threads::Wait(CheckMilliseconds)) return Task::Check;
            continue;
        }
        AwaitPause();
        if (!IsLoaded) continue;
        IsDue = false;
        Wanted.clear();
        if (IsStarted) Wanted.assign(Rules.begin(), Rules.end());
        return Task::Follow;
    }
}

// Under the lock: a call that comes later finds no thread and starts a new one.
bool EndThread() {
    const Threads::Guard Locked;
    if (IsLoaded) return false;
    IsThreadThere = false;
    return true;
}

void Note(std::int32_t NewStanding) {
    const Threads::Guard Locked;
    Standing = NewStanding;
}

// The caller tries again every few seconds: a failure is reported once, until something has worked again.
void NoteFailure(const Failure& Failed, bool& IsReported) {
    Note(Stopped);
    if (!IsReported) EventLog::Report(Failed);
    IsReported = true;
}

// One task of the thread; false when it was the last.
bool DoNextTask(bool& IsReported) {
    Failure Failed;
    std::vector<Rule> Wanted;
    switch (NextTask(Wanted)) {
    case Task::Follow:
        Failed = EngineRules::Follow(Wanted);
        if (Failed) break;
        Note(Running);
        IsReported = false;
        break;
    case Task::Check: Failed = EngineRules::Check(); break;
    case Task::End: EngineRules::Close(); return !EndThread();
    }
    if (Failed) NoteFailure(Failed, IsReported);
    return true;
}

void Run() noexcept {
    bool IsReported = false;
    for (bool IsMore = true; IsMore;) {
        try {
            IsMore = DoNextTask(IsReported);
        } catch (const std::bad_alloc&) {
            NoteFailure({"memory", OutOfMemory}, IsReported);
        }
    }
}

} // namespace

std::int32_t State() {
    const Threads::Guard Locked;
    return IsLoaded ? Standing : Stopped;
}

bool Load() {
    const Threads::Guard Locked;
    if (!IsLoaded) Standing = Starting;
    if (!IsLoaded || Standing == Stopped) Attempt();
    if (!IsThreadThere) IsThreadThere = Threads::Start(Run);
    IsLoaded = IsThreadThere;
    return IsLoaded;
}

void Start() {
    const Threads::Guard Locked;
    if (IsStarted && Standing != Stopped) return;
    IsStarted = true;
    Attempt();
}

void AddRule(const Rule& Blocked) {
    const Threads::Guard Locked;
    Rules.insert(Blocked);
    ChangeRules();
}

void ClearRules() {
    const Threads::Guard Locked;
    Rules.clear();
    ChangeRules();
}

void Stop() {
    const Threads::Guard Locked;
    IsLoaded = IsStarted = false;
    Rules.clear();
    Threads::Wake();
}

} // namespace Service
