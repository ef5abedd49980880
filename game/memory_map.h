// Where the game server keeps its data: thirteen keyed addresses for each of the two supported builds. This
// is the only place that holds an address; a further build is a further column.
#pragma once

#include "host/failure.h"
#include "host/text.h"

// The builds by the names they give themselves, in the order of the descriptor: standard, affiliate.
inline constexpr TextView StandardBuild = L"Delta Force,  V1.5.0.5";
inline constexpr TextView AffiliateBuild = L"Delta Force, NovaWorld Affiliate Server V1.5.0.11A";

// Whether a game identifier names the affiliate build: its last four characters are exactly "_AFF".
bool IsAffiliateGame(TextView GameId);

// Rebuilds the profile's memory map for a build. Reports under "SetMemory"; the map then ends where it
// failed.
void SetMemory(Long Profile, bool IsAffiliate) noexcept;

// The profile's address for a key such as "PlayerList"; error 5 when its map is empty, 9 when it has none, 0
// when the running work has ended with its server.
Long AddressOf(Long Profile, const wchar_t* Key, Place Where = Place::current());

// The 32-bit value that the game server holds at the address of a key.
Long ReadMapped(Long Profile, const wchar_t* Key, Place Where = Place::current());

// More player entries than this cannot be: the count is damaged.
inline constexpr Long MaxPlayerEntries = 1024;
// The MaxPlayers word of a profile's server; error 6 below 0 or above MaxPlayerEntries.
Long ReadMaxPlayers(Long Profile);
