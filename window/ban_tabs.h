// The tabs "Banned Names" and "Banned IP Addresses".
#pragma once

#include "host/text.h"
#include "lists/ban_import.h"

// Fill the lists from the profile's files; a missing file leaves its list as it is.
void ShowBannedNames(Long Index);
void ShowBannedIps(Long Index);

// Append an item of the names list ("[1] Bob") with its tag's number, or an address.
void AppendBannedName(TextView Item);
void AppendBannedIp(TextView Address);

// Appends what a ban has stored for a player, unless the lists have it already; for the profile they show.
void ShowNewBan(Long Index, const std::wstring& Name, const std::wstring& Ip);

// Both lists, their details and the boxes below them, for another profile.
void ClearBanTabs();
