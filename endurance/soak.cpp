// A day's work in one process: every profile's ticks, players who come and go on two game servers, requests
// of remote consoles, edits and refreshes in the window, then loads and unloads. What the process holds
// afterwards must be what it held before.
//
//   soak.exe [TICKS FOR EACH PROFILE] [CYCLES]
#include <cstdio>
#include <filesystem>
#include <set>

#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>

#include "endurance/census.h"
#include "endurance/driver.h"
#include "tests/wine/support.h"

namespace {

using namespace Support;

constexpr Long Profiles = 8;
constexpr int TicksBetweenEdits = 40;
constexpr int SecondsOfScript = 6 * 3600;
int TicksEach = 17280; // a day at five seconds
int Cycles = 1000;

// Players for as long as the run may take: each half minute has its own, who leave at its end at the latest.
std::string ComingAndGoing() {
    std::string Script = "0 join 9 \"Cheater\" 10.9.9.9\n0 join 10 \"Steady\" 10.1.1.1\n";
    for (int From = 0; From < SecondsOfScript * 1000; From += 30000) {
        Script +=
            "random players=4 from=" + std::to_string(From) + " to=" + std::to_string(From + 29000) + "\n";
        for (int Slot = 1; Slot <= 4; ++Slot)
            Script += std::to_string(From + 29500) + " leave " + std::to_string(Slot) + "\n";
    }
    return Script;
}

// Requests of every kind. What one adds a later one removes. Names and reasons are Base64.
struct Request {
    const wchar_t* Member;
    const wchar_t* Data;
};
constexpr Request Requests[] = {
    {L"AddBannedRem", L"Q2hlYXRlclsxXQ==|c29haw==|Name"}, // Cheater[1]
    {L"AddBannedRem", L"MTAuMS4yLjM=|c29haw==|Ip"},       // 10.1.2.3
    {L"PuntPlayerRem", L"UGxheWVyMg==|10.1.2.4|02|Ban|c29haw=="},
    {L"ArmPlayerRem", L"U3RlYWR5|Kill"},
    {L"ArmPlayerRem", L"U3RlYWR5|Switch"},
    {L"ArmPlayerRem", L"U3RlYWR5|Disarm"},
    {L"ArmPlayerRem", L"U3RlYWR5|Rearm"},
    {L"ArmPlayerRem", L"UGxheWVyMw==|KillPerm"},
    {L"ArmPlayerRem", L"UGxheWVyMQ==|DisarmPerm"},
    {L"PuntPlayerRem", L"UGxheWVyMw==|10.1.2.5|03"},
    {L"SetBanMethod", L"1"},
    {L"SetIdlePunt", L"1"},
    {L"SetIdleMax", L"5"},
    {L"AddSlapRem", L"Mind your language."},
    {L"EditSlapRem", L"Mind your language.|Play fair."},
    {L"SlapPlayerRem", L"Play fair."},
    {L"DeleteSlapRem", L"Play fair."},
    {L"SetBanMethod", L"0"},
    {L"SetIdlePunt", L"0"},
    {L"RemoveBannedRem", L"UGxheWVyMg==|Name|1"},
    {L"RemoveBannedRem", L"MTAuMS4yLjM=|Ip|1"},
    {L"RemoveBannedRem", L"Q2hlYXRlcg==|Name|1"},
};

constexpr Driver::Step WindowSteps[] = {
    {Driver::Type, ID_txtBannedName, L"Somebody"},
    {Driver::Click, ID_cmdAddName, L""},
    {Driver::Type, ID_txtAddIp, L"10.3.*"},
    {Driver::Click, ID_cmdAddIp, L""},
    {Driver::Type, ID_txtSlap, L"Calm down."},
    {Driver::Click, ID_cmdSlapAdd, L""},
    {Driver::Select, ID_lstBannedNames, L"[1] Somebody"},
    {Driver::Click, ID_cmdRemoveName, L""},
    {Driver::Select, ID_lstBannedIps, L"10.3.*"},
    {Driver::Click, ID_cmdRemoveIp, L""},
    {Driver::Select, ID_lstSlaps, L"Calm down."},
    {Driver::Click, ID_cmdSlapDelete, L""},
    {Driver::Click, ID_chkRefresh, L""},
    {Driver::TakeMenuEntry, ID_mnuRefresh, L""},
    {Driver::Click, ID_chkRefresh, L""},
    {Driver::WriteImportFile, 0, L"10.4.4.4           Imported 4           reason 4."},
    {Driver::TakeMenuEntry, ID_mnuMerrow300, L""},
};

constexpr int Turns = static_cast<int>(std::size(Requests)) + 1; // one for what is done in the window

// What the system leaves behind of its own when it is used without the plug-in: measured first, and allowed
// as often as the plug-in uses it.
struct Leftover {
    const char* What;
    long Times; // of the measurement
    void (*Use)();
    long Uses = 0;
    std::vector<long> Growth{};
};

void OpenFileDialog() {
    wchar_t Path[MAX_PATH] = L"";
    OPENFILENAMEW Dialog{};
    Dialog.lStructSize = sizeof Dialog;
    Dialog.lpstrFilter = L"Text Documents (*.txt)\0*.txt\0";
    Dialog.lpstrFile = Path;
    Dialog.nMaxFile = MAX_PATH;
    Dialog.Flags = OFN_NOCHANGEDIR | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_EXPLORER;
    GetOpenFileNameW(&Dialog);
}

// A label of the kind that the window's manifest asks for, with a font as the window gives it.
void MakeLabel() {
    static const HANDLE Styles = [] {
        ACTCTXW Manifest{};
        Manifest.cbSize = sizeof Manifest;
        Manifest.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
        Manifest.hModule = GetModuleHandleW(L"qrvVNT.dll");
        Manifest.lpResourceName = MAKEINTRESOURCEW(2);
        return CreateActCtxW(&Manifest);
    }();
    ULONG_PTR Cookie = 0;
    ActivateActCtx(Styles, &Cookie);
    const HWND Label =
        CreateWindowExW(0, WC_STATICW, L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    DeactivateActCtx(0, Cookie);
    SendMessageW(Label, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    DestroyWindow(Label);
}

Leftover Leftovers[] = {{"file dialogs", 10, OpenFileDialog}, {"labels", 2000, MakeLabel}};
Leftover& FileDialogs = Leftovers[0];

// --- What is held, and by how much more

struct Snapshot {
    std::vector<long> Counts;
    long Uses[std::size(Leftovers)];
};

std::vector<bool> Counted;

Snapshot Take() { return {Census::Take(), {FileDialogs.Uses, Driver::Labels}}; }

void Print(const std::string& When, const std::vector<long>& Counts) {
    std::printf("%-22s", When.c_str());
    for (std::size_t At = 0; At < Counts.size(); ++At)
        if (Counted[At]) std::printf("  %s %ld", Census::Kinds[At].Name, Counts[At]);
    std::printf("\n");
    std::fflush(stdout);
}

void FindOutWhatIsCounted() {
    for (const Census::Kind& Counter : Census::Kinds) {
        Counted.push_back(Census::IsCounted(Counter));
        if (!Counted.back()) std::printf("%s: not counted by this system\n", Counter.Name);
    }
}

void MeasureTheSystem() {
    Driver::WriteImportFile(nullptr, 0, L"");
    for (Leftover& Source : Leftovers) {
        for (long Once = 0; Once < Source.Times; ++Once) Source.Use();
        const std::vector<long> Before = Census::Take();
        for (long Once = 0; Once < Source.Times; ++Once) Source.Use();
        Source.Growth = Census::Take();
        for (std::size_t At = 0; At < Before.size(); ++At)
            Source.Growth[At] = std::max(0L, Source.Growth[At] - Before[At]);
        Print("alone, " + std::to_string(Source.Times) + " " + Source.What, Source.Growth);
    }
}

long Allowed(std::size_t Kind, const Snapshot& Before, const Snapshot& After) {
    double Sum = Before.Counts[Kind] + Census::Kinds[Kind].Slack;
    for (std::size_t At = 0; At < std::size(Leftovers); ++At)
        Sum += static_cast<double>(After.Uses[At] - Before.Uses[At]) *
               static_cast<double>(Leftovers[At].Growth[Kind]) / static_cast<double>(Leftovers[At].Times);
    return static_cast<long>(Sum);
}

void ExpectNoGrowth(const char* What, const Snapshot& Before, const Snapshot& After) {
    for (std::size_t Kind = 0; Kind < Counted.size(); ++Kind)
        EXPECT_TRUE(!Counted[Kind] || After.Counts[Kind] <= Allowed(Kind, Before, After))
            << Census::Kinds[Kind].Name << " over " << What << ": " << Before.Counts[Kind] << ", then "
            << After.Counts[Kind] << ", allowed " << Allowed(Kind, Before, After);
}

class Soak : public PluginTest {
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
        Driver::CountLabels(Frame());
        BSTR Nothing = SysAllocString(L"");
        Early->UnLoadInterface(Nothing);
        SysFreeString(Nothing);
    }
    // One request, and after the last one what an administrator does.
    void Edit() {
        const int Row = Edits % Turns;
        const Long Index = 1 + Edits++ / Turns % Profiles;
        if (Row < Turns - 1) {
            Remote(Requests[Row].Member, Index, Given(Index), Requests[Row].Data);
            return;
        }
        Automation::Values Arguments;
        Arguments.push_back(Automation::FromWhole(Index));
        Arguments.push_back(ProfileData(Given(Index)));
        Late.Call(L"GetPlayersRem", std::move(Arguments));
        for (const Driver::Step& WindowStep : WindowSteps)
            WindowStep.Do(Frame(), WindowStep.Id, WindowStep.Text);
        ++FileDialogs.Uses;
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
        while (Edits % Turns != 0) Edit();
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
    int Edits = 0;
};

} // namespace

TEST_F(Soak, ADayAndAThousandCyclesLeaveNothingBehind) {
    Census::Begin();
    Driver::AnswerBoxes();
    FindOutWhatIsCounted();
    // Everything once: fonts, window classes and caches are made at their first use.
    LoadAll();
    for (int Turn = 0; Turn < Profiles * Turns; ++Turn) Edit();
    MeasureTheSystem();
    Unload();
    for (Long Index = 1; Index <= Profiles; ++Index) Cycle(Index);
    const Snapshot Unloaded = Take();
    Print("unloaded", Unloaded.Counts);
    LoadAll();
    TickAll(Profiles * 10);
    EXPECT_EQ(TimersSeen(), static_cast<std::size_t>(Profiles));
    const Snapshot Loaded = Take();
    Print("loaded", Loaded.Counts);
    for (int Hour = 1; Hour <= 24; ++Hour) {
        TickAll(Profiles * TicksEach / 24);
        if (Hour % 4 == 0) Print("hour " + std::to_string(Hour), Census::Take());
    }
    ExpectNoGrowth("the ticks", Loaded, Take());
    EXPECT_EQ(TimersSeen(), static_cast<std::size_t>(Profiles));
    Unload();
    for (int Round = 1; Round <= Cycles; ++Round) {
        Cycle(1 + Round % Profiles);
        if (Round % 250 == 0) Print("cycle " + std::to_string(Round), Census::Take());
    }
    ExpectNoGrowth("ticks and cycles", Unloaded, Take());
    EXPECT_EQ(TimersSeen(), 0u) << "timers outlive their window";
    std::printf("%d ticks of each of %d profiles, %d edits, %d cycles, %zu error reports\n", TicksEach,
                Profiles, Edits, Cycles, ErrorLog().size());
}

int main(int Count, char** Arguments) {
    testing::InitGoogleTest(&Count, Arguments);
    if (Count > 1) TicksEach = std::atoi(Arguments[1]);
    if (Count > 2) Cycles = std::atoi(Arguments[2]);
    return RUN_ALL_TESTS();
}
