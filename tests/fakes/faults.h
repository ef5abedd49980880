// How the fakes count their calls and are made to fail.
#pragma once

#include "host/failure.h"
#include "host/text.h"

namespace Outside {

// Counts one outside call; answers true when it is to give an empty answer, throws when it is to fail. A call
// that the real platform never fails (CanFail false) gives an empty answer instead.
bool Enter(TextView Name, bool CanFail = true, Place Where = Place::current());

} // namespace Outside
