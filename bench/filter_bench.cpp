// The packet-filter library: how long a rebuild holds up its caller, and how long the library's own thread
// then has the stand-in for the filtering engine at work.
#include <cstdio>

#include "bench/stopwatch.h"
#include "tests/wine/filter_library.h"

namespace {

void CallFor(const FilterLibrary& Library, Long Addresses) {
    Library.Clear();
    for (Long Address = 0; Address < Addresses; ++Address) Library.Block(Address, 32123);
}

// A look at the state of the engine takes time of its own, so it is not taken often.
void AwaitCount(std::size_t Wanted) {
    while (ReadEngineState(StandIn::StateFile()).Filters.size() != Wanted) Sleep(20);
}

} // namespace

TEST(FilterBench, Rebuilds) {
    const FilterLibrary Library(Support::BaseFolder() + L"\\qrvudpfw.dll");
    Library.LoadAndStart();
    ASSERT_TRUE(Library.AwaitState(3));
    std::printf("%9s %10s %10s %12s %12s\n", "addresses", "calls ms", "again ms", "added ms", "removed ms");
    for (const Long Addresses : {1000, 2000, 5000, 10000}) {
        const auto Count = static_cast<std::size_t>(Addresses);
        const double Calls = Milliseconds([&] { CallFor(Library, Addresses); });
        const double Added = Milliseconds([&] { AwaitCount(Count); });
        const std::uint64_t LastId = ReadEngineState(StandIn::StateFile()).LastId;
        const double Again = Milliseconds([&] { CallFor(Library, Addresses); });
        Sleep(2000);
        EXPECT_EQ(ReadEngineState(StandIn::StateFile()).LastId, LastId) << "the same addresses are no change";
        Library.Clear();
        const double Removed = Milliseconds([&] { AwaitCount(0); });
        std::printf("%9ld %10.2f %10.2f %12.0f %12.0f\n", static_cast<long>(Addresses), Calls, Again, Added,
                    Removed);
        std::fflush(stdout);
    }
    std::printf("added and removed: with the pause of 300 to 600 ms after the last call\n");
}
