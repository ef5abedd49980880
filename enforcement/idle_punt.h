// Punts players whose record in the game's memory has not changed for too long.
#pragma once

#include "enforcement/tick.h"

// One pass over the player list, when the profile's setting IdlePunt is "1". Counts TickSeconds a pass.
void PuntIdlePlayers(Tick& Current);
