// The library's lock, signal and thread from the standard library, with shorter waits.
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "filter/threads.h"
#include "tests/filter/fake_engine.h"

namespace {

std::mutex Lock, StartedLock;
std::condition_variable Signal;
std::vector<std::thread> Started;

} // namespace

namespace Threads {

Guard::Guard() { Lock.lock(); }
Guard::~Guard() { Lock.unlock(); }

bool Wait(unsigned Milliseconds) {
    std::unique_lock<std::mutex> Held(Lock, std::adopt_lock);
    // The thread sanitizer does not know the wait by the steady clock.
    const auto End =
        std::chrono::system_clock::now() + std::chrono::milliseconds(Milliseconds / FakeThreads::Haste);
    const bool IsWoken = Signal.wait_until(Held, End) == std::cv_status::no_timeout;
    Held.release();
    return IsWoken;
}

void Wake() { Signal.notify_one(); }

std::uint64_t Milliseconds() {
    const auto Passed = std::chrono::steady_clock::now().time_since_epoch();
    const auto Count = std::chrono::duration_cast<std::chrono::milliseconds>(Passed).count();
    return static_cast<std::uint64_t>(Count) * FakeThreads::Haste;
}

bool Start(void (*Body)() noexcept) {
    const std::lock_guard<std::mutex> Held(StartedLock);
    Started.emplace_back(Body);
    return true;
}

} // namespace Threads

namespace FakeThreads {

void Join() {
    std::vector<std::thread> Ending;
    {
        const std::lock_guard<std::mutex> Held(StartedLock);
        Ending = std::exchange(Started, {});
    }
    for (std::thread& Thread : Ending) Thread.join();
}

} // namespace FakeThreads
