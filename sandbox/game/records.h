// Where the simulation keeps a player, and what it writes there.
//
// The game goes by its own blocks, never by the pointers in its memory, which anybody may overwrite.
#pragma once

#include <cstdint>

#include "sandbox/game/simulation.h"

namespace Simulation {

// The addresses of a slot's list entry, statistics record and entity block; slots 0 to 50.
std::uint32_t EntryAt(const Game& World, int Slot);
std::uint32_t RecordAt(const Game& World, int Slot);
std::uint32_t EntityAt(const Game& World, int Slot);

// Writes all that lies in memory for the player of a slot; a default Player empties it.
void WritePlayer(const Game& World, int Slot, const Player& Written, std::int32_t Ping = 0);

// Writes the words and pointers at the build's fixed addresses.
void WriteGlobals(const Game& World);

} // namespace Simulation
