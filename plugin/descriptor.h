// What the plug-in says of itself: the texts of the descriptor and the privileges.
#pragma once

#include "host/text.h"

namespace Descriptor {

inline constexpr TextView Name = L"Vantor";
inline constexpr TextView Author = L"the Vantor authors";
inline constexpr TextView Description =
    L"This Plugin allows you to manage players that join your Ostra Server.";
inline constexpr TextView HelpFile = L"qrvVNT_help.chm";
// Least versions of the host's components: digit strings, not numbers.
inline constexpr TextView MinRCVer = L"1201";
inline constexpr TextView MinGMFVer = L"1104";
inline constexpr TextView MinMFMVer = L"1309";
inline constexpr TextView MinQRVVer = L"31105";
// The second, empty menu item has always been there; hosts count on two.
inline constexpr TextView ServerMenuItems[] = {L"Players", L""};

// The heading, then each privilege with its default.
inline constexpr TextView Privileges[] = {
    L"Vantor",        L"Slap Player|1",        L"Punt/Ban Player|1", L"Disarm/Rearm Player|1",
    L"Kill Player|1", L"Switch Player Team|1", L"Edit Ban Lists|1",  L"Edit Slap List|1",
};

} // namespace Descriptor
