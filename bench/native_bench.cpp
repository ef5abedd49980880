// One tick of the sweep against players and list entries, and beside it the time of the very same outside
// calls without the plug-in's logic.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <memory>

#include "bench/ban_lists.h"
#include "enforcement/sweep.h"
#include "plugin/lifecycle.h"
#include "plugin/remote.h"
#include "sandbox/game/game_memory.h"
#include "tests/fakes/faults.h"
#include "tests/fakes/server.h"

namespace {

using Clock = std::chrono::steady_clock;

// A game of up to 150 entries, more than a real one holds: slots are given out 1 to 50 and again.
class CrowdedGame {
public:
    explicit CrowdedGame(int Players) {
        const auto Count = static_cast<std::size_t>(Players) + 1;
        Take(Memory.Image, Simulation::ImageSize, Layout::ImageStart);
        Take(Memory.Entries, Layout::Entry::First + Count * Layout::Entry::Stride, 0x10000000);
        Take(Memory.Statistics, Count * Layout::Statistics::Stride, 0x20000000);
        Take(Memory.Clients, 64 * Layout::Client::Stride + 256, 0x40000000);
        Take(Memory.Entities, 4096, 0x50000000);
        const Layout::MemoryMap& Map = Layout::StandardMap;
        Put(Map.GameState, 2), Put(Map.MaxPlayers, Players), Put(Map.PlayerList, 0x10000000);
        Put(Map.PlyrStats, 0x20000000), Put(Map.IpList, 0x40000000);
        for (int Number = 0; Number < Players; ++Number) Join(Number);
    }

    Simulation::GameMemory Memory;

private:
    void Take(Simulation::MemoryBlock& Block, std::size_t Size, std::uint32_t Address) {
        Owned.emplace_back(static_cast<std::uint8_t*>(std::calloc(Size, 1)));
        Block = {Address, Size, Owned.back().get()};
    }
    void Put(std::uint32_t Address, std::int32_t Value) { Simulation::WriteLong(Memory, Address, Value); }
    void Join(int Number) {
        const auto Slot = static_cast<std::uint32_t>(1 + Number % 50);
        const auto At = static_cast<std::uint32_t>(Number);
        const std::string Name = "[clan] Player " + std::to_string(Number);
        const std::uint32_t Entry = 0x10000000 + Layout::Entry::First + At * Layout::Entry::Stride;
        Simulation::WriteText(Memory, Entry, Name, Layout::Entry::NameSize);
        Simulation::WriteByte(Memory, Entry + Layout::Entry::Team, 1);
        Simulation::WriteByte(Memory, Entry + Layout::Entry::Slot, static_cast<std::uint8_t>(Slot));
        const std::uint32_t Record = 0x20000000 + At * Layout::Statistics::Stride;
        Simulation::WriteText(Memory, Record + Layout::Statistics::Name, Name, 32);
        Simulation::WriteByte(Memory, Record + Layout::Statistics::ClientIndex,
                              static_cast<std::uint8_t>(Slot));
        Simulation::WriteText(Memory, 0x40000000 + Layout::Client::Address + Slot * Layout::Client::Stride,
                              "0A000007", 16);
    }

    struct Free {
        void operator()(std::uint8_t* Bytes) const { std::free(Bytes); }
    };
    std::vector<std::unique_ptr<std::uint8_t, Free>> Owned;
};

std::wstring Wide(const std::string& Text) { return {Text.begin(), Text.end()}; }

// Ban lists, and the idle punt with a limit that nobody reaches.
void PutLists(int Entries) {
    const BanLists Lists = MakeBanLists(Entries);
    Outside::PutFile(SettingsFile(L"BannedNames.ini"), Wide(Lists.Names));
    Outside::PutFile(SettingsFile(L"BannedIps.ini"), Wide(Lists.Ips));
    Outside::PutIni(PlayersIni, L"IdlePunt", L"Server1", L"1");
    Outside::PutIni(PlayersIni, L"IdleMax", L"Server1", L"10000000");
}

template <class F> double Seconds(F&& Timed) {
    const auto Start = Clock::now();
    Timed();
    return std::chrono::duration<double>(Clock::now() - Start).count();
}

// Times Run and, in turn with it, the outside calls that it made. They are kept from the second run on: the
// first one finds everything new.
template <class F> void Measure(benchmark::State& State, F&& Run) {
    std::vector<std::function<void()>> Calls;
    Run();
    Outside::Kept = &Calls;
    Outside::Calls = 0;
    Run();
    const double HostCalls = static_cast<double>(Outside::Calls);
    Outside::Kept = nullptr;
    double RunTime = 0, ReplayTime = 0;
    for (auto _ : State) {
        const double Once = Seconds(Run);
        State.SetIterationTime(Once);
        RunTime += Once;
        ReplayTime += Seconds([&] {
            for (const auto& Call : Calls) Call();
        });
    }
    State.counters["host_calls"] = HostCalls;
    State.counters["replay_ms"] = benchmark::Counter(ReplayTime * 1e3, benchmark::Counter::kAvgIterations);
    State.counters["ratio"] = RunTime / ReplayTime;
    if (!Outside::Reports.empty() || !Commands().empty()) State.SkipWithError("it did not run clean");
    Outside::DetachAll();
}

// Players and entries of the benchmark's arguments.
void SetUp(const benchmark::State& State, const CrowdedGame& Game) {
    Outside::Reset();
    Outside::AttachMemory(ProcessRef, &Game.Memory);
    SetProfileData(TestProfile, HostData());
    PutLists(static_cast<int>(State.range(1)));
}

void Tick(benchmark::State& State) {
    const CrowdedGame Game(static_cast<int>(State.range(0)));
    SetUp(State, Game);
    Measure(State, [] { tmrVN_Timer(TestProfile); });
}

void Reply(benchmark::State& State) {
    const CrowdedGame Game(static_cast<int>(State.range(0)));
    SetUp(State, Game);
    const RemoteRequest Request{TestProfile, HostData(), std::nullopt};
    Measure(State, [&] { benchmark::DoNotOptimize(CallGetPlayersRem(Request)); });
}

BENCHMARK(Tick)
    ->ArgNames({"players", "entries"})
    ->ArgsProduct({{10, 50, 150}, {10, 1000, 30000}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

BENCHMARK(Reply)
    ->ArgNames({"players", "entries"})
    ->ArgsProduct({{50}, {10, 1000, 30000}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
