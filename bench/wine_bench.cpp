// The real DLL against real helper objects and a real game server process: how long one tick takes, and how
// long the very same host calls take without it; and how long long lists take.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <utility>

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
    // Two names are made for each entry.
    WriteText(BaseFolder() + L"\\profiles\\" + Folder + L"\\settings\\BannedNames.ini",
              MakeBanLists(Entries / 2).Names);
    WriteText(BaseFolder() + L"\\profiles\\" + Folder + L"\\settings\\BannedIps.ini", Lists.Ips);
}

// --- Long work in the window, with the boxes that it asks and ends with.

std::wstring FileToImport;
double WorkBegan, WorkEnded; // milliseconds

double Clock() {
    LARGE_INTEGER Now, Frequency;
    QueryPerformanceFrequency(&Frequency);
    QueryPerformanceCounter(&Now);
    return static_cast<double>(Now.QuadPart) * 1000.0 / static_cast<double>(Frequency.QuadPart);
}

BOOL CALLBACK FindBox(HWND Window, LPARAM Found) {
    wchar_t Class[16] = L"";
    GetClassNameW(Window, Class, 16);
    if (std::wstring(Class) == L"#32770" && IsWindowVisible(Window)) *reinterpret_cast<HWND*>(Found) = Window;
    return TRUE;
}

// A timer procedure. The work begins with the click, or with the file or Yes, and ends where the last box
// shows or, without one, with the call.
void CALLBACK Answer(HWND, UINT, UINT_PTR, DWORD) {
    constexpr int FileName = 0x047C; // of the system's dialog
    HWND Box = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindBox, reinterpret_cast<LPARAM>(&Box));
    if (Box == nullptr || !IsWindowEnabled(Box)) return;
    const bool IsQuestion = GetDlgItem(Box, IDYES) != nullptr;
    const bool IsFileDialog = GetDlgItem(Box, FileName) != nullptr;
    if (IsFileDialog) SetDlgItemTextW(Box, FileName, FileToImport.c_str());
    (IsQuestion || IsFileDialog ? WorkBegan : WorkEnded) = Clock();
    SendMessageW(Box, WM_COMMAND, IsQuestion ? IDYES : IDOK, 0);
}

// How long the work took that the command or button begins.
double WorkOf(HWND Window, UINT Message, WPARAM Parameter) {
    const UINT_PTR Timer = SetTimer(nullptr, 0, 10, Answer);
    WorkBegan = Clock();
    WorkEnded = 0;
    SendMessageW(Window, Message, Parameter, 0);
    if (WorkEnded == 0) WorkEnded = Clock();
    KillTimer(nullptr, Timer);
    return WorkEnded - WorkBegan;
}

constexpr int LongEntries = 1000;

// A ban file, and lists that hold one name with as many addresses.
void PutLongWork(bool WithLinks) {
    std::string File, Ips = "[IpAddresses]\r\n", Links = "[Bob]\r\n";
    for (int Entry = 0; Entry < LongEntries; ++Entry) {
        std::string Address = "10.1." + std::to_string(Entry / 250) + "." + std::to_string(Entry % 250);
        Links += std::to_string(Entry) + "=" + Address + "\r\n";
        Ips += Address + "=2026-01-01 9:00:00\r\n";
        std::string Name = "Player" + std::to_string(Entry) + ";";
        Address.resize(19, ' ');
        Name.resize(21, ' ');
        File += Address + Name + "cheating again.\r\n";
    }
    const std::wstring Folder = L"profiles\\long\\settings\\";
    WriteText(L"ban.txt", File);
    WriteText(Folder + L"BannedNames.ini",
              WithLinks ? "[Players]\r\nBob[1]=2026-01-01 9:00:00[-]None\r\n" : "[Players]\r\n");
    WriteText(Folder + L"BannedIps.ini", WithLinks ? Ips : "[IpAddresses]\r\n");
    WriteText(Folder + L"BannedReference.ini", WithLinks ? Links : "");
}

