// Kills the host's process at random moments while it changes its lists, and then looks whether every file
// holds whole lines and everything but what the change adds or removes.
//
//   kill.exe [ROUNDS] [SEED]          a round's seed is SEED plus its number, from 0
//   kill.exe --child CHANGE PARENT PROCESS TARGET
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <regex>
#include <set>
#include <sstream>

#include "endurance/driver.h"
#include "tests/wine/remove_folder.h"
#include "tests/wine/support.h"

namespace {

namespace fs = std::filesystem;

// --- The files

struct FileRow {
    char Letter; // begins the file's lines where they are compared
    const char* Path;
    const char* First; // what it holds at the beginning of a round
};
constexpr char Names = 'N', Ips = 'I', Links = 'L', Slaps = 'S', Settings = 'P', Log = 'A';
constexpr FileRow Files[] = {
    {Names, "profiles/kill/settings/BannedNames.ini",
     "[Players]\r\nOne[1]=2026-01-01 9:00:00[-]why\r\nTwo[1]=2026-01-01 9:00:00[-]why\r\n"
     "Three[1]=2026-01-01 9:00:00[-]why\r\n"},
    {Ips, "profiles/kill/settings/BannedIps.ini",
     "[IpAddresses]\r\n10.1.0.1=2026-01-01 9:00:00\r\n10.1.0.2=2026-01-01 9:00:00\r\n"
     "10.1.0.3=2026-01-01 9:00:00\r\n10.1.*=2026-01-01 9:00:00\r\n"},
    {Links, "profiles/kill/settings/BannedReference.ini",
     "[One]\r\n0=10.1.0.1\r\n1=10.1.0.2\r\n2=10.1.0.3\r\n[Two]\r\n0=10.1.0.2\r\n1=10.1.0.3\r\n"},
    {Slaps, "profiles/kill/settings/Slaps.ini",
     "[Messages]\r\n0=Hello.\r\n1=Mind your language.\r\n2=Play fair.\r\n3=Calm down.\r\n4=Bye.\r\n"},
    {Settings, "Plugins/Players.ini",
     "[BanMethod]\r\nkill=0\r\n[IdlePunt]\r\nkill=0\r\n[IdleMax]\r\nkill=5\r\n[AutoRefresh]\r\nkill=0\r\n"}};
constexpr const char* LogFolder = "profiles/kill/adminlogs";

// All files' entries, without what changes by itself: keys that only number, and times. A line that is none
// of its file is an entry with a "!".
using State = std::multiset<std::string>;

void WriteFirstFiles(const fs::path& Base) {
    if (!RemoveFolder(Base / LogFolder)) throw std::runtime_error("the logs cannot be removed");
    fs::create_directories(Base / LogFolder);
    for (const FileRow& File : Files) {
        fs::create_directories((Base / File.Path).parent_path());
        std::ofstream(Base / File.Path, std::ios::binary) << File.First;
    }
}

std::string LogEntry(const std::string& Line) {
    static const std::regex Whole(R"(\[[0-9:]+\]\[Vantor\] (.*)\) from tester \(192\.0\.2\.1\))");
    std::smatch Parts;
    return std::regex_match(Line, Parts, Whole) ? Parts[1].str() : "!" + Line;
}

// A time stamp becomes "*"; what is none stays, and will not be what is expected.
std::string IniEntry(char File, const std::string& Line, const std::string& Section) {
    static const std::regex Stamp(R"(\d{4}-\d\d-\d\d \d+:\d\d:\d\d)");
    const std::size_t Equals = Line.find('=');
    if (Equals == std::string::npos || Section.empty()) return "!" + Line;
    const std::string Value = Line.substr(Equals + 1);
    if (File == Slaps) return Value;
    return File == Names || File == Ips ? std::regex_replace(Line, Stamp, "*") : Section + "=" + Value;
}

void ReadFile(char File, const fs::path& Path, State& Found) {
    std::ifstream Stream(Path, std::ios::binary);
    std::string Section;
    for (std::string Line; std::getline(Stream, Line);) {
        const bool IsWhole = !Stream.eof() && Line.ends_with('\r');
        if (IsWhole) Line.pop_back();
        if (!IsWhole || Line.find('\r') != std::string::npos)
            Found.insert(std::string{File, ' ', '!'} + Line);
        else if (File != Log && Line.starts_with('[') && Line.ends_with(']'))
            Section = Line.substr(1, Line.size() - 2);
        else if (!Line.empty())
            Found.insert(std::string{File, ' '} +
                         (File == Log ? LogEntry(Line) : IniEntry(File, Line, Section)));
    }
}

State Read(const fs::path& Base) {
    State Found;
    for (const FileRow& File : Files) ReadFile(File.Letter, Base / File.Path, Found);
    for (const fs::directory_entry& Day : fs::directory_iterator(Base / LogFolder))
        ReadFile(Log, Day.path(), Found);
    return Found;
}

// --- The changes

struct Change {
    int Milliseconds;      // about how long it takes
    const wchar_t* Member; // of a request, with names and reasons in Base64; InWindow otherwise
    const wchar_t* Data;
    Driver::Edit Edit;
    const char *Removes, *Adds; // entries, separated by ";"
};

constexpr const char *NoName = "N One[1]=*[-]why;I 10.1.0.1=*;I 10.1.0.2=*;I 10.1.0.3=*;"
                               "L One=10.1.0.1;L One=10.1.0.2;L One=10.1.0.3",
                     *NoIp = "I 10.1.0.2=*;N One[1]=*[-]why;N Two[1]=*[-]why;L One=10.1.0.2;L Two=10.1.0.2",
                     *Ban = "N New[1]=*[-]why;I 10.2.0.1=*;L New=10.2.0.1",
                     *BanBy = "N New[1]=*[-]why;I 10.2.0.1=*;L New=10.2.0.1;"
                              "A Ban Player #2 (Name: New, IP: 10.2.0.1",
                     *Edited = "S New.;A Edit Slap Message (Old Message: Bye., New Message: New.";
constexpr const wchar_t *InWindow = nullptr, *None = nullptr;

// New is TmV3, One T25l, why d2h5.
const Change Changes[] = {
    {4, L"AddBannedRem", L"TmV3WzFd|d2h5|Name", {}, "", "N New[1]=*[-]why;A Add Banned Name (New[1]"},
    {4, L"AddBannedRem", L"MTAuMi4wLjE=|d2h5|Ip", {}, "", "I 10.2.0.1=*;A Add Banned Ip (10.2.0.1"},
    {12, L"PuntPlayerRem", L"TmV3|10.2.0.1|2|Ban|d2h5", {}, "", BanBy},
    {8, L"RemoveBannedRem", L"T25l|Name|1", {}, NoName, "A Remove Banned Name (One"},
    {8, L"RemoveBannedRem", L"MTAuMS4wLjI=|Ip|1", {}, NoIp, "A Remove Banned Ip (10.1.0.2"},
    {4, L"AddSlapRem", L"New.", {}, "", "S New.;A Add Slap Message (Message: New."},
    {4, L"EditSlapRem", L"Bye.|New.", {}, "S Bye.", Edited},
    {8, L"DeleteSlapRem", L"Hello.", {}, "S Hello.", "A Delete Slap Message (Message: Hello."},
    {4, L"SetIdleMax", L"7", {}, "P IdleMax=5", "P IdleMax=7;A Set Idle Max Time (Minutes: 7"},
    {60, InWindow, None, {0, None, ID_txtBannedName, L"New", ID_cmdAddName}, "", "N New[1]=*[-]why"},
    {100, InWindow, None, {ID_lstBannedNames, L"[1] One", 0, None, ID_cmdRemoveName}, NoName, ""},
    {60, InWindow, None, {0, None, ID_txtAddIp, L"10.2.0.1", ID_cmdAddIp}, "", "I 10.2.0.1=*"},
    {100, InWindow, None, {ID_lstBannedIps, L"10.1.0.2", 0, None, ID_cmdRemoveIp}, NoIp, ""},
    {20, InWindow, None, {0, None, ID_txtSlap, L"New.", ID_cmdSlapAdd}, "", "S New."},
    {10, InWindow, None, {ID_lstSlaps, L"Bye", ID_txtSlap, L"New.", ID_cmdSlapEdit}, "S Bye.", "S New."},
    {10, InWindow, None, {ID_lstSlaps, L"Play", 0, None, ID_cmdSlapDelete}, "S Play fair.", ""},
    {400,
     InWindow,
     None,
     {0, None, 0, L"10.2.0.1           New.                 why.", ID_mnuMerrow300},
     "",
     Ban},
};

State Entries(const char* Text) {
    State Found;
    std::istringstream All(Text);
    for (std::string Entry; std::getline(All, Entry, ';');) Found.insert(Entry);
    return Found;
}

// --- The process that is killed: a host with the plug-in, which makes one change.

// What parent and child share, in memory that outlives the child.
enum Stage : LONG { Starting, Begun, Ended };

volatile LONG& SharedStage(DWORD Parent) {
    const std::wstring Name = L"VantorKill" + std::to_wstring(Parent);
    const HANDLE Shared =
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(LONG), Name.c_str());
    void* const View = MapViewOfFile(Shared, FILE_MAP_ALL_ACCESS, 0, 0, 0);
    if (View == nullptr) throw std::runtime_error("no shared memory");
    return *static_cast<volatile LONG*>(View);
}

