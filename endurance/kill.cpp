// Kills the host's process at random moments while lists are edited, and then looks whether every file holds
// whole lines and everything but what the operation in progress adds or removes.
//
//   kill.exe [ROUNDS] [SEED]          a round's seed is SEED plus its number, from 0
//   kill.exe --child SEED PARENT PROCESS TARGET
#include <algorithm>
#include <cstdio>

#include "endurance/kill_child.h"
#include "endurance/operations.h"
#include "tests/wine/support.h"

namespace {

using namespace Kill;
using Child::Progress;

constexpr unsigned MostOperations = 12;
constexpr DWORD Killed = 9;

std::wstring MemoryName(DWORD Parent) { return L"VantorKill" + std::to_wstring(Parent); }

Progress& MapProgress(DWORD Parent) {
    const HANDLE Shared = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                             sizeof(Progress), MemoryName(Parent).c_str());
    void* const View = MapViewOfFile(Shared, FILE_MAP_ALL_ACCESS, 0, 0, 0);
    if (View == nullptr) throw std::runtime_error("no shared memory");
    return *static_cast<Progress*>(View);
}

struct Tally {
    int Rounds = 0, InOperation = 0, Findings = 0;
    int Inside[3] = {}; // the system's write, by who asked for it
};

// --- The kill

HANDLE StartChild(unsigned Seed, const Support::GameServer& Server) {
    wchar_t Program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, Program, MAX_PATH);
    std::wstring Command = L"kill.exe --child " + std::to_wstring(Seed) + L" " +
                           std::to_wstring(GetCurrentProcessId()) + L" " +
                           std::to_wstring(Server.ProcessRef()) + L" " + std::to_wstring(Server.MessageRef());
    STARTUPINFOW Startup{};
    Startup.cb = sizeof Startup;
    PROCESS_INFORMATION Started{};
    if (!CreateProcessW(Program, Command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        Support::BaseFolder().c_str(), &Startup, &Started))
        throw std::runtime_error("the child does not start");
    CloseHandle(Started.hThread);
    return Started.hProcess;
}

// False when it does not come in time or the child has ended by itself.
template <class F> bool Await(HANDLE Running, F&& Condition) {
    const DWORD Start = GetTickCount();
    while (!Condition()) {
        if (GetTickCount() - Start > Support::Patience) return false;
        if (WaitForSingleObject(Running, 1) == WAIT_OBJECT_0) return false;
    }
    return true;
}

void Spin(double Milliseconds) {
    LARGE_INTEGER Frequency, Start, Current;
    QueryPerformanceFrequency(&Frequency);
    QueryPerformanceCounter(&Start);
    do QueryPerformanceCounter(&Current);
    while (static_cast<double>(Current.QuadPart - Start.QuadPart) * 1000.0 <
           Milliseconds * static_cast<double>(Frequency.QuadPart));
}

// --- The comparison

struct Expectation {
    State Before, After; // of the operation in progress; the same when there is none
    const Kind* InProgress = nullptr;
};

Expectation Replay(State Lists, unsigned Seed, LONG Begun, LONG Done) {
    Source Operations(Seed);
    Expectation Expected{Lists, Lists};
    for (LONG Number = 1; Number <= Begun; ++Number) {
        const Operation Op = Operations.Next(Lists);
        Expected.Before = Lists;
        Apply(Lists, Op);
        Expected.After = Lists;
        if (Number <= Done) Expected.Before = Lists;
        Expected.InProgress = Number > Done ? Op.What : nullptr;
    }
    return Expected;
}

// A list under numbers moves up while one of its entries is deleted: then its neighbour stands there twice.
bool MayStandTwice(File Which) { return Which == Slaps || Which == Links; }

void Compare(File Which, const Expectation& Expected, const std::multiset<std::string>& Found,
             std::vector<std::string>& Missing, std::vector<std::string>& TooMany) {
    const auto& Before = Expected.Before[Which];
    const auto& After = Expected.After[Which];
    std::set<std::string> All(Before.begin(), Before.end());
    All.insert(After.begin(), After.end());
    All.insert(Found.begin(), Found.end());
    for (const std::string& Text : All) {
        const auto [Least, Most] = std::minmax({Before.count(Text), After.count(Text)});
        const bool Twice = Before != After && Least > 0 && MayStandTwice(Which);
        if (Found.count(Text) < Least) Missing.push_back(Text);
        if (Found.count(Text) > Most + (Twice ? 1 : 0)) TooMany.push_back(Text);
    }
}

