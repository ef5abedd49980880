// What this process holds of the system, kind by kind.
#pragma once

#include <string>
#include <vector>

namespace Census {

struct Kind {
    const char* Name;
    long (*Count)();
    long Slack; // how much more there may be after a long run
    // What Wine 8 itself leaves behind for each window with its edits, and for each import with them.
    long PerWindow = 0, PerImport = 0;
};

extern const std::vector<Kind> Kinds;

// How much there is of one kind.
long CountOf(const std::string& Name);

// One number for each kind, in their order. Throws at a 0: Wine leaves some of its counters there, which
// would hide every leak.
std::vector<long> Take();

} // namespace Census
