// The enforcement sweep: what is done to each profile every five seconds.
#pragma once

#include "host/failure.h"

// One tick for a profile. One that arrives while a tick of the same profile is on the stack is dropped.
// Reports under "tmrVN"; the next tick starts from the beginning.
void tmrVN_Timer(Long Profile) noexcept;
