// Keeps the calls that the plug-in makes of the host's helper objects, and makes them again.
#pragma once

#include <cstddef>

namespace RecordingHelpers {

// Forgets what was kept and keeps the calls from now on, or stops keeping them.
void Record(bool On);
// How many calls are kept.
std::size_t Count();
// Makes the kept calls again, in order. Their results are dropped, failures included.
void Replay();

} // namespace RecordingHelpers
