// Players who are killed or disarmed again on every tick, for as long as they stay on the server.
#pragma once

#include <unordered_set>

#include "enforcement/tick.h"

// Whether the name is on the profile's list; error 9 for an index without arrays.
bool InKillPermList(Long Profile, TextView Name);
bool InDisarmPermList(Long Profile, TextView Name);

using NameSet = std::unordered_set<std::wstring>;
// Whether the value is one of the elements, with regard to case.
bool InArray(const NameSet& Elements, TextView Value);

// Kills and disarms the listed players among those that the tick has read (slots 1 and up).
void EnforcePermanentLists(Tick& Current);
// The names on both lists.
NameSet PermanentNames(Long Profile);
// Drops those of the names from both lists that are not among the players any more. Listed are the names that
// stood there before the table was read: whoever is added inside a call may sit in a slot that was already
// read.
void PrunePermanentLists(const Tick& Current, const NameSet& Listed);
