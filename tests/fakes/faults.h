// How the fakes count their calls, are made to fail, and keep calls to be made again.
#pragma once

#include <functional>
#include <vector>

#include "host/failure.h"
#include "host/text.h"

namespace Outside {

// Counts one outside call; returns true when it is to give an empty answer, throws when it is to fail. A call
// that the real platform never fails (CanFail false) gives an empty answer instead.
bool Enter(TextView Name, bool CanFail = true, Place Where = Place::current());
// The same for a call to a helper object or the packet filter, inside which the host may come back into the
// plug-in.
bool EnterHost(TextView Name, bool CanFail = true, Place Where = Place::current());

// No file and no folder.
void ResetFiles();

// Where the calls of a tick are kept with their arguments, so that a benchmark can make the very same calls
// without the plug-in's logic; null while nothing is kept.
extern std::vector<std::function<void()>>* Kept;

template <class F> void Keep(F&& Again) {
    if (Kept != nullptr) Kept->emplace_back(std::forward<F>(Again));
}

} // namespace Outside