void Report(Tally& Sum, unsigned Seed, const Expectation& Expected, const std::string& Text) {
    ++Sum.Findings;
    std::printf("seed %u, killed in \"%s\": %s\n", Seed,
                Expected.InProgress != nullptr ? Expected.InProgress->Name : "no operation", Text.c_str());
}

void Judge(Tally& Sum, unsigned Seed, const Expectation& Expected, const State& Found) {
    for (int At = 0; At < FileCount; ++At) {
        const auto Which = static_cast<File>(At);
        std::vector<std::string> Missing, TooMany;
        Compare(Which, Expected, Found[At], Missing, TooMany);
        for (const std::string& Text : TooMany)
            Report(Sum, Seed, Expected, std::string(NameOf(Which)) + " has too many of " + Text);
        for (const std::string& Text : Missing)
            Report(Sum, Seed, Expected, std::string(NameOf(Which)) + " lacks " + Text);
    }
}

void Round(Tally& Sum, unsigned Seed, Progress& Shared, const Support::GameServer& Server) {
    const std::filesystem::path Base = Support::BaseFolder();
    std::vector<std::string> Damage;
    WriteFirstFiles(Base);
    const State First = Read(Base, Damage);
    Shared = Progress{};
    std::mt19937 Random(~Seed);
    const LONG KilledAt = static_cast<LONG>(1 + Random() % MostOperations);
    const HANDLE Running = StartChild(Seed, Server);
    const bool IsInTime = Await(Running, [&] { return Shared.Begun >= KilledAt; });
    const Kind* const Last = Replay(First, Seed, KilledAt, KilledAt - 1).InProgress;
    Spin(Last->Milliseconds * static_cast<double>(Random() % 1000) / 1000.0);
    TerminateProcess(Running, Killed);
    WaitForSingleObject(Running, Support::Patience);
    DWORD ExitCode = 0;
    GetExitCodeProcess(Running, &ExitCode);
    CloseHandle(Running);

    ++Sum.Rounds;
    const Expectation Expected = Replay(First, Seed, Shared.Begun, Shared.Done);
    const State Found = Read(Base, Damage);
    Sum.InOperation += Shared.Begun != Shared.Done ? 1 : 0;
    ++Sum.Inside[Shared.Writing];
    if (!IsInTime)
        Report(Sum, Seed, Expected,
               ExitCode == Killed ? "stood still for 15 seconds"
                                  : "ended by itself with " + std::to_string(ExitCode));
    for (const std::string& Text : Damage) Report(Sum, Seed, Expected, Text);
    Judge(Sum, Seed, Expected, Found);
    std::fflush(stdout);
}

int RunAll(int Rounds, unsigned Seed) {
    Support::BaseFolder();
    Progress& Shared = MapProgress(GetCurrentProcessId());
    const Support::GameServer Server(L"kill", L"--build standard", "0 join 2 \"Somebody\" 10.7.7.7\n");
    Tally Sum;
    for (int Number = 0; Number < Rounds; ++Number)
        Round(Sum, Seed + static_cast<unsigned>(Number), Shared, Server);
    std::printf("%d rounds, %d killed inside an operation\n", Sum.Rounds, Sum.InOperation);
    std::printf("%d inside the system's write for the plug-in, %d inside the one for the host's object\n",
                Sum.Inside[Child::PlugIn], Sum.Inside[Child::HostObject]);
    std::printf("%d findings\n", Sum.Findings);
    return Sum.Findings == 0 ? 0 : 1;
}

} // namespace

int main(int Count, char** Arguments) {
    const auto Number = [&](int At, int Default) { return Count > At ? std::atoi(Arguments[At]) : Default; };
    if (Count == 6 && std::string(Arguments[1]) == "--child") try {
            Child::Run(MapProgress(static_cast<DWORD>(Number(3, 0))), static_cast<unsigned>(Number(2, 0)),
                       Number(4, 0), Number(5, 0));
        } catch (const Failure& Why) {
            std::printf("the host failed: %ls\n", Why.Description.c_str());
            return 3;
        }
    return RunAll(Number(1, 500), static_cast<unsigned>(Number(2, 1)));
}
