// The process that is killed: a host with the plug-in, which does one operation after the other.
#pragma once

#include <windows.h>

namespace Kill::Child {

enum Writer : LONG { Nobody, PlugIn, HostObject };

// What parent and child share, in memory that outlives the child.
struct Progress {
    volatile LONG Begun, Done; // how many operations
    volatile LONG Writing;     // who is inside the system's own function that writes an INI file
};

// Never returns.
[[noreturn]] void Run(Progress& Shared, unsigned Seed, long ProcessRef, long MessageRef);

} // namespace Kill::Child
