#include "filter/engine_rules.h"

#include <algorithm>

namespace EngineRules {
namespace {

struct Entry {
    Rule Blocked;
    std::uint64_t Filter = 0;
};

bool IsOpen = false;
std::vector<Entry> Held; // sorted by rule

bool Holds(const std::vector<Rule>& Rules) { return std::ranges::equal(Held, Rules, {}, &Entry::Blocked); }

// One walk along both sorted lists. What is in both stays untouched, so that its packets are blocked
// throughout.
Failure Change(const std::vector<Rule>& Rules, std::vector<Entry>& Next) {
    auto Old = Held.begin();
    for (const Rule& Wanted : Rules) {
        for (; Old != Held.end() && Old->Blocked < Wanted; ++Old)
            if (const Failure Failed = Engine::Remove(Old->Filter)) return Failed;
        if (Old != Held.end() && Old->Blocked == Wanted) {
            Next.push_back(*Old++);
            continue;
        }
        Entry New{Wanted};
        if (const Failure Failed = Engine::Add(Wanted, New.Filter)) return Failed;
        Next.push_back(New);
    }
    for (; Old != Held.end(); ++Old)
        if (const Failure Failed = Engine::Remove(Old->Filter)) return Failed;
    return {};
}

Failure Rebuild(const std::vector<Rule>& Rules) {
    std::vector<Entry> Next;
    Next.reserve(Rules.size());
    if (const Failure Failed = Engine::Begin()) return Failed;
    Failure Failed = Change(Rules, Next);
    if (!Failed) Failed = Engine::Commit();
    if (!Failed) {
        Held.swap(Next);
    } else if (Engine::Abort()) {
        // Whether the transaction counts is unknown now; only a new session is certain.
        Close();
    }
    return Failed;
}

} // namespace

Failure Follow(const std::vector<Rule>& Rules) {
    if (!IsOpen) {
        if (const Failure Failed = Engine::Open()) return Failed;
        IsOpen = true;
    }
    if (Holds(Rules)) return Check();
    const Failure Failed = Rebuild(Rules);
    if (Engine::IsLoss(Failed)) Close(); // so that the next attempt opens a new session
    return Failed;
}

Failure Check() {
    if (!IsOpen) return {};
    const Failure Failed = Engine::Check();
    if (!Engine::IsLoss(Failed)) return {};
    Close();
    return Failed;
}

void Close() noexcept {
    if (IsOpen) Engine::Close();
    IsOpen = false;
    Held.clear();
}

} // namespace EngineRules
