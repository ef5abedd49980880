// The four actions on one player of a running game server. Each reports a failure under its own name and
// returns false; true means that it ran to its end, also when there was nothing to do.
#pragma once

#include "host/failure.h"
#include "host/text.h"
#include "lists/store_ban.h"

struct PuntRequest {
    Long Profile = 0;
    TextView Name{};
    TextView Ip{};
    Long Slot = 0;
    bool Ban = false; // name, address and their link are stored first
    // The entry that stands for the name: absent, the name as a whole; an empty one, none (the address
    // alone).
    std::optional<BannedName> Entry{};
    TextView Reason{};
    bool Quiet = false; // no announcement
};
struct PuntOutcome {
    bool Done = false; // it ran to its end, and a ban has stored something
    BanOutcome Ban{};
};
// Kicks the player in a slot, while a game runs; also when a ban could not be stored.
PuntOutcome PuntPlayer(const PuntRequest& Request) noexcept;

// Sends the player to the spawn select screen.
bool KillPlayer(Long Profile, TextView Name, bool ShowBoxes) noexcept;

// Mode "Disarm" clears, "Rearm" sets the armed flag; any other mode does nothing.
bool ArmPlayer(Long Profile, TextView Name, TextView Mode, bool ShowBoxes) noexcept;

// Moves the player to the other team, when the game has teams.
bool SwitchTeam(Long Profile, TextView Name) noexcept;

// Shows a message on the screens of the game, channel "MSG". Kind is the host's last argument: 3, but 1 for a
// remote slap. Fails as the memory helper does.
void SendServerMessage(Long Profile, TextView Text, Long Kind = 3);
