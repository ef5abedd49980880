// What this process holds of the system, kind by kind.
#pragma once

#include <string>
#include <vector>

namespace Census {

struct Kind {
    const char* Name;
    long (*Count)();
    long Slack; // how much more there may be after a long run
    // What Wine 8 itself leaves behind each time the window is made, and each time its edits are played.
    long PerWindow = 0, PerEdits = 0;
};

extern const std::vector<Kind> Kinds;

// Throws when the system counts a kind only in name, as Wine does for some: it would hide every leak.
void RequireCounting();

// How much there is of one kind.
long CountOf(const std::string& Name);

// One number for each kind, in their order.
std::vector<long> Take();

} // namespace Census
