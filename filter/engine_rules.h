// The rules that the engine holds for us, and how they follow the wanted ones. Only the library's own thread
// calls these.
#pragma once

#include <vector>

#include "filter/engine.h"

namespace EngineRules {

// Brings the engine to these rules, sorted and each once, in one transaction; opens the session when there is
// none. After a failure the engine holds what it held before, or nothing when the session is lost.
Failure Follow(const std::vector<Rule>& Rules);

// Returns why the engine has lost our rules; no failure while it holds them, is too busy to say, or no
// session is open.
Failure Check();

// Ends the session and with it all rules.
void Close() noexcept;

} // namespace EngineRules
