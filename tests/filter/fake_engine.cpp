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

struct State {
    bool IsOpen = false, IsLost = false, IsInTransaction = false;
    std::map<std::uint64_t, Rule> Counting, Pending;
    std::uint64_t LastFilter = 0;
    int Calls = 0, Transactions = 0, Reports = 0;
    int GoodCalls = -1;
    bool IsLasting = false;
};
State Now;

void Require(bool IsTrue, const char* What) {
    if (IsTrue) return;
    std::fprintf(stderr, "engine: %s\n", What);
    std::abort();
}

// The error code of the call: as it was told, or because the session is lost.
std::uint32_t Enter() {
    ++Now.Calls;
    if (Now.IsLost) return 1722;
    if (Now.GoodCalls < 0) return 0;
    if (Now.GoodCalls > 0) {
        --Now.GoodCalls;
        return 0;
    }
    if (!Now.IsLasting) Now.GoodCalls = -1;
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
    Require(!Now.IsOpen, "opened twice");
    Now.IsLost = false;
    const std::uint32_t Error = Enter();
    Now.IsOpen = Error == 0;
    return {"Open", Error};
}

void Close() noexcept {
    const Held Locked(Mutex);
    Require(Now.IsOpen, "closed twice");
    Now.IsOpen = Now.IsInTransaction = false;
    Now.Counting.clear();
}

Failure Check() {
    return Call("Check", [] { Require(Now.IsOpen, "not open"); });
}

Failure Begin() {
    return Call("Begin", [] {
        Require(Now.IsOpen && !Now.IsInTransaction, "two transactions");
        Now.IsInTransaction = true;
        Now.Pending = Now.Counting;
        ++Now.Transactions;
    });
}

Failure Commit() {
    return Call("Commit", [] {
        Require(Now.IsInTransaction, "nothing to commit");
        Now.IsInTransaction = false;
        Now.Counting = Now.Pending;
    });
}

Failure Abort() {
    return Call("Abort", [] {
        Require(Now.IsInTransaction, "nothing to abort");
        Now.IsInTransaction = false;
    });
}

Failure Add(const Rule& Blocked, std::uint64_t& Filter) {
    return Call("Add", [&] {
        Require(Now.IsInTransaction, "a filter outside of a transaction");
        Filter = ++Now.LastFilter;
        Now.Pending[Filter] = Blocked;
    });
}

Failure Remove(std::uint64_t Filter) {
    return Call("Remove", [&] { Require(Now.Pending.erase(Filter) == 1, "an unknown filter"); });
}

} // namespace Engine

namespace EventLog {

void Report(const Failure&) noexcept {
    const Held Locked(Mutex);
    ++Now.Reports;
}

} // namespace EventLog

namespace FakeEngine {

void Reset() {
    const Held Locked(Mutex);
    Require(!Now.IsOpen, "reset while open");
    Now = {};
}

void FailAfter(int Calls, bool IsLasting) {
    const Held Locked(Mutex);
    Now.GoodCalls = Calls;
    Now.IsLasting = IsLasting;
}

void LoseSession() {
    const Held Locked(Mutex);
    Now.IsLost = true;
    Now.Counting.clear();
}

std::map<std::uint64_t, Rule> Filters() {
    const Held Locked(Mutex);
    return Now.Counting;
}

std::vector<Rule> Rules() {
    std::vector<Rule> Found;
    for (const auto& [Filter, Blocked] : Filters()) Found.push_back(Blocked);
    std::ranges::sort(Found);
    return Found;
}

int Calls() {
    const Held Locked(Mutex);
    return Now.Calls;
}

int Transactions() {
    const Held Locked(Mutex);
    return Now.Transactions;
}

bool IsOpen() {
    const Held Locked(Mutex);
    return Now.IsOpen;
}

int Reports() {
    const Held Locked(Mutex);
    return Now.Reports;
}

} // namespace FakeEngine
