// frmVNT, the plug-in's one window, as the rest of the plug-in sees it.
#pragma once

#include <cstdint>

#include "host/failure.h"

namespace frmVNT {

// A window of the host; 0 is none.
using HostWindow = std::intptr_t;

// Creates the window, hidden, when it is not there yet.
void Load();
bool IsLoaded();

// Takes its place in the host's area of this size, in twips (1440 to an inch), below the host's own heading.
// Loads the window if needed.
void FillArea(Long WidthTwips, Long HeightTwips);

// Turns the tab control to its first page.
void ShowFirstPage();
// Makes the window a child of the host's; if that is no window, it shows by itself.
void SetParent(HostWindow Host);
// Shows the current profile: players, lists and settings; arms the refresh timer. Reports under "FormReload".
// Inside other work on the window it only notes that this is due.
void FormReload();
// Carries out a reload that is due, unless work on the window still runs.
void CatchUpReload();
// Whether what the window shows is the current profile's: not while it is being read, and not when a
// console's request has given the index to another profile's folder. Clicks on anything else are refused.
bool ShowsCurrentProfile();
void Show();
// Hides the window and stops tmrRefresh; the sweep timers go on.
void Hide();
// Ends all timers, destroys the window and forgets what it showed. Does nothing when it is not loaded.
void Unload();
// The toolkit calls this when the window is gone, at our wish or with the host's window: forgets all that was
// kept of it.
void Gone() noexcept;

// The elements of tmrVN, one for each loaded profile; each tick calls tmrVN_Timer(Profile).
// Error 360 when the element exists already, error 7 when the system has no timer left.
void LoadSweepTimer(Long Profile, Long Milliseconds, Place Where = Place::current());
// Stops and removes the element; does nothing when it does not exist.
void UnloadSweepTimer(Long Profile);

} // namespace frmVNT
