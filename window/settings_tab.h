// The tab "Settings", and how often the grid refreshes itself.
#pragma once

#include "host/failure.h"
#include "host/text.h"

// Shows the stored settings of the profile.
void ShowSettings(Long Profile);
// Writes the default of a "BanMethod" that is missing from a Players.ini. Fails as WriteSetting does.
void StoreMissingBanMethod(Long Profile);

// Each stores what its control shows now; a number box with another text stores nothing. One that cannot be
// stored (errors 5, 75) shows what holds again.
void optMethod_Click(int Method); // 0 command line, 1 kernel driver
void chkIdlePunt_Click();
void txtIdleMax_Change();
void chkRefresh_Click(); // also starts or stops the refresh timer
void txtRefreshInterval_Change();
// Each shows the value that holds instead of what was typed last.
void txtIdleMax_LostFocus();
void txtRefreshInterval_LostFocus();

// The milliseconds that a text in the "Secs." box stands for; half a minute if it is no number of at least 1.
Long RefreshMilliseconds(TextView Seconds);
// Starts tmrRefresh, or gives it the interval that the box asks for now. Error 7 if the system has no timer
// left.
void StartRefreshTimer(Place Where = Place::current());
