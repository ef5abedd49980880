// One tick of the sweep: what it has read, and what it has spent on a game server that hangs.
#pragma once

#include "host/failure.h"
#include "host/platform.h"
#include "host/text.h"

// The time between two ticks of a profile; the idle check counts it for each tick.
inline constexpr Long TickSeconds = 5;

// A server that hangs lets each command wait for the helper's whole patience, on the host's user-interface
// thread. Once the failed commands of a tick have cost this many milliseconds it sends no more; whoever is
// still on the server is found again by the next tick.
inline constexpr Long TickPatience = 500;

// Nothing of it outlives the tick.
struct Tick {
    Long Profile = 0;
    Lines Names{}, Addrs{};           // by slot
    std::int64_t SpentOnFailures = 0; // milliseconds
    Long LeftOut = 0;                 // commands that were not sent any more
};

// Sends a command unless the tick's patience has ended. Send returns false when it failed, which it has
// reported.
template <class F> void SendInTick(Tick& Current, F&& Send) {
    if (Current.SpentOnFailures >= TickPatience) {
        ++Current.LeftOut;
        return;
    }
    const std::int64_t Start = Platform::Milliseconds();
    if (!std::forward<F>(Send)()) Current.SpentOnFailures += Platform::Milliseconds() - Start;
}