// What an operation is measured by: its own time beside that of the calls it makes, and how it grew from the
// smaller lists to these.
class Table {
public:
    Table() {
        std::printf("%-34s %8s %8s %10s %10s %7s %8s\n", "", "entries", "calls", "ms", "calls ms", "ratio",
                    "growth");
    }
    // Work returns its milliseconds. Needed is what it cannot do without beside its calls.
    void Row(
        const std::string& What, int Entries, const std::function<double()>& Work,
        const std::function<void()>& Needed = [] {}) {
        const int Rounds = Entries < 3000 ? 5 : 1;
        PumpUntil([] { return false; }, 20); // a tick that is due is no call of the work
        RecordingHelpers::Record(true);
        Work();
        RecordingHelpers::Record(false);
        std::vector<double> Works, Replays;
        for (int Round = 0; Round < Rounds; ++Round) {
            Works.push_back(Work());
            Replays.push_back(Milliseconds([&] { RecordingHelpers::Replay(), Needed(); }));
        }
        Print(What, Entries, Median(Works), Median(Replays));
    }

private:
    static double Median(std::vector<double> Values) {
        std::sort(Values.begin(), Values.end());
        return Values[Values.size() / 2];
    }
    void Print(const std::string& What, int Entries, double Work, double Calls) {
        const double Before = std::exchange(Last[What], Work);
        std::printf("%-34s %8d %8zu %10.1f %10.1f %7.2f ", What.c_str(), Entries, RecordingHelpers::Count(),
                    Work, Calls, Work / Calls);
        if (Before > 0)
            std::printf("%8.1f\n", Work / Before);
        else
            std::printf("%8s\n", "");
        std::fflush(stdout);
    }
    std::map<std::string, double> Last;
};

class WineBench : private LaidOut, private HelperWrappers::Installed, public PluginTest {
protected:
    void MeasureLists(Table& Rows, const GameServer& Server, int Entries);
};

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

// Reads of a game that need no server: as many players as are wanted, each with the same text as name and
// address.
HRESULT AnswerRead(const HelperWrappers::Call& Made, Long Players, const std::wstring& Text = L"0100000A") {
    constexpr Long MaxPlayers = 0x00A03430; // of the standard build
    static Long Bytes = 0;
    if (!Made.Name.starts_with(L"Read") || Made.Name == L"ReadFile") return Made.PassOn();
    if (Made.Name == L"ReadStr") {
        V_VT(Made.Result) = VT_BSTR;
        V_BSTR(Made.Result) = SysAllocString(Text.c_str());
        return S_OK;
    }
    // Of each player the team is read, then the slot; the next one has another slot.
    const bool IsByte = Made.Name == L"ReadByte";
    const Long TeamOrSlot = ++Bytes % 2 != 0 ? 1 : 1 + Bytes / 2 % 50;
    const bool IsCount = !IsByte && V_I4(&Made.Parameters->rgvarg[0]) == MaxPlayers;
    V_VT(Made.Result) = VT_I4;
    V_I4(Made.Result) = IsByte ? TeamOrSlot : IsCount ? Players : 2;
    return S_OK;
}

