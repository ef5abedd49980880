#include "tests/filter/fake_engine.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <mutex>

#include "filter/event_log.h"

namespace {

// The library's thread calls the engine while a test looks at it.
std::mutex Mutex;
using Held = std::lock_guard<std::mutex>;

struct State : FakeEngine::Seen {
    bool IsLost = false, IsInTransaction = false;
    std::map<std::uint64_t, Rule> Pending;
    std::uint64_t LastFilter = 0;
    int GoodCalls = -1;
    bool IsLasting = false;
};
State Current;

void Require(bool IsTrue, const char* What) {
    if (IsTrue) return;
    std::fprintf(stderr, "engine: %s\n", What);
    std::abort();
}

// The error code of the call: as it was told, or because the session is lost.
std::uint32_t Enter() {
    ++Current.Calls;
    if (Current.IsLost) return 1722;
    if (Current.GoodCalls < 0) return 0;
    if (Current.GoodCalls > 0) {
        --Current.GoodCalls;
        return 0;
    }
    if (!Current.IsLasting) Current.GoodCalls = -1;
    return 5;
}

template <class Procedure> Failure Call(const char* Name, Procedure Body) {
    const Held Locked(Mutex);
    const std::uint32_t Error = Enter();
    if (Error == 0) Body();
    return {Name, Error};
}

} // namespace

namespace Engine {

Failure Open() {
    const Held Locked(Mutex);
    Require(!Current.IsOpen, "opened twice");
    Current.IsLost = false;
    const std::uint32_t Error = Enter();
    Current.IsOpen = Error == 0;
    return {"Open", Error};
}

void Close() noexcept {
    const Held Locked(Mutex);
    Require(Current.IsOpen, "closed twice");
    Current.IsOpen = Current.IsInTransaction = false;
    Current.Filters.clear();
}

Failure Check() {
    return Call("Check", [] { Require(Current.IsOpen, "not open"); });
}

bool IsLoss(const Failure& Failed) { return Failed.Code == 1722; }

Failure Begin() {
    return Call("Begin", [] {
        Require(Current.IsOpen && !Current.IsInTransaction, "two transactions");
        Current.IsInTransaction = true;
        Current.Pending = Current.Filters;
        ++Current.Transactions;
    });
}

Failure Commit() {
    return Call("Commit", [] {
        Require(Current.IsInTransaction, "nothing to commit");
        Current.IsInTransaction = false;
        Current.Filters = Current.Pending;
    });
}

Failure Abort() {
    return Call("Abort", [] {
        Require(Current.IsInTransaction, "nothing to abort");
        Current.IsInTransaction = false;
    });
}

Failure Add(const Rule& Blocked, std::uint64_t& Filter) {
    return Call("Add", [&] {
        Require(Current.IsInTransaction, "a filter outside of a transaction");
        Filter = ++Current.LastFilter;
        Current.Pending[Filter] = Blocked;
    });
}

Failure Remove(std::uint64_t Filter) {
    return Call("Remove", [&] { Require(Current.Pending.erase(Filter) == 1, "an unknown filter"); });
}

} // namespace Engine

namespace EventLog {

void Report(const Failure&) noexcept {
    const Held Locked(Mutex);
    ++Current.Reports;
}

} // namespace EventLog

namespace FakeEngine {

void Reset() {
    const Held Locked(Mutex);
    Require(!Current.IsOpen, "reset while open");
    Current = {};
}

void FailAfter(int Calls, bool IsLasting) {
    const Held Locked(Mutex);
    Current.GoodCalls = Calls;
    Current.IsLasting = IsLasting;
}

void LoseSession() {
    const Held Locked(Mutex);
    Current.IsLost = true;
    Current.Filters.clear();
}

Seen Look() {
    const Held Locked(Mutex);
    return Current;
}

std::vector<Rule> Rules() {
    std::vector<Rule> Found;
    for (const auto& [Filter, Blocked] : Look().Filters) Found.push_back(Blocked);
    std::ranges::sort(Found);
    return Found;
}

} // namespace FakeEngine
