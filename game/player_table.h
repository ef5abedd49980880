// Reads the game server's player table.
#pragma once

#include <cstdint>
#include <vector>

#include "host/failure.h"
#include "host/text.h"

// Name of a nameless player in "ARRAY" mode, which the sweep punts.
inline constexpr TextView NamelessPlayer = L"PUNT_PLAYER";
// Address of a player whose address the server does not know (yet).
inline constexpr TextView NoAddress = L"0.0.0.0";
inline constexpr Long MaxSlot = 50;

struct ListedPlayer {
    Long Slot = 0; // 0 to MaxSlot
    std::wstring Name;
    int Team = 0; // 1 blue, 2 red
    std::wstring Ip;
    std::wstring Ping;
};

// What one read of the table has found.
struct PlayerTable {
    bool Begun = false;             // the game state could be read: an older content is out of date
    bool Complete = false;          // false when the read failed on the way, which has been reported
    std::vector<ListedPlayer> Rows; // mode "LIST", in the order of the table
    std::wstring Summary;           // mode "LIST": how many play in each team; empty unless complete
    Lines BySlot;                   // the other modes: 0 to MaxPlayers, empty where no player is
};

// Mode "LIST": the players as rows, and refreshes the life and armed states; "ARRAY": names by slot;
// "IPARRAY": dotted addresses by slot; "REMOTE": slot, Base64 name, team, address and ping by slot, separated
// by "|". Any other mode reads nothing. Reports under "GetPlayerList" and returns what it had by then.
PlayerTable GetPlayerList(Long Profile, TextView Mode) noexcept;

// The raw address text of the client in a slot (0 to MaxSlot). PlyrStats and IpList are the values that those
// addresses of the map hold.
std::wstring GetPlayerIp(Long Profile, std::uint8_t Slot, Long PlyrStats, Long IpList);

// The dotted address of eight hexadecimal digits, in reverse order of their pairs; "0.0.0.0" for "0". Error
// 13 for a pair that is missing or not hexadecimal.
std::wstring ConvertIP(TextView Text);

// Reads the life state and the armed flag of every statistics record into LifeStates and ArmedFlags, by the
// key name, "_", slot. Count is the number of records, SerDedi the word of that name. Reports under its own
// name.
void GetPlayerExtras(Long Profile, Long Count, Long SerDedi) noexcept;
