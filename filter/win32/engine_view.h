// What the filtering engine holds of ours, from whichever process it came.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "filter/engine.h"

struct HeldRule {
    std::uint32_t Process = 0; // whose library added it
    Rule Blocked;
    std::uint64_t Filter = 0;
};

struct EngineView {
    Failure Failed;       // why there is nothing to see
    std::wstring Library; // the engine that was asked, by its full path; empty if none could be loaded
    bool IsSandbox = false;
    std::vector<HeldRule> Rules;
    // The packets that Windows remembers as dropped by these rules; nothing when it does not tell.
    std::optional<unsigned> Dropped;
};

// Reads by a session of its own.
EngineView ViewEngine();
