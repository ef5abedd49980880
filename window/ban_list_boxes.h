// What the two ban list boxes show: their items, and the details of the selected one.
#pragma once

#include "host/failure.h"
#include "lists/ban_lists.h"
#include "lists/banned_name.h"
#include "lists/store_ban.h"
#include "window/controls.h"
#include "window/list_editing.h"

// Fill the lists from the profile's files; a missing file leaves its list as it is.
void ShowBannedNames(Long Profile);
void ShowBannedIps(Long Profile);

// Empty both lists and their details, for another profile.
void ClearBanLists();

// Append items ("[1] Bob", with the tag's number as the item's data), or addresses.
void AppendBannedNames(const Lines& Items);
void AppendBannedIps(const Lines& Addresses);

// Appends what a ban has stored for a player, unless the lists have it already.
void ShowNewBan(const BanOutcome& Stored);

// Show date and reason of the selected item; empty if none is selected.
void lstBannedNames_Click();
void lstBannedIps_Click();

inline constexpr DetailedList BannedNamesList{lstBannedNames, L"lstBannedNames", lstBannedNames_Click};
inline constexpr DetailedList BannedIpsList{lstBannedIps, L"lstBannedIps", lstBannedIps_Click};
