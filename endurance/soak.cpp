// A day's work in one process: every profile's ticks, players who come and go on two game servers, requests
// of remote consoles, edits and refreshes in the window, then loads and unloads. What the process holds
// afterwards must be what it held before.
//
//   soak.exe [TICKS FOR EACH PROFILE] [CYCLES]
#include <algorithm>
#include <cstdio>
#include <set>

#include "endurance/census.h"
#include "endurance/driver.h"
#include "endurance/task_memory.h"
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

class Soak : public PluginTest {
protected:
    Soak()
        : Standard(L"standard", L"--build standard --players 16 --seed 1", ComingAndGoing()),
          Affiliate(L"affiliate", L"--build affiliate --players 16 --seed 2", ComingAndGoing()) {
        WriteText(L"import.txt", "10.4.4.4           Imported 4           reason 4.\r\n");
        Driver::ChooseFile(BaseFolder() + L"\\import.txt");
        for (Long Index = 1; Index <= Profiles; ++Index)
            WriteText(L"profiles\\" + Given(Index).Folder + L"\\settings\\Slaps.ini",
                      "[Messages]\r\n0=Hello.\r\n");
    }

    Support::Profile Given(Long Index) const {
        const bool Odd = Index % 2 != 0;
        return {L"soak" + std::to_wstring(Index), Odd ? StandardGame : AffiliateGame,
                Odd ? &Standard : &Affiliate};
    }
    void LoadAll() {
        for (Long Index = 1; Index <= Profiles; ++Index) Load(Index, Given(Index));
    }
    void Unload() {
        BSTR Nothing = SysAllocString(L"");
        Early->UnLoadInterface(Nothing);
        SysFreeString(Nothing);
    }
    void EditInTheWindow() {
        const HWND Window = Frame();
        Driver::Type(Window, ID_txtBannedName, L"Somebody");
        Driver::Click(Window, ID_cmdAddName);
        Driver::Type(Window, ID_txtAddIp, L"10.3.*");
        Driver::Click(Window, ID_cmdAddIp);
        Driver::Type(Window, ID_txtSlap, L"Calm down.");
        Driver::Click(Window, ID_cmdSlapAdd);
        EXPECT_TRUE(Driver::Select(Window, ID_lstBannedNames, L"[1] Somebody"));
        Driver::Click(Window, ID_cmdRemoveName);
        EXPECT_TRUE(Driver::Select(Window, ID_lstBannedIps, L"10.3.*"));
        Driver::Click(Window, ID_cmdRemoveIp);
        EXPECT_TRUE(Driver::Select(Window, ID_lstSlaps, L"Calm down."));
        Driver::Click(Window, ID_cmdSlapDelete);
        Driver::Click(Window, ID_chkRefresh);
        Driver::TakeMenuEntry(Window, ID_mnuRefresh);
        Driver::Click(Window, ID_chkRefresh);
    }
    // The import adds to the lists that are shown; a load fills them anew.
    void ImportAndReload(Long Index) {
        Driver::TakeMenuEntry(Frame(), ID_mnuMerrow300);
        Early->DisableProfile(Index);
        Load(Index, Given(Index));
    }
    // One request, and after the last one what an administrator does.
    void Edit() {
        const int Turn = Edits++;
        const int Row = Turn % static_cast<int>(std::size(Requests) + 1);
        const Long Index = 1 + Turn / static_cast<int>(std::size(Requests) + 1) % Profiles;
        if (Row < static_cast<int>(std::size(Requests))) {
            Remote(Requests[Row].Member, Index, Given(Index), Requests[Row].Data);
            return;
        }
        Automation::Values Arguments;
        Arguments.push_back(Automation::FromWhole(Index));
        Arguments.push_back(ProfileData(Given(Index)));
        Late.Call(L"GetPlayersRem", std::move(Arguments));
        EditInTheWindow();
        ImportAndReload(Index);
    }
    void TickAll(int Ticks) {
        for (int Tick = 0; Tick < Ticks; ++Tick) {
            Sweep(1 + Tick % Profiles);
            if (Tick % TicksBetweenEdits == TicksBetweenEdits - 1) Edit();
        }
        // To the end of the list, so that what was added is removed.
        while (Edits % static_cast<int>(std::size(Requests) + 1) != 0) Edit();
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

std::vector<bool> Counted;

void Print(const char* When, const std::vector<long>& Counts) {
    std::printf("%-16s", When);
    for (std::size_t At = 0; At < Counts.size(); ++At)
        if (Counted[At]) std::printf("  %s %ld", Census::Kinds[At].Name, Counts[At]);
    std::printf("\n");
    std::fflush(stdout);
}

void ExpectNoGrowth(const char* What, const std::vector<long>& Before, const std::vector<long>& After) {
    for (std::size_t At = 0; At < Before.size(); ++At)
        EXPECT_TRUE(!Counted[At] || After[At] <= Before[At] + Census::Kinds[At].Slack)
            << Census::Kinds[At].Name << " over " << What << ": " << Before[At] << ", then " << After[At];
}

void FindOutWhatIsCounted() {
    for (const Census::Kind& Each : Census::Kinds) {
        Counted.push_back(Census::IsCounted(Each));
        if (!Counted.back()) std::printf("%s: this system does not count them\n", Each.Name);
    }
}

} // namespace

TEST_F(Soak, ADayAndAThousandCyclesLeaveNothingBehind) {
    TaskMemory::Watch();
    Driver::AnswerBoxes();
    FindOutWhatIsCounted();
    // Everything once: fonts, window classes and caches are made at their first use.
    LoadAll();
    TickAll(Profiles * 2 * TicksBetweenEdits);
    while (Edits % (Profiles * static_cast<int>(std::size(Requests) + 1)) != 0) Edit();
    Unload();
    for (Long Index = 1; Index <= Profiles; ++Index) Cycle(Index);
    const std::vector<long> Unloaded = Census::Take();
    Print("unloaded", Unloaded);
    LoadAll();
    TickAll(Profiles * 10);
    EXPECT_EQ(TimersSeen(), static_cast<std::size_t>(Profiles));
    const std::vector<long> Before = Census::Take();
    Print("before", Before);
    for (int Hour = 1; Hour <= 24; ++Hour) {
        TickAll(Profiles * TicksEach / 24);
        if (Hour % 4 == 0) Print(("after hour " + std::to_string(Hour)).c_str(), Census::Take());
    }
    const std::vector<long> After = Census::Take();
    EXPECT_EQ(TimersSeen(), static_cast<std::size_t>(Profiles));
    Unload();
    for (int Round = 1; Round <= Cycles; ++Round) {
        Cycle(1 + Round % Profiles);
        if (Round % 250 == 0) Print(("cycle " + std::to_string(Round)).c_str(), Census::Take());
    }
    const std::vector<long> Finally = Census::Take();
    Print("unloaded", Finally);
    EXPECT_EQ(TimersSeen(), 0u) << "timers outlive their window";
    ExpectNoGrowth("the ticks", Before, After);
    ExpectNoGrowth("the cycles", Unloaded, Finally);
    std::printf("%d ticks of %d profiles, %d edits, %d cycles\n", TicksEach * Profiles, Profiles, Edits,
                Cycles);
}

int main(int Count, char** Arguments) {
    testing::InitGoogleTest(&Count, Arguments);
    if (Count > 1) TicksEach = std::atoi(Arguments[1]);
    if (Count > 2) Cycles = std::atoi(Arguments[2]);
    return RUN_ALL_TESTS();
}
