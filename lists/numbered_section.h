// INI sections of values under the keys "0", "1", ... without gaps: slap messages, linked addresses.
#pragma once

#include <utility>
#include <vector>

#include "host/failure.h"
#include "host/text.h"
#include "lists/progress.h"

using Entries = std::vector<std::pair<std::wstring, std::wstring>>;

// Key and value of each line, in file order. Error 13 when the host answers a line that has a value with
// nothing: the value would be written back as empty.
Entries ReadEntries(TextView Section, TextView File);
Lines ValuesOf(const Entries& Present);

// The key for a further value: the number of values, or the next one that is free in a section with gaps.
std::wstring FreeKey(const Entries& Present);

// Makes the values the whole section, numbered from "0"; Present is what stands there. A section without gaps
// is changed in place and surplus keys are deleted last: a process killed on the way leaves a value twice,
// but none is missing; for the same reason the first write that fails ends it. A section with gaps, edited by
// hand, is cleared and written anew: there all writes are tried, and then the first failure is thrown. One
// that becomes empty is cleared. In place only what changes is written; that is all that stands behind a
// value which is taken out, each by a call of the host. Shown is told how far it is and cannot end it: half
// of it would leave a value twice.
void RewriteNumbered(TextView Section, const Entries& Present, const Lines& Values, TextView File,
                     const Progress& Shown = {});
