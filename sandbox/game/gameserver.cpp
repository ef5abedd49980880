// The game server process: the simulation at the real addresses of its build, in real time.
#include <windows.h>

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "sandbox/engine/engine_state.h"
#include "sandbox/game/scenario.h"

namespace {

// The data of the game at its fixed addresses. It begins somewhere in the program's static data, wherever the
// linker put it, and is long enough to reach the last address from there.
constexpr std::size_t ReachSize = 0x00C00000;
alignas(4096) std::uint8_t Reach[ReachSize];

volatile LONG Closed = 0;

struct Options {
    Simulation::Settings Setup;
    std::string Scenario, Journal, Filter;
    std::uint32_t Seed = 1, For = 0; // milliseconds; 0: for ever
};

std::uint32_t ToNumber(const std::string& Option, const std::string& Text, std::uint32_t Highest) {
    std::uint32_t Value = 0;
    const auto [End, Error] = std::from_chars(Text.data(), Text.data() + Text.size(), Value);
    if (Error != std::errc{} || End != Text.data() + Text.size() || Value > Highest)
        throw std::runtime_error(Option + ": a number from 0 to " + std::to_string(Highest) + " is wanted");
    return Value;
}

struct OptionRow {
    const char* Name;
    std::uint32_t Highest; // of a number; 0: a text
    void (*Set)(Options&, const std::string& Text, std::uint32_t Number);
};

constexpr std::uint32_t AnyNumber = 0x7FFFFFFF;

const OptionRow OptionRows[] = {
    {"--build", 0,
     [](Options& To, const std::string& Text, std::uint32_t) {
         if (Text != "standard" && Text != "affiliate")
             throw std::runtime_error("--build: standard or affiliate is wanted");
         To.Setup.Build = Text == "affiliate" ? Layout::Build::Affiliate : Layout::Build::Standard;
     }},
    {"--scenario", 0, [](Options& To, const std::string& Text, std::uint32_t) { To.Scenario = Text; }},
    {"--journal", 0, [](Options& To, const std::string& Text, std::uint32_t) { To.Journal = Text; }},
    {"--filter", 0, [](Options& To, const std::string& Text, std::uint32_t) { To.Filter = Text; }},
    {"--seed", AnyNumber, [](Options& To, const std::string&, std::uint32_t Number) { To.Seed = Number; }},
    {"--for", AnyNumber, [](Options& To, const std::string&, std::uint32_t Number) { To.For = Number; }},
    {"--players", Layout::LastSlot,
     [](Options& To, const std::string&, std::uint32_t Number) {
         To.Setup.MaxPlayers = static_cast<int>(Number);
     }},
    {"--dedicated", 1,
     [](Options& To, const std::string&, std::uint32_t Number) { To.Setup.Dedicated = Number == 1; }},
    {"--type", AnyNumber,
     [](Options& To, const std::string&, std::uint32_t Number) {
         To.Setup.GameType = static_cast<std::int32_t>(Number);
     }},
    {"--port", 65535,
     [](Options& To, const std::string&, std::uint32_t Number) {
         To.Setup.Port = static_cast<std::int32_t>(Number);
     }},
    {"--state", AnyNumber,
     [](Options& To, const std::string&, std::uint32_t Number) {
         To.Setup.State = static_cast<std::int32_t>(Number);
     }},
};

Options ReadOptions(int Count, char** Words) {
    Options Result;
    for (int At = 1; At < Count; At += 2) {
        const std::string Name = Words[At];
        const OptionRow* Found = nullptr;
        for (const OptionRow& Row : OptionRows)
            if (Name == Row.Name) Found = &Row;
        if (!Found) throw std::runtime_error("unknown option " + Name);
        if (At + 1 == Count) throw std::runtime_error(Name + ": the value is missing");
        const std::string Text = Words[At + 1];
        Found->Set(Result, Text, Found->Highest == 0 ? 0 : ToNumber(Name, Text, Found->Highest));
    }
    Result.Setup.ProcessId = GetCurrentProcessId();
    Result.Setup.MessageTarget = GetCurrentThreadId();
    return Result;
}

std::string ReadWhole(const std::string& Path) {
    std::ifstream File(Path, std::ios::binary);
    if (!File) throw std::runtime_error("cannot read " + Path);
    return {std::istreambuf_iterator<char>(File), {}};
}

// The process's own addresses, one to one.
Simulation::GameMemory OwnMemory() {
    const auto Start = reinterpret_cast<std::uintptr_t>(Reach);
    if (Start > Layout::ImageStart || Start + ReachSize < Layout::ImageEnd)
        throw std::runtime_error("the program's data does not cover the addresses of the game");
    const auto Allocate = [](std::size_t Size) {
        void* Bytes = VirtualAlloc(nullptr, Size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
        if (!Bytes) throw std::bad_alloc();
        return Simulation::MemoryBlock{static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(Bytes)),
                                       Size, static_cast<std::uint8_t*>(Bytes)};
    };
    return {.Image = {Layout::ImageStart, Simulation::ImageSize, Reach + (Layout::ImageStart - Start)},
            .Entries = Allocate(Simulation::EntriesSize),
            .Statistics = Allocate(Simulation::StatisticsSize),
            .Clients = Allocate(Simulation::ClientsSize),
            .Entities = Allocate(Simulation::EntitiesSize)};
}

// The addresses that the filtering engine blocks for this port; none without a state file.
std::vector<std::string> BlockedAddresses(const std::string& StateFile, std::int32_t Port) {
    std::vector<std::string> Blocked;
    const EngineState State = ReadEngineState(std::filesystem::path(StateFile).wstring());
    for (const auto& [Id, Filter] : State.Filters)
        if (Filter.Port == Port) Blocked.push_back(Filter.Address);
    return Blocked;
}

std::FILE* OpenJournal(const std::string& Path) {
    if (Path.empty()) return stdout;
    // "b": the lines end as the shell's tools want them.
    std::FILE* File = std::fopen(Path.c_str(), "wb");
    if (!File) throw std::runtime_error("cannot write " + Path);
    return File;
}

BOOL WINAPI CloseHandler(DWORD) {
    InterlockedExchange(&Closed, 1);
    return TRUE;
}

void Run(const Options& Chosen) {
    Simulation::Playback Script;
    if (!Chosen.Scenario.empty())
        Script.Events = Simulation::ParseScenario(ReadWhole(Chosen.Scenario), Chosen.Seed);
    std::FILE* Journal = OpenJournal(Chosen.Journal);
    Simulation::Game World;
    World.Setup = Chosen.Setup;
    World.Memory = OwnMemory();
    World.Journal = [Journal](const Simulation::JournalEntry& Entry) {
        std::fprintf(Journal, "%s\n", Simulation::FormatEntry(Entry).c_str());
        std::fflush(Journal);
    };
    Simulation::Start(World);
    const ULONGLONG Began = GetTickCount64();
    for (unsigned Round = 0; World.Running; ++Round) {
        if (!Chosen.Filter.empty() && Round % 50 == 0)
            Simulation::SetFiltered(World, BlockedAddresses(Chosen.Filter, Chosen.Setup.Port));
        const auto Elapsed = static_cast<std::uint32_t>(GetTickCount64() - Began);
        Simulation::Play(World, Script, Elapsed);
        if (Closed != 0) Simulation::Stop(World, "closed");
        if (Chosen.For != 0 && Elapsed >= Chosen.For) Simulation::Stop(World, "time");
        Sleep(5);
    }
}

} // namespace

int main(int Count, char** Words) {
    try {
        SetConsoleCtrlHandler(CloseHandler, TRUE);
        Run(ReadOptions(Count, Words));
        return 0;
    } catch (const std::exception& Error) {
        std::fprintf(stderr, "gameserver: %s\n", Error.what());
        return 2;
    }
}
