// One tick of the sweep: what it has read, and what it has spent on a game server that hangs.
#pragma once

#include "game/mdlVNT.h"
#include "host/failure.h"
#include "host/platform.h"
#include "host/text.h"
#include "lists/first_failure.h"

// The time between two ticks of a profile; the idle check counts it for each tick.
inline constexpr Long TickSeconds = 5;

// A server that hangs blocks the host's user-interface thread with each command until the helper times out.
// Once the failed commands of a tick have cost this many milliseconds it sends no more, and the profile's
// further ticks try one command each until one succeeds; whoever is still on the server is found again by the
// next tick.
inline constexpr Long BlockedLimit = 500;

// Nothing of it outlives the tick.
struct Tick {
    Long Profile = 0;
    Lines Names{}, Addrs{};       // by slot
    std::int64_t BlockedTime = 0; // milliseconds that failed commands have cost
    Long NotSent = 0;             // commands
};

// Sends a command unless the tick has been blocked for too long. Send returns false when it failed, which it
// has reported.
template <class F> void SendInTick(Tick& Current, F&& Send) {
    if (Current.BlockedTime >= BlockedLimit) return void(++Current.NotSent);
    const std::int64_t Start = Platform::Milliseconds();
    bool Sent = false;
    FirstFailure Failed;
    Failed.Try([&] { Sent = std::forward<F>(Send)(); });
    if (!Sent) Current.BlockedTime += Platform::Milliseconds() - Start;
    if (!Sent && mdlVNT::TakesNoCommands(Current.Profile)) Current.BlockedTime = BlockedLimit;
    mdlVNT::TakesNoCommands(Current.Profile) = Current.BlockedTime >= BlockedLimit;
    Failed.Throw();
}
