// The ban method "Kernel Driver": a packet filter drops what banned addresses send to the game port. Only
// exact addresses reach the filter; patterns are not enforced under this method.
//
// The filter's rules belong to the driver: a rebuild for one profile clears those of another.
#pragma once

#include "host/failure.h"
#include "host/text.h"
#include "lists/ban_lists.h"

// Loads and starts the filter driver unless both services run.
void EnsureFilterRuns();

// When the profile's address list has changed: clears all rules and adds one for each exact address and the
// port. A key that is no address ends it (errors 6, 9, 13, with the key in the description); the flag then
// stays set and the next tick starts again.
void RebuildFilters(const BanFiles& Files, std::int16_t GamePort);

// Clears the rules, stops and removes both services, whether or not they were ever started.
void TakeDownFilter();

// The four parts of a dotted address, the first in the lowest byte. Error 9 for a missing part, 13 for one
// that is not numeric, 6 for one outside 0 to 255.
Long IpToLong(TextView Address);
