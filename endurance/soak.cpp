// Long lives of one process with the plug-in, after which it must hold what it held before.
//
//   soak.exe --gtest_filter=Soak.* [CYCLES] [TICKS FOR EACH PROFILE]
//   soak.exe --gtest_filter=BadHost.* [CYCLES]
#include <cstdio>
#include <filesystem>
#include <set>

#include "endurance/census.h"
#include "endurance/driver.h"
#include "sandbox/wrappers/helper_wrappers.h"
#include "tests/wine/support.h"

namespace {

using namespace Support;

int Cycles = 1000;
int TicksEach = 17280; // a day at five seconds

// Requests of every kind. What one adds a later one removes: Cheater, Player2, 10.1.2.3. Names and reasons
// are Base64, of the players Steady and Player1 to Player3 too.
const Lines Requests =
    Split(L"AddBannedRem Q2hlYXRlclsxXQ==|c29haw==|Name;AddBannedRem MTAuMS4yLjM=|c29haw==|Ip;"
          L"PuntPlayerRem UGxheWVyMg==|10.1.2.4|02|Ban|c29haw==;ArmPlayerRem U3RlYWR5|Kill;"
          L"ArmPlayerRem U3RlYWR5|Switch;ArmPlayerRem U3RlYWR5|Disarm;ArmPlayerRem U3RlYWR5|Rearm;"
          L"ArmPlayerRem UGxheWVyMw==|KillPerm;ArmPlayerRem UGxheWVyMQ==|DisarmPerm;"
          L"PuntPlayerRem UGxheWVyMw==|10.1.2.5|03;SetBanMethod 1;SetIdlePunt 1;SetIdleMax 5;"
          L"AddSlapRem Calm.;EditSlapRem Calm.|Play.;SlapPlayerRem Play.;DeleteSlapRem Play.;"
          L"SetBanMethod 0;SetIdlePunt 0;RemoveBannedRem UGxheWVyMg==|Name|1;"
          L"RemoveBannedRem MTAuMS4yLjM=|Ip|1;RemoveBannedRem Q2hlYXRlcg==|Name|1",
          L";");

constexpr const wchar_t* None = nullptr;
constexpr Driver::Edit Edits[] = {
    {0, None, ID_txtBannedName, L"Somebody", ID_cmdAddName},
    {0, None, ID_txtAddIp, L"10.3.*", ID_cmdAddIp},
    {0, None, ID_txtSlap, L"Calm down.", ID_cmdSlapAdd},
    {ID_lstBannedNames, L"[1] Somebody", 0, None, ID_cmdRemoveName},
    {ID_lstBannedIps, L"10.3.*", 0, None, ID_cmdRemoveIp},
    {ID_lstSlaps, L"Calm down.", 0, None, ID_cmdSlapDelete},
    {0, None, 0, None, ID_chkRefresh},
    {0, None, 0, None, ID_mnuRefresh},
    {0, None, 0, None, ID_chkRefresh},
};
constexpr Driver::Edit Import{0, None, 0, L"10.4.4.4           Imported 4           reason 4.",
                              ID_mnuMerrow300};

// Each time Wine's printing library is loaded, it makes a mutex that it never closes. The file dialogs bring
// it along and the plug-in brings them, so a host that has them already collects none. The dialogs also take
// an index of thread-local storage before the plug-in does; given back, it would be found free below a lost
// one.
struct FileDialogs {
    FileDialogs() { LoadLibraryW(L"comdlg32.dll"); }
};

class LongRun : private FileDialogs, public PluginTest {
protected:
    struct Snapshot {
        std::vector<long> Counts;
        long Windows, Imports;
    };

    LongRun() { Driver::AnswerBoxes(); }

    Snapshot Take(const std::string& When) const {
        const Snapshot Taken{Census::Take(), Windows, Imports};
        std::printf("%-12s", When.c_str());
        for (std::size_t At = 0; At < Taken.Counts.size(); ++At)
            std::printf("  %s %ld", Census::Kinds[At].Name, Taken.Counts[At]);
        std::printf("\n"), std::fflush(stdout);
        return Taken;
    }
    void ExpectNoGrowth(const char* What, const Snapshot& Before) const {
        const Snapshot After = Take(What);
        for (std::size_t At = 0; At < After.Counts.size(); ++At) {
            const Census::Kind& Kind = Census::Kinds[At];
            EXPECT_LE(After.Counts[At], Before.Counts[At] + Kind.Slack +
                                            (After.Windows - Before.Windows) * Kind.PerWindow +
                                            (After.Imports - Before.Imports) * Kind.PerImport)
                << Kind.Name << " over " << What;
        }
    }
    void Send(const std::wstring& Request, Long Index, const Profile& Given) {
        const Lines Words = Split(Request, L" ");
        Remote(Words[0].c_str(), Index, Given, Words[1]);
    }
    void PlayEdits() {
        for (const Driver::Edit& Made : Edits) Driver::Do(Frame(), Made);
    }

