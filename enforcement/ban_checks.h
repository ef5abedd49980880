// Which players are banned, under each of the two ban methods.
#pragma once

#include "enforcement/tick.h"

// Punts whoever is banned among the players that the tick has read, quietly and once for each entry that
// matches. Under the kernel method the packet filter is brought up and rebuilt first, and exact addresses are
// left to it. Fails as the helpers and the packet filter do.
void EnforceBans(Tick& Current);
