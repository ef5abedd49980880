// The punts of a tick: without announcement, and with an end to patience.
#pragma once

#include "host/failure.h"
#include "host/text.h"

// A new tick, with no failed punt yet.
void BeginTickPunts() noexcept;

// Punts the player in a slot (PuntPlayer reports). Once three punts of this tick have failed it does nothing:
// a server that hangs lets each command wait for the helper's whole patience, on the host's user-interface
// thread. Who is still there is found again by the next tick. Answers false when the punt failed or was not
// tried.
bool PuntInTick(Long Index, TextView Name, TextView Ip, Long Slot) noexcept;
