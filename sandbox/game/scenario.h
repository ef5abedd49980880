// Scenario scripts: what players do at which time. sandbox/README.md describes the lines.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sandbox/game/simulation.h"

namespace Simulation {

enum class Action { Join, Leave, Team, Ping, Idle, Move, State, Stop };

struct Event {
    std::uint32_t Time = 0; // milliseconds since the start
    Action What = Action::Stop;
    int Slot = 0;
    std::string Name = {}, Address = {}; // Join
    std::int32_t Team = 1;               // Join, Team
    std::int32_t Number = 0; // Join, Ping: ping; Move: interval or 0 for one move; State: the state
};

// The script's events in order of time (lines of the same time in their own order). The seed decides what
// "random" lines become. Throws std::runtime_error "line 3: what is wrong".
std::vector<Event> ParseScenario(std::string_view Text, std::uint32_t Seed);

// A scenario being played.
struct Playback {
    std::vector<Event> Events;
    std::size_t Next = 0;
};

// Lets time pass up to Time and has every event happen at its own time. Afterwards World.Running is false
// when the script stopped the game.
void Play(Game& World, Playback& Script, std::uint32_t Time);

} // namespace Simulation
