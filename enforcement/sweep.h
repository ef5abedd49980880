// The enforcement sweep: what is done to each profile every five seconds.
#pragma once

#include "host/failure.h"

// The idle punt counts this time for each tick.
inline constexpr Long SweepMilliseconds = 5000;

// One tick for a profile. A tick that arrives while another one is on the stack is dropped. Reports under
// "tmrVN"; the next tick starts from the beginning.
void tmrVN_Timer(Long Index) noexcept;
