// One lock, one signal, a clock and one thread: all that the library needs of threads. filter/win32 asks the
// platform, as our compiler's own library has none; the native tests take the standard library's.
#pragma once

#include <cstdint>

namespace Threads {

// Holds the lock.
class Guard {
public:
    Guard();
    ~Guard();
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
};

// Lets go of the lock until Wake is called or the time has passed; false when it has.
bool Wait(unsigned Milliseconds);
void Wake();

// Since some moment in the past.
std::uint64_t Milliseconds();

// Runs Body on a thread of its own and keeps the library loaded until it has returned. False when there is no
// thread to be had.
bool Start(void (*Body)() noexcept);

} // namespace Threads
