// The host's window: profiles on the left, the plug-in's area on the right, a journal and a remote console
// below.
#pragma once

#include <windows.h>

#include "sandbox/host/configuration.h"

namespace HostWindow {

// Shows the window and begins: starts the game servers, creates the plug-in, listens to remote consoles.
// Null when the window cannot be made.
HWND Open(const HostConfiguration& Read, std::vector<TimedAction> Script);

// Pumps messages until the window is closed.
void Run(HWND Window);

} // namespace HostWindow
