// The ban of a player: name, address and the link between them, each checked and prepared once.
#pragma once

#include "lists/ban_lists.h"

struct Ban {
    Long Profile = 0;
    BannedName Name{};
    TextView Ip{};
    TextView Reason{}; // blank: "None" is stored
    TextView Stamp{};
};

struct BanOutcome {
    // The names file holds the bare name, without a tag: nothing but the link was written.
    bool AlreadyBanned = false;
    bool NameStored = false, IpStored = false;
    // What could not be stored, as a sentence; empty when nothing is missing or the address is only not
    // known.
    std::wstring Missing;
};

// Half a ban is a ban: when one of name and address cannot be stored, the other and the link are. When
// neither can be, nothing is written. Fails as the helpers do, also when both writes failed.
BanOutcome StoreBan(const Ban& Wanted);
