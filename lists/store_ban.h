// The ban of a player: name, address and the link between them, each checked and prepared once.
#pragma once

#include "lists/ban_lists.h"

struct Ban {
    Long Profile = 0;
    std::optional<BannedName> Name{}; // absent: the address alone
    TextView Ip{};                    // one that is not known (IsKnownIp) is left out
    TextView Reason{};                // blank: "None" is stored
    TextView Stamp{};
};

struct BanOutcome {
    // What the files hold now, for the lists in the window; absent and empty where nothing was stored.
    std::optional<BannedName> Name{};
    std::wstring Ip{};
    // The names file holds the bare name, without a tag: nothing but the link was written.
    bool StandsWithoutTag = false;
    // What somebody should know of it, as a sentence; empty when nothing is missing or the address is only
    // not known.
    std::wstring Problem{};

    bool IsBan() const { return Name || !Ip.empty(); }
};

// Half a ban is a ban: when one of name and address cannot be stored, the other is. When neither can be,
// nothing is written. Fails as the helpers do, also when both writes failed.
BanOutcome StoreBan(const Ban& Wanted);
