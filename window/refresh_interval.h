// How often the grid refreshes itself.
#pragma once

#include "host/failure.h"
#include "host/text.h"

// The milliseconds that a text in the "Secs." box stands for; half a minute for what is no number of at
// least 1.
Long RefreshMilliseconds(TextView Seconds);
// Starts tmrRefresh, or gives it the interval that the box asks for now. Error 7 when the system has no timer
// left.
void StartRefreshTimer(Place Where = Place::current());
