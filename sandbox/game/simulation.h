// The game: players that join, move, idle and leave, kept in the memory that administration tools read, and
// what happens when such a tool writes to that memory or sends a command.
//
// One simulation serves the game server process and the native tests. Time only passes in AdvanceTo. Names
// and texts are bytes of the system's code page. Teams are 1 (blue) and 2 (red); other values are kept as
// given.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "sandbox/game/game_memory.h"
#include "sandbox/game/journal.h"
#include "sandbox/game/layout.h"

namespace Simulation {

// A killed player returns to the game after this time; players move this often unless told otherwise.
inline constexpr std::uint32_t RespawnDelay = 3000, UsualMoveInterval = 1000; // milliseconds

struct Settings {
    Layout::Build Build = Layout::Build::Standard;
    int MaxPlayers = 32;       // 1 to 50
    bool Dedicated = true;     // slot 0 is then the server's own, named "Host"
    std::int32_t GameType = 1; // 0: no teams
    std::int32_t Port = 32768;
    std::int32_t State = 2;                         // 0 no game, 1 between games, above 1 in a game
    std::uint32_t ProcessId = 0, MessageTarget = 0; // for the journal's first line
};

struct Player {
    bool Present = false;
    std::string Name = {}, Address = {};
    std::uint8_t Team = 0;
    // What the game itself last knew; a difference in memory was made from outside.
    std::int32_t Life = 0, Armed = 0;
    std::uint32_t JoinedAt = 0, RespawnAt = 0;
    std::uint32_t MoveEvery = 0, NextMove = 0; // 0: idle
    std::uint32_t Moves = 0;
};

struct Game {
    Settings Setup;
    GameMemory Memory;
    std::function<void(const JournalEntry&)> Journal; // may be empty
    std::uint32_t Time = 0;
    bool Running = false;
    std::array<Player, Layout::SlotCount> Players;
    std::vector<std::string> Filtered; // addresses whose packets do not arrive
    std::string PartOfMessage;         // pieces taken from the message block so far
};

// Fills the memory and begins at time 0. Throws std::invalid_argument for MaxPlayers outside 1 to 50 or for
// blocks that are too small.
void Start(Game& World);
void Stop(Game& World, std::string_view Why);

// Each returns false and journals "refused" when it cannot be done: the slot is outside 0 to MaxPlayers,
// taken or (all but Join) free, the server's own, the name longer than 45 bytes, the address longer than 51.
// Address is dotted, or the raw text itself when it is no dotted address (the game keeps eight hexadecimal
// digits, the last part of the address first).
bool Join(Game& World, int Slot, std::string_view Name, std::string_view Address, std::uint8_t Team = 1,
          std::int32_t Ping = 50);
bool Leave(Game& World, int Slot);
bool ChangeTeam(Game& World, int Slot, std::uint8_t Team);
bool ChangePing(Game& World, int Slot, std::int32_t Ping);
// Changes one of the four activity values, each in its turn.
bool Move(Game& World, int Slot);
// From now on the player moves by itself every so many milliseconds; 0 makes it idle.
bool MoveEvery(Game& World, int Slot, std::uint32_t Interval);

void SetGameState(Game& World, std::int32_t State);

// Lets time pass up to Time (milliseconds since the start): takes messages, notices what was written from
// outside, respawns, moves, and drops players whose packets are filtered. An earlier time is ignored.
void AdvanceTo(Game& World, std::uint32_t Time);

// Addresses (dotted) whose packets are blocked from now on; replaces the earlier ones.
void SetFiltered(Game& World, std::vector<std::string> Addresses);

// Takes what waits in the message block; AdvanceTo does so too. A process calls it every few milliseconds.
void TakeMessages(Game& World);
// A whole text, as if it had come through the message block.
void ReceiveText(Game& World, Layout::Message::Channel Channel, std::uint8_t Kind, std::string_view Text);
// "punt NN" drops the player of that slot; anything else is journalled as "ignored".
void RunCommand(Game& World, std::string_view Text);

// The raw text that the game keeps for a dotted address; any other text is returned as it is.
std::string RawAddress(std::string_view Address);

} // namespace Simulation