    long Windows = 0, Imports = 0; // windows made, and ban files imported
};

// --- A day's work: every profile's ticks, players who come and go on two game servers, requests of remote
// consoles, edits and refreshes in the window, then loads and unloads.

constexpr Long Profiles = 8;
constexpr int TicksBetweenEdits = 40;
const int Turns = static_cast<int>(Requests.size()) + 1; // one for what is done in the window

// Players for as long as the run may take: each half minute has its own, who leave at its end at the latest.
std::string ComingAndGoing() {
    constexpr int Hours = 6;
    std::string Script = "0 join 9 \"Cheater\" 10.9.9.9\n0 join 10 \"Steady\" 10.1.1.1\n";
    for (int From = 0; From < Hours * 3600 * 1000; From += 30000) {
        Script +=
            "random players=4 from=" + std::to_string(From) + " to=" + std::to_string(From + 29000) + "\n";
        for (int Slot = 1; Slot <= 4; ++Slot)
            Script += std::to_string(From + 29500) + " leave " + std::to_string(Slot) + "\n";
    }
    return Script;
}

class Soak : public LongRun {
protected:
    Soak()
        : Standard(L"standard", L"--build standard --players 16 --seed 1", ComingAndGoing()),
          Affiliate(L"affiliate", L"--build affiliate --players 16 --seed 2", ComingAndGoing()) {
        for (Long Index = 1; Index <= Profiles; ++Index)
            WriteText(L"profiles\\" + Given(Index).Folder + L"\\settings\\Slaps.ini",
                      "[Messages]\r\n0=Hello.\r\n");
    }
    ~Soak() override { std::filesystem::remove(L"import.txt"); }

    Support::Profile Given(Long Index) const {
        const bool Odd = Index % 2 != 0;
        return {L"soak" + std::to_wstring(Index), Odd ? StandardGame : AffiliateGame,
                Odd ? &Standard : &Affiliate};
    }
    void LoadAll() {
        for (Long Index = 1; Index <= Profiles; ++Index) Load(Index, Given(Index));
    }
    void Unload() {
        Early->UnLoadInterface(nullptr);
        ++Windows;
    }
    // One request, and after the last one what an administrator does.
    void Edit() {
        const int Row = EditsMade % Turns;
        const Long Index = 1 + EditsMade++ / Turns % Profiles;
        if (Row < Turns - 1) {
            Send(Requests[static_cast<std::size_t>(Row)], Index, Given(Index));
            return;
        }
        BSTR Players = nullptr;
        Early->GetPlayersRem(Index, *ProfileData(Given(Index)), *Automation::Missing(), &Players);
        SysFreeString(Players);
        PlayEdits();
        Driver::Do(Frame(), Import);
        ++Imports;
        // The import adds to the lists that are shown; a load fills them anew.
        Early->DisableProfile(Index);
        Load(Index, Given(Index));
    }
    void TickAll(int Ticks) {
        for (int Tick = 0; Tick < Ticks; ++Tick) {
            Sweep(1 + Tick % Profiles);
            if (Tick % TicksBetweenEdits == TicksBetweenEdits - 1) Edit();
        }
        // To the end of the list, so that what was added is removed.
        while (EditsMade % Turns != 0) Edit();
    }
    void Cycle(Long Index) {
        Load(Index, Given(Index));
        Late.Call(L"HideInterface");
        EXPECT_EQ(Early->DisableProfile(Index), S_OK);
        Unload();
    }
    // The windows' timers, counted by their messages: there is no other way to see them.
    static std::size_t TimersSeen() {
        constexpr DWORD LongerThanATick = 6000;
        std::set<std::pair<HWND, WPARAM>> Seen;
        const DWORD Start = GetTickCount();
        while (GetTickCount() - Start < LongerThanATick) {
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
            for (MSG Message; PeekMessageW(&Message, nullptr, 0, 0, PM_REMOVE);) {
                if (Message.message == WM_TIMER && Message.hwnd != nullptr)
                    Seen.insert({Message.hwnd, Message.wParam});
                DispatchMessageW(&Message);
            }
        }
        return Seen.size();
    }

    GameServer Standard, Affiliate;
    int EditsMade = 0;
};

// --- A host that makes it as hard as real ones do: floating-point exceptions unmasked, a stack that is
// aligned to four bytes alone, another program's run-time in the process, messages pumped inside every helper
// call, and everything let go in the middle of one.

constexpr unsigned short Unmasked = 0x1372; // invalid, division by zero, overflow

void PumpOnce() {
    for (MSG Message; PeekMessageW(&Message, nullptr, 0, 0, PM_REMOVE);) DispatchMessageW(&Message);
}

struct OtherRuntime {
    OtherRuntime() { LoadLibraryW((ProgramFolder() + L"\\other_runtime\\libgcc_s_dw2-1.dll").c_str()); }
};

class BadHost : private OtherRuntime, private LaidOut, private HelperWrappers::Installed, public LongRun {
protected:
    BadHost()
        : Server(L"bad", L"--build standard --port 32123 --filter engine.state",
                 "0 join 4 Alice 10.0.0.1\n0 join 5 Carol 172.16.9.9\n") {
        WriteText(L"profiles\\bad\\settings\\Slaps.ini", "[Messages]\r\n0=Hello.\r\n");
        HelperWrappers::OnCall = [this](const HelperWrappers::Call& Made) {
            PumpOnce();
            if (CallsLeft != 0 && --CallsLeft == 0) LetGo();
            SetControlWord(Unmasked); // as the host's own run-time does
            return Made.PassOn();
        };
    }
    ~BadHost() override {
        HelperWrappers::OnCall = nullptr;
        SetControlWord(WordBefore);
    }

