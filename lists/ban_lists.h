// The ban lists of a profile: banned names and banned addresses.
//
//   BannedNames.ini [Players]      name[1] or fragment[2] = time stamp[-]reason
//   BannedIps.ini   [IpAddresses]  address pattern        = time stamp
//
// The procedures without a named report fail as the helper objects do; those that write, with 75 or 76, too,
// when the settings folder cannot be made.
#pragma once

#include <optional>

#include "host/failure.h"
#include "host/text.h"
#include "lists/banned_name.h"
#include "lists/ip_pattern.h"

// The ban files of a profile by their paths; made once for a tick or an operation.
struct BanFiles {
    explicit BanFiles(Long Profile);

    Long Profile;
    std::wstring Folder; // that they are in
    std::wstring Names, Ips, References;
};

// Local date and time as every entry carries it: "2004-07-09 9:05:03".
std::wstring TimeStamp();

// Makes a folder of BanFiles when it is missing.
void EnsureFolder(const std::wstring& Folder);

// What somebody is told when an entry is not in the file after it was written.
inline constexpr TextView NameNotStored = L"The name could not be stored in the ban list.";
inline constexpr TextView IpNotStored = L"The address could not be stored in the ban list.";

// --- Reading

// The items of the banned-names list ("[1] Bob"), in file order; absent when the file is missing.
// Reports under its own name; the items are then absent.
std::optional<Lines> GetBannedNames(Long Profile) noexcept;
// The items of the banned-addresses list; absent when the file is missing. Reports under its own name.
std::optional<Lines> GetBannedIps(Long Profile) noexcept;

// Whether the whole name is banned.
bool HasBannedName(const BanFiles& Files, TextView Name);
// Whether the name stands in the file without a tag, which only somebody who wrote it by hand can have done;
// such an entry has always stopped a ban. A name that ends in a tag itself would find another one's entry and
// has none.
bool HasBareName(const BanFiles& Files, TextView Name);
// Whether the address or pattern stands in the file, to the letter.
bool HasBannedIp(const BanFiles& Files, TextView Pattern);

// The lines of the names' section, and the parts of names that are banned by them.
Lines ReadNameLines(const BanFiles& Files);
Lines NameFragments(const Lines& NameLines);
// The banned addresses without the patterns.
Lines ExactAddresses(const BanFiles& Files);

struct BanDetails {
    std::wstring Date;
    std::wstring Reason;
};
BanDetails BannedNameDetails(Long Profile, const BannedName& Banned);
std::wstring BannedIpDate(Long Profile, TextView Address);

// --- Writing. The settings folder is made when it is missing. One change of a file at a time, with the
// removals: one inside a call of another is refused (error 5).

// Both return whether the entry is in the file, where it is looked up after it was written: the INI format
// cannot carry every key, and a write may be lost without a word.
bool StoreBannedName(const BanFiles& Files, const BannedName& Banned, TextView Stamp, TextView Reason);
// Blanks around the address are left out.
bool StoreBannedIp(const BanFiles& Files, TextView Address, TextView Stamp);

// Around a change of the addresses that the packet filter is to know: sets IpListChanged before and after it,
// so that a tick inside the change does not take the flag away.
class IpListChange {
public:
    explicit IpListChange(Long Profile);
    ~IpListChange();
    IpListChange(const IpListChange&) = delete;
    IpListChange& operator=(const IpListChange&) = delete;

private:
    Long Profile;
};

// --- Removing. An entry that is not there is no failure. Error 5 for one that does not survive the code
// page: it would be another one's.

// By the direct private-profile write; errors 75 and 76.
void RemoveBannedName(const BanFiles& Files, const BannedName& Banned);
void RemoveBannedIp(const BanFiles& Files, TextView Address);
// Through the host, for entries that go because another one that they are linked to went.
void RemoveLinkedName(const BanFiles& Files, TextView Name);
void RemoveLinkedIp(const BanFiles& Files, TextView Address);