[[noreturn]] void RunChild(const Change& Made, volatile LONG& Shared, Long Process, Long Target) {
    const Automation::Apartment Com;
    const HWND Area = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 720, 660,
                                      nullptr, nullptr, nullptr, nullptr);
    const Automation::Object Plugin = Automation::Create(L"qrvVNT.clsPlugin");
    const auto Call = [&](const wchar_t* Member, Automation::Value Third, bool DataComesLast) {
        Automation::Values Elements = Support::ProfileElements({L"kill"}), Arguments;
        Elements[2] = Automation::FromWhole(Process);
        Elements[6] = Automation::FromWhole(Target);
        Arguments.push_back(Automation::FromWhole(1));
        if (DataComesLast) Arguments.push_back(std::move(Third));
        Arguments.push_back(Automation::FromList(std::move(Elements)));
        if (!DataComesLast) Arguments.push_back(std::move(Third));
        Plugin.Call(Member, std::move(Arguments));
    };
    Driver::AnswerBoxes();
    Call(L"LoadInterface", Automation::FromWhole(HandleToLong(Area)), true);
    const HWND Frame = FindWindowExW(Area, nullptr, L"frmVNT", nullptr);
    SetWindowTextW(Support::ControlOf(Frame, ID_txtBanReason), L"why");
    Shared = Begun;
    if (Made.Member != nullptr)
        Call(Made.Member, Automation::FromText(Made.Data), false);
    else
        Driver::Do(Frame, Made.Edit);
    Shared = Ended;
    for (;;) Sleep(1000);
}

