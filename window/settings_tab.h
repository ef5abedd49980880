// The tab "Settings".
#pragma once

#include "host/failure.h"

// Shows the stored settings of the profile. Writes nothing but a missing "BanMethod".
void ShowSettings(Long Index);