    // Sweeps until one of its helper calls is the one in which everything goes.
    void UnloadInTheMiddle(int Calls) {
        CallsLeft = Calls;
        while (Early != nullptr) Sweep(1);
        CoFreeUnusedLibrariesEx(0, 0);
        EXPECT_EQ(GetModuleHandleW(L"qrvVNT.dll"), nullptr);
        ++Windows;
    }
    // What is reported is what the host has caused: the slot of 400 digits, and a tick whose profile went.
    void Cycle(int Number) {
        if (Early == nullptr) CreatePlugin();
        SetControlWord(Unmasked);
        Load(1, Given);
        PlayEdits();
        for (const std::wstring& Sent : Requests) {
            Send(Sent, 1, Given);
            if (Sent.starts_with(L"SetBanMethod")) Sweep(1);
        }
        EXPECT_TRUE(ErrorLog().empty()) << ErrorLog().front();
        const std::wstring Digits(400, L'9');
        EXPECT_EQ(Remote(L"PuntPlayerRem", 1, Given, L"QWxpY2U=|10.0.0.1|" + Digits + L"|1"), 0);
        EXPECT_EQ(ErrorLog().size(), 1u);
        Late.Call(L"HideInterface");
        UnloadInTheMiddle(1 + Number % 40);
        EXPECT_EQ(ControlWord(), Unmasked);
        const std::vector<std::string> Log = ErrorLog();
        for (std::size_t At = 1; At < Log.size(); ++At)
            EXPECT_NE(Log[At].find("Subscript out of range"), std::string::npos) << Log[At];
        WriteText(L"logs\\errors.log", "");
    }

    GameServer Server;
    Profile Given{L"bad", StandardGame, &Server};
    const unsigned short WordBefore = ControlWord();
    int CallsLeft = 0; // until everything goes; 0 is never
};

} // namespace

TEST_F(Soak, ADayAndAThousandCyclesLeaveNothingBehind) {
    // Everything once: fonts, window classes and caches are made at their first use.
    LoadAll();
    for (int Turn = 0; Turn < Profiles * Turns; ++Turn) Edit();
    Unload();
    for (Long Index = 1; Index <= Profiles; ++Index) Cycle(Index);
    const Snapshot Unloaded = Take("unloaded");
    LoadAll();
    TickAll(Profiles * 10);
    EXPECT_EQ(TimersSeen(), static_cast<std::size_t>(Profiles));
    const Snapshot Loaded = Take("loaded");
    for (int Hour = 1; Hour <= 24; ++Hour) {
        TickAll(Profiles * TicksEach / 24);
        if (Hour % 4 == 0) Take("hour " + std::to_string(Hour));
    }
    ExpectNoGrowth("the ticks", Loaded);
    EXPECT_EQ(TimersSeen(), static_cast<std::size_t>(Profiles));
    Unload();
    for (int Round = 1; Round <= Cycles; ++Round) Cycle(1 + Round % Profiles);
    ExpectNoGrowth("all of it", Unloaded);
    EXPECT_EQ(TimersSeen(), 0u) << "timers outlive their window";
    std::printf("%d ticks of each of %d profiles, %d edits, %d cycles, %zu error reports\n", TicksEach,
                Profiles, EditsMade, Cycles, ErrorLog().size());
}

TEST_F(BadHost, GoesThroughItsCycles) {
    ASSERT_TRUE(Server.Await("join", "Carol"));
    for (int Warm = 0; Warm < 3; ++Warm) Cycle(Warm);
    const Snapshot Before = Take("warm");
    const DWORD Index = TlsAlloc();
    TlsFree(Index);
    for (int Number = 0; Number < Cycles && !HasFailure(); ++Number) {
        Cycle(Number);
        if (Number % 100 == 99) Take("cycle " + std::to_string(Number + 1));
    }
    ExpectNoGrowth("the cycles", Before);
    EXPECT_EQ(TlsAlloc(), Index) << "an index of thread-local storage";
    EXPECT_EQ(Server.Count("dropped"), 0) << "nobody was banned";
    EXPECT_EQ(ReadText(L"profiles\\bad\\settings\\Slaps.ini"), "[Messages]\r\n0=Hello.\r\n");
    EXPECT_EQ(ReadText(L"profiles\\bad\\settings\\BannedNames.ini").find('='), std::string::npos);
}

int main(int Count, char** Arguments) {
    testing::InitGoogleTest(&Count, Arguments);
    if (Count > 1) Cycles = std::atoi(Arguments[1]);
    if (Count > 2) TicksEach = std::atoi(Arguments[2]);
    return RUN_ALL_TESTS();
}
