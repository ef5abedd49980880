// Who is killed or disarmed again on every tick, for as long as they stay on the server.
#pragma once

#include <unordered_set>

#include "host/failure.h"
#include "host/text.h"

// Whether the name is on the profile's list; error 9 for an index without arrays.
bool InKillPermList(Long Index, TextView Name);
bool InDisarmPermList(Long Index, TextView Name);

using NameSet = std::unordered_set<std::wstring>;
// Whether the value is one of the elements, with regard to case.
bool InArray(const NameSet& Elements, TextView Value);

// Kills and disarms the listed players among the names by slot (slots 1 and up).
void EnforcePermanentLists(Long Index, const Lines& NameBySlot);
// Drops everybody from both lists who is not among the names any more.
void PrunePermanentLists(Long Index, const Lines& NameBySlot);
