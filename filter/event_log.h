// The Windows event log, where an administrator finds out why nobody is blocked.
#pragma once

#include "filter/engine.h"

namespace EventLog {

// Writes one warning. What cannot be written is lost.
void Report(const Failure& Failed) noexcept;

} // namespace EventLog
