// Punts players whose record in the game's memory has not changed for too long.
#pragma once

#include "host/failure.h"

// One pass over the player list, when the profile's setting IdlePunt is "1". Counts five seconds a pass.
void PuntIdlePlayers(Long Index);
