// The real DLL against real helper objects and a real game server process: how long one tick takes, and how
// long the very same host calls take without it; how long long lists take; and what 10,000 ticks leave
// behind, which alone can fail.
#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <cstdio>

#include "bench/recording_helpers.h"
#include "tests/wine/support.h"

namespace {

using namespace Support;

double Milliseconds(const std::function<void()>& Timed) {
    LARGE_INTEGER Start, End, Frequency;
    QueryPerformanceFrequency(&Frequency);
    QueryPerformanceCounter(&Start);
    Timed();
    QueryPerformanceCounter(&End);
    return static_cast<double>(End.QuadPart - Start.QuadPart) * 1000.0 /
           static_cast<double>(Frequency.QuadPart);
}

std::string Scenario(int Players) {
    std::string Lines;
    for (int Slot = 1; Slot <= Players; ++Slot)
        Lines += "0 join " + std::to_string(Slot) + " \"Player " + std::to_string(Slot) + "\" 10.0.0." +
                 std::to_string(Slot) + " blue 45\n";
    return Lines;
}

void PutLists(const std::wstring& Folder, int Entries) {
    std::string Names = "[Players]\r\n", Ips = "[IpAddresses]\r\n";
    for (int I = 0; I < Entries; ++I) {
        const std::string Number = std::to_string(I);
        Names += "Somebody else " + Number + "[1]=2024-01-01 1:02:03[-]None\r\n";
        Names += "Cheater " + Number + "[2]=2024-01-01 1:02:03[-]None\r\n";
        Ips += "172.16." + std::to_string(I / 256 % 256) + "." + std::to_string(I % 256) +
               "=2024-01-01 1:02:03\r\n";
    }
    WriteText(BaseFolder() + L"\\profiles\\" + Folder + L"\\settings\\BannedNames.ini", Names);
    WriteText(BaseFolder() + L"\\profiles\\" + Folder + L"\\settings\\BannedIps.ini", Ips);
}

struct LaidOut {
    LaidOut() { BaseFolder(); }
};

// The wrappers are in place after the helper objects are registered and before the plug-in is created.
class WineBench : private LaidOut, private RecordingHelpers::Installed, public PluginTest {};

void PrintTicks(const char* What, int Players, int Entries, double Tick, double Replay, std::size_t Calls) {
    std::printf("%-8s %7d %8d %8zu %10.2f %10.2f %7.2f\n", What, Players, Entries, Calls, Tick, Replay,
                Tick / Replay);
    std::fflush(stdout);
}

struct Footprint {
    unsigned Handles;
    SIZE_T CommittedBytes;
};

// From the system's table of all handles: Wine answers 0 to a process that asks for its own number.
unsigned CountHandles() {
    struct Entry {
        USHORT Process, Unused;
        UCHAR Type, Flags;
        USHORT Handle;
        void* Object;
        ULONG Access;
    };
    constexpr ULONG AllHandles = 16;
    using Query = LONG(WINAPI*)(ULONG, void*, ULONG, ULONG*);
    const auto Ask = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<ULONG> Table(1024 * 1024);
    if (Ask(AllHandles, Table.data(), static_cast<ULONG>(Table.size() * sizeof(ULONG)), nullptr) != 0)
        return 0;
    const auto* const First = reinterpret_cast<const Entry*>(Table.data() + 1);
    return static_cast<unsigned>(std::count_if(First, First + Table[0], [](const Entry& Each) {
        return Each.Process == static_cast<USHORT>(GetCurrentProcessId());
    }));
}

Footprint Now() {
    PROCESS_MEMORY_COUNTERS Memory{};
    Memory.cb = sizeof Memory;
    GetProcessMemoryInfo(GetCurrentProcess(), &Memory, sizeof Memory);
    return {CountHandles(), Memory.PagefileUsage};
}

void Print(const char* When, const Footprint& Taken) {
    std::printf("%-8s handles %5u   committed %8lu KB\n", When, Taken.Handles,
                static_cast<unsigned long>(Taken.CommittedBytes / 1024));
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
            PrintTicks("median", Players, Entries, Ticks[10], Replays[10], RecordingHelpers::Count());
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

TEST_F(WineBench, TenThousandTicksOfEightProfiles) {
    const GameServer Server(L"soak", L"--build affiliate --players 16", Scenario(4));
    ASSERT_TRUE(Server.Await("join", "Player 4"));
    const Support::Profile Given{L"soak", AffiliateGame, &Server};
    PutLists(L"soak", 10);
    for (Long Index = 1; Index <= 8; ++Index) Load(Index, Given);
    for (int Tick = 0; Tick < 200; ++Tick) Sweep(1 + Tick % 8);
    const Footprint Before = Now();
    Print("before", Before);
    for (int Tick = 0; Tick < 10000; ++Tick) {
        Sweep(1 + Tick % 8);
        if (Tick % 2500 == 2499) Print("", Now());
    }
    const Footprint After = Now();
    Print("after", After);
    ASSERT_GT(Before.Handles, 0u);
    ASSERT_GT(Before.CommittedBytes, 0u);
    EXPECT_LE(After.Handles, Before.Handles + 2);
    EXPECT_LE(After.CommittedBytes, Before.CommittedBytes + 512 * 1024);
}
