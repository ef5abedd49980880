// The enforcement sweep: what is done to each profile every five seconds.
#pragma once

#include "host/failure.h"

// One tick for a profile. A tick that arrives while another one is on the stack is dropped. Reports under
// "tmrVN"; the next tick starts from the beginning.
void tmrVN_Timer(Long Profile) noexcept;
