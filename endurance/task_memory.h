// Counts what is alive of COM's task memory, to which automation strings, arrays and Variants' contents
// belong.
#pragma once

namespace TaskMemory {

// Begins to count. Automation keeps freed strings for later use and would hide a leak among them: the
// environment variable OANOCACHE, set before the process starts, turns that off.
void Watch();
long Alive();

} // namespace TaskMemory
