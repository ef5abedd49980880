// The host's menu bar, as a table of captions and what they do.
#pragma once

#include <windows.h>

#include "host/text.h"

namespace HostMenu {

// The bar, for CreateWindow: the window owns it.
HMENU Create();

// The action of a menu entry for the selected profile; empty when the entry has none.
std::wstring ActionOf(int Id, Long Profile);
// The remote console command that an entry puts into the command line to be completed; empty when it has
// none.
std::wstring CommandOf(int Id);

} // namespace HostMenu
