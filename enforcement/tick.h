// One tick of the sweep: what it has read, and what it has spent on a game server that hangs.
#pragma once

#include "game/mdlVNT.h"
#include "game/memory_map.h"
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
    ServerRef Server{Profile};        // that it has begun with
    Lines Names{}, Addrs{};           // by slot
    std::int64_t SpentOnFailures = 0; // milliseconds
    Long LeftOut = 0;                 // commands that were not sent any more
};

// Whether the tick may go on: the host has neither closed the profile inside a call nor given its index to
// another server, whose players nobody has judged.
inline bool GoesOn(const Tick& Current) {
    return HasMemoryMap(Current.Profile) && Current.Server.IsStillThere();
}

// Sends a command if the tick goes on and its patience has not ended. Send returns false when it failed,
// which it has reported.
template <class F> void SendInTick(Tick& Current, F&& Send) {
    if (!GoesOn(Current)) return;
    if (Current.SpentOnFailures >= TickPatience) {
        ++Current.LeftOut;
        return;
    }
    const std::int64_t Start = Platform::Milliseconds();
    if (!std::forward<F>(Send)()) Current.SpentOnFailures += Platform::Milliseconds() - Start;
}