// --- The kill

struct Tally {
    int InChange = 0, HalfDone = 0, Findings = 0;
};

HANDLE StartChild(std::size_t Number, const Support::GameServer& Server) {
    wchar_t Program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, Program, MAX_PATH);
    std::wstring Command = L"kill.exe --child";
    for (const auto Word : {static_cast<Long>(Number), static_cast<Long>(GetCurrentProcessId()),
                            Server.ProcessRef(), Server.MessageRef()})
        Command += L" " + std::to_wstring(Word);
    STARTUPINFOW Startup{};
    Startup.cb = sizeof Startup;
    PROCESS_INFORMATION Started{};
    if (!CreateProcessW(Program, Command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        Support::BaseFolder().c_str(), &Startup, &Started))
        throw std::runtime_error("the child does not start");
    CloseHandle(Started.hThread);
    return Started.hProcess;
}

// Returns false when the change did not begin in time.
bool KillInside(HANDLE Running, const volatile LONG& Shared, std::chrono::duration<double, std::milli> Late) {
    const DWORD Start = GetTickCount();
    while (Shared == Starting && GetTickCount() - Start < Support::Patience &&
           WaitForSingleObject(Running, 1) == WAIT_TIMEOUT) {
    }
    const bool IsInTime = Shared != Starting;
    const auto End = std::chrono::steady_clock::now() + Late;
    while (std::chrono::steady_clock::now() < End) {
    }
    TerminateProcess(Running, 9);
    WaitForSingleObject(Running, Support::Patience);
    CloseHandle(Running);
    return IsInTime;
}

