// The memory of a game that is no process of its own, at made-up addresses.
#pragma once

#include "sandbox/game/game_memory.h"

// All zeros when made; untouched pages cost nothing, and what is given back is used again: the records alone
// are 36 MB. Must outlive every game that uses it.
class PrivateMemory {
public:
    PrivateMemory();
    ~PrivateMemory();
    PrivateMemory(const PrivateMemory&) = delete;
    PrivateMemory& operator=(const PrivateMemory&) = delete;

    Simulation::GameMemory Memory;
};
