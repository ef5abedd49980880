// The pipe on which remote consoles reach the host. A thread of its own listens; each request is handed to
// the host's window, because the plug-in lives on the window's thread.
#pragma once

#include <windows.h>

#include "host/text.h"

namespace RequestPipe {

// Posted to the window with a request as its LPARAM, to be handed to Answer.
inline constexpr UINT Arrived = WM_APP + 1;

void Listen(TextView Name, HWND Window);
// Carries the request out and lets the console have the answer.
void Answer(LPARAM Request);

} // namespace RequestPipe
