// What this process holds of the system, kind by kind.
#pragma once

#include <string>
#include <vector>

namespace Census {

struct Kind {
    const char* Name;
    long (*Count)();
    long Slack; // how much more there may be after a long run
    // Makes and drops one thing that is counted as Unit, to see whether the system counts at all.
    void* (*Make)();
    void (*Drop)(void*);
    long Unit;
};

extern const std::vector<Kind> Kinds;

// Begins to watch COM's task memory. Automation keeps freed strings for later use and would hide a leak among
// them: the environment variable OANOCACHE, set before the process starts, turns that off.
void Begin();

// Whether the count follows what is made and dropped. Wine leaves some counters at 0.
bool IsCounted(const Kind& Tried);

// How much there is of one kind.
long CountOf(const std::string& Name);

// One number for each kind, in their order.
std::vector<long> Take();

} // namespace Census