TEST_F(WineBench, TheGridGrowsWithItsPlayers) {
    std::printf("%-30s %10s %10s\n", "rows of the grid", "fill ms", "clear ms");
    for (const int Players : {10, 50, 1024}) {
        const auto Show = [&](const wchar_t* Folder) {
            Early->DisableProfile(1);
            return Milliseconds([&] {
                Load(1, {Folder});
                RedrawWindow(Frame(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
            });
        };
        std::vector<double> Fills, Clears;
        for (int Round = 0; Round < 3; ++Round) {
            HelperWrappers::OnCall = [&](const auto& Made) { return AnswerRead(Made, Players); };
            Fills.push_back(Show(L"crowd"));
            HelperWrappers::OnCall = nullptr; // no server, no players
            Clears.push_back(Show(L"nobody"));
        }
        std::sort(Fills.begin(), Fills.end());
        std::sort(Clears.begin(), Clears.end());
        std::printf("%-30d %10.0f %10.0f\n", Players, Fills[1], Clears[1]);
        std::fflush(stdout);
    }
}

// --- What grows with the lists

// The rows for one size of the lists; profile 2 has whole names alone.
void WineBench::MeasureLists(Table& Rows, const GameServer& Server, int Entries) {
    const Support::Profile Given{L"lists" + std::to_wstring(Entries), StandardGame, &Server};
    const Support::Profile Whole{L"whole" + std::to_wstring(Entries), StandardGame, &Server};
    PutLists(Given.Folder, Entries);
    PutLists(Whole.Folder, Entries);
    std::string Names = "[Players]\r\n", Slaps = "[Messages]\r\n";
    for (int Entry = 0; Entry < Entries; ++Entry)
        Names += "Somebody else " + std::to_string(Entry) + "[1]=2024-01-01 1:02:03[-]None\r\n";
    // A deletion writes the file as often as there are messages: 3,000 stand for all that is longer.
    const int Messages = std::min(Entries, 3000);
    for (int Entry = 0; Entry < Messages; ++Entry)
        Slaps += std::to_string(Entry) + "=Calm down, " + std::to_string(Entry) + "\r\n";
    WriteText(BaseFolder() + L"\\profiles\\" + Whole.Folder + L"\\settings\\BannedNames.ini", Names);
    WriteText(BaseFolder() + L"\\profiles\\" + Given.Folder + L"\\settings\\Slaps.ini", Slaps);
    Early->DisableProfile(1);
    Early->DisableProfile(2);
    Load(2, Whole);

    const auto Show = [&] {
        Early->DisableProfile(1);
        return Milliseconds([&] {
            Load(1, Given);
            RedrawWindow(Frame(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        });
    };
    const auto Click = [&](int Button) { return WorkOf(Control(Button), BM_CLICK, 0); };
    // The items into the system's list boxes, nothing else.
    const auto FillBoxes = [&] {
        for (const int Id : {ID_lstBannedNames, ID_lstBannedIps}) {
            const HWND Box = Control(Id);
            SendMessageW(Box, WM_SETREDRAW, FALSE, 0);
            SendMessageW(Box, LB_RESETCONTENT, 0, 0);
            for (int Entry = 0; Entry < Entries; ++Entry)
                SendMessageW(Box, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"[1] Somebody else"));
            SendMessageW(Box, WM_SETREDRAW, TRUE, 0);
        }
    };
    Rows.Row("show a server", Entries, Show, FillBoxes);
    Rows.Row("tick, half of the names are parts", Entries, [&] { return Milliseconds([&] { Sweep(1); }); });
    Rows.Row("tick, whole names", Entries, [&] { return Milliseconds([&] { Sweep(2); }); });
    Rows.Row("console: fetch all", Entries, [&] {
        return Milliseconds([&] {
            Automation::Values Arguments;
            Arguments.push_back(Automation::FromWhole(1));
            Arguments.push_back(ProfileData(Given));
            Late.Call(L"GetPlayersRem", std::move(Arguments));
        });
    });
    Rows.Row("console: ban an address", Entries,
             [&] { return Milliseconds([&] { Remote(L"AddBannedRem", 1, Given, L"OS45LjkuOQ==||IP"); }); });
    Load(1, Given);
    Rows.Row("remove a name", Entries, [&] { return Click(ID_cmdRemoveName); });
    Rows.Row("delete the first slap message", Messages, [&] { return Click(ID_cmdSlapDelete); });
}

TEST_F(WineBench, WhatGrowsWithTheLists) {
    const GameServer Server(L"lists", L"--build standard --players 50", Scenario(50));
    ASSERT_TRUE(Server.Await("join", "Player 50"));
    Table Rows;
    for (const int Entries : {10, 1000, 30000}) MeasureLists(Rows, Server, Entries);
}

// A damaged memory may hold names without an end.
TEST_F(WineBench, NamesWithoutEnd) {
    std::printf("%-34s %8s %12s %12s\n", "tick, 50 players, all parts", "entries", "8 letters",
                "10000 letters");
    for (const int Entries : {10, 1000, 30000}) {
        PutLists(L"endless", Entries * 2);
        Load(1, {L"endless"});
        double Ticks[2];
        for (const bool Endless : {false, true}) {
            const std::wstring Text = L"0100000A" + std::wstring(Endless ? 9992 : 0, L'x');
            HelperWrappers::OnCall = [&](const auto& Made) { return AnswerRead(Made, 50, Text); };
            Sweep(1); // the first finds everything new
            Ticks[Endless] = Milliseconds([&] { Sweep(1); });
            HelperWrappers::OnCall = nullptr;
        }
        std::printf("%-34s %8d %12.1f %12.1f\n", "", Entries, Ticks[0], Ticks[1]);
    }
}

TEST_F(WineBench, ARefreshReadsTheGame) {
    Table Rows;
    for (const int Players : {10, 32, 50}) {
        const GameServer Server(L"refresh" + std::to_wstring(Players),
                                L"--build standard --players " + std::to_wstring(Players), Scenario(Players));
        ASSERT_TRUE(Server.Await("join", "Player " + std::to_string(Players)));
        Load(1, {L"refresh", StandardGame, &Server});
        Rows.Row("refresh, entries are players", Players,
                 [&] { return WorkOf(Frame(), WM_COMMAND, ID_mnuRefresh); });
    }
}

// Each server has ten players, who are all banned. The times are those that the host's window stands still in
// the five seconds of a round.
TEST_F(WineBench, EightServersThatHang) {
    std::vector<std::unique_ptr<GameServer>> Servers;
    for (Long Index = 1; Index <= 8; ++Index) {
        const std::wstring Folder = L"hung" + std::to_wstring(Index);
        WriteText(L"profiles\\" + Folder + L"\\settings\\BannedNames.ini",
                  "[Players]\r\nPlayer[2]=2026-01-01 9:00:00[-]None\r\n");
        Servers.push_back(std::make_unique<GameServer>(Folder, L"--build standard", Scenario(10)));
        ASSERT_TRUE(Servers.back()->Await("join", "Player 10"));
        Load(Index, {Folder, StandardGame, Servers.back().get()});
        SuspendThread(Servers.back()->Thread());
    }
    std::printf("%-34s %10s %12s\n", "eight servers hang", "all ms", "longest ms");
    for (int Round = 1; Round <= 4; ++Round) {
        double All = 0, Longest = 0;
        for (Long Index = 1; Index <= 8; ++Index) {
            const double Once = Milliseconds([&] { Sweep(Index); });
            All += Once;
            Longest = std::max(Longest, Once);
        }
        std::printf("tick %-29d %10.0f %12.0f\n", Round, All, Longest);
    }
}

TEST_F(WineBench, LongWorkAgainstTheSameCalls) {
    const Support::Profile Given{L"long"};
    FileToImport = BaseFolder() + L"\\ban.txt";
    std::printf("%-22s %8s %10s %10s %7s\n", "", "calls", "work ms", "calls ms", "ratio");
    for (const bool Removal : {false, true}) {
        const auto Prepare = [&] {
            PutLongWork(Removal);
            Load(1, Given);
        };
        const auto Work = [&] {
            return Removal ? WorkOf(Control(ID_cmdRemoveName), BM_CLICK, 0)
                           : WorkOf(Frame(), WM_COMMAND, ID_mnuMerrow300);
        };
        Prepare();
        RecordingHelpers::Record(true);
        Work();
        RecordingHelpers::Record(false);
        std::vector<double> Works, Replays;
        for (int Round = 0; Round < 3; ++Round) {
            Prepare();
            Works.push_back(Work());
            Prepare();
            Replays.push_back(Milliseconds([] { RecordingHelpers::Replay(); }));
        }
        std::sort(Works.begin(), Works.end());
        std::sort(Replays.begin(), Replays.end());
        std::printf("%-22s %8zu %10.0f %10.0f %7.2f\n",
                    Removal ? "removal of 1000 links" : "import of 1000 lines", RecordingHelpers::Count(),
                    Works[1], Replays[1], Works[1] / Replays[1]);
        std::fflush(stdout);
    }
}
