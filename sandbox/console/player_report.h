// What a remote console shows of the plug-in's answer about a profile: players, lists and settings.
#pragma once

#include <utility>
#include <vector>

#include "host/text.h"

struct ReportedPlayer {
    Long Slot;
    std::wstring Name, Team, Address, Ping;
};

struct PlayerReport {
    std::vector<ReportedPlayer> Players;
    using Entries = std::vector<std::pair<std::wstring, std::wstring>>; // key and value
    Entries BannedNames, BannedAddresses, Slaps, Settings;
};

// Decompresses and takes apart an answer of GetPlayersRem. Fails with what the answer says when it is no
// report: no game is running, or the plug-in could not make one.
PlayerReport ReadReport(const std::wstring& Answer);

// The report as tables of plain text.
std::wstring Printed(const PlayerReport& Report);
