// The real DLL against real helper objects and a real game server process: how long one tick takes, and how
// long the very same host calls take without it; and how long long lists take.
#include <windows.h>

#include <algorithm>
#include <cstdio>

#include "bench/ban_lists.h"
#include "bench/recording_helpers.h"
#include "bench/stopwatch.h"
#include "sandbox/wrappers/helper_wrappers.h"
#include "tests/wine/support.h"

namespace {

using namespace Support;

std::string Scenario(int Players) {
    std::string Lines;
    for (int Slot = 1; Slot <= Players; ++Slot)
        Lines += "0 join " + std::to_string(Slot) + " \"Player " + std::to_string(Slot) + "\" 10.0.0." +
                 std::to_string(Slot) + " blue 45\n";
    return Lines;
}

void PutLists(const std::wstring& Folder, int Entries) {
    const BanLists Lists = MakeBanLists(Entries);
    WriteText(BaseFolder() + L"\\profiles\\" + Folder + L"\\settings\\BannedNames.ini", Lists.Names);
    WriteText(BaseFolder() + L"\\profiles\\" + Folder + L"\\settings\\BannedIps.ini", Lists.Ips);
}

// The first base of the fixture: the host's folder, with the helper objects registered from it.
struct LaidOut {
    LaidOut() { BaseFolder(); }
};

// The wrappers are in place after the helper objects are registered and before the plug-in is created.
class WineBench : private LaidOut, private HelperWrappers::Installed, public PluginTest {};

void PrintMedians(int Players, int Entries, double Tick, double Replay, std::size_t Calls) {
    std::printf("%-8s %7d %8d %8zu %10.2f %10.2f %7.2f\n", "median", Players, Entries, Calls, Tick, Replay,
                Tick / Replay);
    std::fflush(stdout);
}

} // namespace

TEST_F(WineBench, OneTickAgainstTheSameCalls) {
    std::printf("%-8s %7s %8s %8s %10s %10s %7s\n", "", "players", "entries", "calls", "tick ms", "calls ms",
                "ratio");
    for (const int Players : {10, 50}) {
        const GameServer Server(L"bench" + std::to_wstring(Players), L"--build standard --players 50",
                                Scenario(Players));
        ASSERT_TRUE(Server.Await("join", "Player " + std::to_string(Players)));
        for (const int Entries : {10, 1000}) {
            const Support::Profile Given{L"bench", StandardGame, &Server};
            PutLists(L"bench", Entries);
            Load(1, Given);
            std::vector<double> Ticks, Replays;
            Sweep(1);
            RecordingHelpers::Record(true);
            Sweep(1);
            RecordingHelpers::Record(false);
            for (int Round = 0; Round < 20; ++Round) {
                Ticks.push_back(Milliseconds([&] { Sweep(1); }));
                Replays.push_back(Milliseconds([] { RecordingHelpers::Replay(); }));
            }
            std::sort(Ticks.begin(), Ticks.end());
            std::sort(Replays.begin(), Replays.end());
            PrintMedians(Players, Entries, Ticks[10], Replays[10], RecordingHelpers::Count());
            Early->DisableProfile(1);
        }
    }
}

TEST_F(WineBench, ListsOfTenThousand) {
    const GameServer Server(L"lists", L"--build standard --players 50", Scenario(50));
    ASSERT_TRUE(Server.Await("join", "Player 50"));
    const Support::Profile Given{L"lists", StandardGame, &Server};
    PutLists(L"lists", 10000);
    std::printf("load with 20,000 names and 10,000 addresses: %.0f ms\n",
                Milliseconds([&] { Load(1, Given); }));
    std::printf("load again: %.0f ms\n", Milliseconds([&] { Load(1, Given); }));
    std::printf("GetPlayersRem with them and 50 players: %.0f ms\n", Milliseconds([&] {
                    Automation::Values Arguments;
                    Arguments.push_back(Automation::FromWhole(1));
                    Arguments.push_back(ProfileData(Given));
                    Late.Call(L"GetPlayersRem", std::move(Arguments));
                }));
    std::fflush(stdout);
}
