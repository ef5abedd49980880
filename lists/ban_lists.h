// The ban lists of a profile: banned names and banned addresses.
//
//   BannedNames.ini [Players]      name[1] or fragment[2] = time stamp[-]reason
//   BannedIps.ini   [IpAddresses]  address pattern        = time stamp
//
// The procedures without a named report fail as the helper objects do.
#pragma once

#include <optional>

#include "host/failure.h"
#include "host/text.h"

inline constexpr TextView NamesSection = L"Players";
inline constexpr TextView IpsSection = L"IpAddresses";
inline constexpr TextView WholeName = L"[1]";
inline constexpr TextView PartOfName = L"[2]";
inline constexpr TextView ReasonSeparator = L"[-]";

// Local date and time as every entry carries it: "2004-07-09 9:05:03".
std::wstring TimeStamp();

// The items of the banned-names list ("[1] Bob"), in file order; absent when the file is missing.
// Reports under its own name; the items are then absent.
std::optional<Lines> GetBannedNames(Long Index) noexcept;
// The items of the banned-addresses list; absent when the file is missing. Reports under its own name.
std::optional<Lines> GetBannedIps(Long Index) noexcept;

// "[2] Bob" <-> "Bob[2]".
std::wstring KeyOfItem(TextView Item);
std::wstring ItemOfKey(TextView Key);

// Whether a text is an address or an address pattern ("127.0.0.*", "127.0.*", "127.*", "*").
// A negative part passes: it matches nobody and has always been accepted.
bool IsValidIp(TextView Text);

// Whether a name or an address can be written as a key at all. The INI format ends a key at "=": a player
// who calls himself "e[2]=" would have everybody banned whose name holds an "e", and the address "5.*=" a
// whole range. A line that begins with "[" opens a section. Blanks before a key are lost: a ban of " Bob"
// would be one of "Bob".
bool CanBeKey(TextView Key);
// Error 5 for an address that cannot be a key.
void RefuseUnlessKey(TextView Address, Place Where = Place::current());

// Both make the settings folder when it is missing. A name entry (Key carries its tag) is read back, because
// the INI format cannot carry every name as a key: false when the entry is not there.
bool StoreBannedName(Long Index, TextView Key, TextView Stamp, TextView Reason,
                     Place Where = Place::current());
// Error 5 for a text that cannot be a key.
void StoreBannedIp(Long Index, TextView Address, TextView Stamp, Place Where = Place::current());

// Deletes a key by the direct private-profile write; errors 75 and 76.
void DeleteBannedName(Long Index, TextView Key);
void DeleteBannedIp(Long Index, TextView Address);

struct BanDetails {
    std::wstring Date;
    std::wstring Reason;
};
BanDetails BannedNameDetails(Long Index, TextView Key, Place Where = Place::current());
std::wstring BannedIpDate(Long Index, TextView Address, Place Where = Place::current());

// Makes the settings folder of the profile when it is missing.
void EnsureSettingsFolder(Long Index, Place Where = Place::current());
