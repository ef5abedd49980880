// Reads the game server's player table.
#pragma once

#include <cstdint>

#include "host/failure.h"
#include "host/text.h"

// Name of a nameless player in "ARRAY" mode, which the sweep punts.
inline constexpr TextView NamelessPlayer = L"PUNT_PLAYER";
// Address of a player whose address the server does not know (yet).
inline constexpr TextView NoAddress = L"0.0.0.0";
inline constexpr Long MaxSlot = 50;

struct ListedPlayer {
    std::wstring Slot; // two digits
    std::wstring Name;
    int Team; // 1 blue, 2 red
    std::wstring Ip;
    std::wstring Ping;
};

struct PlayerArray {
    Lines BySlot;          // 0 to MaxPlayers; empty where no player is
    bool Complete = false; // false when the read failed on the way (reported already)
};

// Mode "LIST": refreshes the window's grid (game/player_grid.h) and the life and armed states; answers no
// elements. Mode "ARRAY": names by slot; "IPARRAY": dotted addresses by slot; "REMOTE": slot, Base64 name,
// team, address and ping by slot, separated by "|". Any other mode reads nothing. Reports under
// "GetPlayerList" and answers what it had by then.
PlayerArray GetPlayerList(Long Index, TextView Mode) noexcept;

// The raw address text of the client in a slot (0 to 50). PlyrStats and IpList are the values that those
// addresses of the map hold.
std::wstring GetPlayerIp(Long Index, std::uint8_t Slot, Long PlyrStats, Long IpList,
                         Place Where = Place::current());

// The dotted address of eight hexadecimal digits, in reverse order of their pairs; "0.0.0.0" for "0". Reports
// a pair that is not hexadecimal under "ConvertIP" and answers the parts before it, which are no valid
// address.
std::wstring ConvertIP(TextView Text, Long Index) noexcept;

// Reads the life state and the armed flag of every statistics record into LifeStates and ArmedFlags, by the
// key name, "_", slot. Count is the number of records, SerDedi the word of that name. Reports under its own
// name.
void GetPlayerExtras(Long Index, Long Count, Long SerDedi) noexcept;