// What must stand once the change is done.
State After(State Lists, const Change& Made) {
    for (const std::string& Entry : Entries(Made.Removes)) Lists.erase(Entry);
    Lists.merge(Entries(Made.Adds));
    return Lists;
}

// Every entry that a change leaves alone is there; what it removes or adds is or is not, unless it is done. A
// list under numbers moves up while one of its entries is deleted: then its neighbour stands there twice.
std::vector<std::string> Compare(const State& Before, const State& After, const State& Found, bool IsDone) {
    State All = Before;
    for (const State* const More : {&After, &Found}) All.insert(More->begin(), More->end());
    std::vector<std::string> Findings;
    for (auto At = All.begin(); At != All.end(); At = All.upper_bound(*At)) {
        const std::size_t Then = After.count(*At), First = IsDone ? Then : Before.count(*At);
        const auto [Least, Most] = std::minmax(First, Then);
        const bool MayStandTwice = !IsDone && Least > 0 && (At->front() == Slaps || At->front() == Links);
        if (Found.count(*At) < Least) Findings.push_back("missing: " + *At);
        if (Found.count(*At) > Most + (MayStandTwice ? 1 : 0)) Findings.push_back("too many: " + *At);
    }
    return Findings;
}

void Round(Tally& Sum, unsigned Seed, volatile LONG& Shared, const Support::GameServer& Server) {
    std::mt19937 Random(Seed);
    const std::size_t Number = Random() % std::size(Changes);
    const Change& Made = Changes[Number];
    const fs::path Base = Support::BaseFolder();
    WriteFirstFiles(Base);
    const State Before = Read(Base), Done = After(Before, Made);
    Shared = Starting;
    const std::chrono::duration<double, std::milli> Late(Made.Milliseconds *
                                                         static_cast<double>(Random() % 1000) / 1000);
    std::vector<std::string> Findings;
    if (!KillInside(StartChild(Number, Server), Shared, Late)) Findings.push_back("the change did not begin");
    const State Found = Read(Base);
    Sum.InChange += Shared == Begun ? 1 : 0;
    Sum.HalfDone += Found != Before && Found != Done ? 1 : 0;
    for (const std::string& Text : Compare(Before, Done, Found, Shared == Ended)) Findings.push_back(Text);
    for (const std::string& Text : Findings)
        std::printf("seed %u, change %zu: %s\n", Seed, Number, Text.c_str());
    std::fflush(stdout);
    Sum.Findings += static_cast<int>(Findings.size());
}

int RunAll(int Rounds, unsigned Seed) {
    Support::BaseFolder();
    volatile LONG& Shared = SharedStage(GetCurrentProcessId());
    const Support::GameServer Server(L"kill", L"--build standard", "0 join 2 \"Somebody\" 10.7.7.7\n");
    Tally Sum;
    for (int Number = 0; Number < Rounds; ++Number)
        Round(Sum, Seed + static_cast<unsigned>(Number), Shared, Server);
    std::printf("%d rounds, %d killed inside a change, %d of them with files half changed; %d findings\n",
                Rounds, Sum.InChange, Sum.HalfDone, Sum.Findings);
    return Sum.Findings == 0 ? 0 : 1;
}

} // namespace

int main(int Count, char** Arguments) {
    const auto Number = [&](int At, int Default) { return Count > At ? std::atoi(Arguments[At]) : Default; };
    if (Count == 6 && std::string(Arguments[1]) == "--child") try {
            RunChild(Changes[Number(2, 0)], SharedStage(static_cast<DWORD>(Number(3, 0))), Number(4, 0),
                     Number(5, 0));
        } catch (const Failure& Why) {
            return std::printf("the host failed: %ls\n", Why.Description.c_str()), 3;
        }
    return RunAll(Number(1, 500), static_cast<unsigned>(Number(2, 1)));
}
