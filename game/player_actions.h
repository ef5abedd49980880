// The four actions on one player of a running game server. Each reports a failure under its own name and
// answers false; true means that it ran to its end, also when there was nothing to do.
#pragma once

#include "host/failure.h"
#include "host/text.h"

// Kicks the player in a slot (whole decimal number as text), while a game runs. With Ban the name, the
// address and their link are stored first. Quiet sends no announcement.
bool PuntPlayer(Long Index, TextView Name, TextView Ip, TextView Slot, bool Ban, TextView Reason,
                bool Quiet) noexcept;

// Sends the player to the spawn select screen.
bool KillPlayer(Long Index, TextView Name, bool ShowBoxes) noexcept;

// Mode "Disarm" clears, "Rearm" sets the armed flag; any other mode does nothing.
bool ArmPlayer(Long Index, TextView Name, TextView Mode, bool ShowBoxes) noexcept;

// Moves the player to the other team, when the game has teams.
bool SwitchTeam(Long Index, TextView Name) noexcept;

// --- What the game server is told. These fail as the memory helper does.

// Console command, channel "CMD".
void SendCommand(Long Index, TextView Text, Place Where = Place::current());
// On-screen message, channel "MSG". Kind is the host's last argument: 3, but 1 for a remote slap.
void SendServerMessage(Long Index, TextView Text, Long Kind = 3, Place Where = Place::current());
