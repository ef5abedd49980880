// Failure at every place: each scenario is run once to count its outside calls, and then once for each call
// and kind of fault. Whatever fails, the host sees nothing, at most one report is made under the name of the
// procedure that met it, the lists stay whole, and the next run does its whole job.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>

#include "enforcement/sweep.h"
#include "game/mdlVNT.h"
#include "host/memory_helper.h"
#include "plugin/lifecycle.h"
#include "plugin/remote.h"
#include "tests/fakes/fake_toolkit.h"
#include "tests/fakes/server.h"

namespace {

// Base64 of "Bob", "9.9.9.9", "Eve" and "Eve[1]".
constexpr const wchar_t *Bob = L"Qm9i", *Nines = L"OS45LjkuOQ==", *Eve = L"RXZl", *EveKey = L"RXZlWzFd";

struct Scenario {
    const char* Name;
    TextView Reporters; // the procedures that may report
    std::function<void()> Run;
    bool InWindow = false; // loaded before, so that only the run is counted and made to fail
};

constexpr TextView Readers = L"GetPlayerList GetPing GetPlayerExtras";
constexpr TextView Sweepers = L"tmrVN GetPlayerList KillPlayer PuntPlayer";

Scenario ForBob(const char* Name, TextView Reporters, int Entry) {
    return {Name, Reporters, [=] { FakeWindow::ChooseForRow(1, Entry); }, true};
}
Scenario WithText(const char* Name, TextView Reporters, int TextBox, TextView Text, int Id) {
    return {Name, Reporters, [=] { FakeWindow::Type(TextBox, Text), FakeWindow::Click(Id); }, true};
}
Scenario OnItem(const char* Name, TextView Reporters, int List, int Item, int Id) {
    return {Name, Reporters, [=] { FakeWindow::ChooseItem(List, Item), FakeWindow::Click(Id); }, true};
}

const Scenario Scenarios[] = {
    {"tick by the command line", Sweepers, [] { tmrVN_Timer(TestProfile); }},
    {"tick by the kernel driver", Sweepers,
     [] {
         Outside::PutIni(PlayersIni, L"BanMethod", L"Server1", L"1");
         mdlVNT::IpListChanged(TestProfile) = true;
         tmrVN_Timer(TestProfile);
     }},
    {"load and unload",
     L"FormReload UnLoadInterface GetPlayerList GetPing GetPlayerExtras GetBannedNames GetBannedIps GetSlaps "
     L"LoadSlapMenu lstBannedNames lstBannedIps",
     [] {
         Load(TestProfile, HostWindow, HostData());
         UnLoad();
         SetProfileData(TestProfile, HostData());
     }},

    {"GetPlayersRem", L"GetPlayersRem GetPlayerList GetPing", [] { CallGetPlayersRem(Request(L"")); }},
    {"ban by PuntPlayerRem", L"PuntPlayerRem PuntPlayer AddBanReference",
     [] { Call(PuntPlayerRem, Request(std::wstring(Bob) + L"|10.0.0.7|3|x|" + Bob)); }},
    {"ArmPlayerRem", L"ArmPlayerRem ArmPlayer",
     [] { Call(ArmPlayerRem, Request(std::wstring(Bob) + L"|Disarm")); }},
    {"SlapPlayerRem", L"SlapPlayerRem", [] { Call(SlapPlayerRem, Request(L"go")); }},
    {"AddSlapRem", L"AddSlapRem", [] { Call(AddSlapRem, Request(L"three")); }},
    {"DeleteSlapRem", L"DeleteSlapRem", [] { Call(DeleteSlapRem, Request(L"one")); }},
    {"EditSlapRem", L"EditSlapRem", [] { Call(EditSlapRem, Request(L"one|four")); }},
    {"ban of a name", L"AddBannedRem", [] { Call(AddBannedRem, Request(std::wstring(EveKey) + L"||Name")); }},
    {"ban of an address", L"AddBannedRem",
     [] { Call(AddBannedRem, Request(std::wstring(Nines) + L"||IP")); }},
    {"end of a name's ban", L"RemoveBannedRem",
     [] { Call(RemoveBannedRem, Request(std::wstring(Eve) + L"|Name|1")); }},
    {"end of an address's ban", L"RemoveBannedRem",
     [] { Call(RemoveBannedRem, Request(std::wstring(Nines) + L"|IP|1")); }},
    {"SetBanMethod", L"SetBanMethod", [] { Call(SetBanMethod, Request(L"0")); }},
    {"SetIdlePunt", L"SetIdlePunt", [] { Call(SetIdlePunt, Request(L"0")); }},
    {"SetIdleMax", L"SetIdleMax", [] { Call(SetIdleMax, Request(L"9")); }},

    // The two permanent entries make no call: what they add, the ticks carry out.
    ForBob("mnuRefresh", Readers, ID_mnuRefresh),
    ForBob("mnuPunt", L"mnuPunt GetPlayerList GetPing GetPlayerExtras PuntPlayer", ID_mnuPunt),
    ForBob("mnuBan1", L"mnuBan1 GetPlayerList GetPing GetPlayerExtras PuntPlayer AddBanReference",
           ID_mnuBan1),
    ForBob("mnuBan2", L"mnuBan2 GetPlayerList GetPing GetPlayerExtras PuntPlayer AddBanReference",
           ID_mnuBan2),
    ForBob("mnuSwitch", L"mnuSwitch SwitchTeam GetPlayerList GetPing GetPlayerExtras", ID_mnuSwitch),
    ForBob("mnuKill", L"KillPlayer", ID_mnuKill),
    ForBob("mnuDisarm", L"ArmPlayer", ID_mnuDisarm),
    ForBob("mnuRearm", L"ArmPlayer", ID_mnuRearm),
    ForBob("mnuSlapItem", L"mnuSlapItemClick", ID_mnuSlapItem),
    {"tmrRefresh", Readers, [] { FakeWindow::Tick(ID_tmrRefresh); }, true},

    WithText("cmdAddName", L"cmdAddName", ID_txtBannedName, L"Mallory", ID_cmdAddName),
    OnItem("cmdRemoveName", L"cmdRemoveName lstBannedNames lstBannedIps", ID_lstBannedNames, 2,
           ID_cmdRemoveName),
    WithText("cmdAddIp", L"cmdAddIp", ID_txtAddIp, L"7.7.7.7", ID_cmdAddIp),
    OnItem("cmdRemoveIp", L"cmdRemoveIp lstBannedIps lstBannedNames", ID_lstBannedIps, 0, ID_cmdRemoveIp),
    WithText("cmdSlapAdd", L"cmdSlapAdd LoadSlapMenu", ID_txtSlap, L"three", ID_cmdSlapAdd),
    OnItem("cmdSlapDelete", L"cmdSlapDelete LoadSlapMenu", ID_lstSlaps, 0, ID_cmdSlapDelete),
    {"cmdSlapEdit", L"cmdSlapEdit LoadSlapMenu",
     [] {
         FakeWindow::DoubleClick(ID_lstSlaps, 0);
         FakeWindow::Type(ID_txtSlap, L"four");
         FakeWindow::PressEnter(ID_txtSlap);
     },
     true},
    {"import, which ends in silence", L"AddBanReference",
     [] {
         FakeWindow::MenuChoices = {ID_mnuMerrow300};
         FakeWindow::RightClick(ID_lstBannedIps);
     },
     true},
    OnItem("chkRefresh", L"chkRefresh lstBannedNames", ID_lstBannedNames, 0, ID_chkRefresh),
    WithText("idle settings", L"txtIdleMax chkIdlePunt", ID_txtIdleMax, L"7", ID_chkIdlePunt),
    WithText("other settings", L"txtRefreshInterval optMethod", ID_txtRefreshInterval, L"7", ID_optMethod),
};

// A server with something to do for every step of a tick.
struct BusyServer : Server {
    BusyServer() {
        Join(1, "Alice", "10.0.0.1");
        Join(3, "Bob", "10.0.0.7");
        Join(4, "Carol", "10.0.0.4");
        BanName(L"Alice[1]");
        BanName(L"lic[2]");
        BanName(L"Eve[1]");
        BanIp(L"9.9.9.9");
        Outside::PutFile(SettingsFile(L"BannedReference.ini"), L"[Eve]\r\n0=9.9.9.9\r\n1=8.8.8.8\r\n");
        Outside::PutFile(SettingsFile(L"Slaps.ini"), L"[Messages]\r\n0=one\r\n1=two\r\n");
        Outside::PutIni(PlayersIni, L"IdlePunt", L"Server1", L"1");
        Outside::PutIni(PlayersIni, L"AutoRefresh", L"Server1", L"1");
        Outside::PutFile(L"C:\\ban.txt", L"10.9.8.7           Trent                cheat\r\n");
        Outside::OpenFileAnswer = L"C:\\ban.txt";
        Outside::YesNoAnswers = {true};
        Outside::TextAnswers = {L"cheat"};
        mdlVNT::KillPermList(TestProfile).Add(L"Carol", L"Carol");
    }
};

void Begin(const Scenario& Tried) {
    if (Tried.InWindow) Load(TestProfile, HostWindow, HostData());
    Outside::Calls = 0;
}

long CallsOf(const Scenario& Tried) {
    BusyServer Game;
    Begin(Tried);
    Tried.Run();
    return Outside::Calls;
}

// What no scenario takes away stands, whatever failed.
void ExpectListsWhole(Outside::Fault Kind) {
    EXPECT_FALSE(Outside::IniValue(SettingsFile(L"BannedNames.ini"), L"Players", L"Alice[1]").empty());
    EXPECT_FALSE(Outside::IniValue(SettingsFile(L"BannedNames.ini"), L"Players", L"lic[2]").empty());
    // Nobody can notice a write that does nothing and says nothing.
    if (Kind == Outside::Fault::Empty && Outside::FaultyCall() == L"WriteIniKey") return;
    EXPECT_NE(Outside::FileText(SettingsFile(L"Slaps.ini")).find(L"=two"), std::wstring::npos);
}

// The next run of the scenario's profile does its whole job.
void ExpectTheNextTickWorks(BusyServer& Game, Outside::Fault Kind) {
    Outside::FailCall(0, Kind);
    Outside::Reports.clear();
    SetProfileData(TestProfile, HostData());
    tmrVN_Timer(TestProfile);
    EXPECT_TRUE(Outside::Reports.empty());
    EXPECT_FALSE(Game.World.Players[1].Present);
    // An empty text in place of a name is a nameless player, whom the sweep punts.
    EXPECT_TRUE(Kind == Outside::Fault::Empty || Game.World.Players[4].Present);
}

void ExpectReports(const Scenario& Tried, Outside::Fault Kind) {
    // An empty answer may break two things; a failure ends one procedure.
    EXPECT_LE(Outside::Reports.size(), Kind == Outside::Fault::Empty ? 2u : 1u);
    const Lines Known = Split(Tried.Reporters, L" ");
    for (const std::wstring& Report : Outside::Reports)
        EXPECT_EQ(std::count(Known.begin(), Known.end(), Report.substr(0, Report.find(L':'))), 1) << Report;
}

void RunWithFault(const Scenario& Tried, long Call, Outside::Fault Kind) {
    SCOPED_TRACE(testing::Message() << Tried.Name << ", call " << Call << ", kind "
                                    << static_cast<int>(Kind));
    BusyServer Game;
    Begin(Tried);
    Outside::FailCall(Call, Kind);
    Tried.Run();
    ASSERT_FALSE(Outside::FaultyCall().empty());
    ExpectReports(Tried, Kind);
    ExpectListsWhole(Kind);
    ExpectTheNextTickWorks(Game, Kind);
}

TEST(Faults, AtEveryOutsideCallOfEveryScenario) {
    long Injected = 0;
    for (const Scenario& Tried : Scenarios) {
        const long Calls = CallsOf(Tried);
        ASSERT_GT(Calls, 0) << Tried.Name;
        for (const auto Kind : {Outside::Fault::Failure, Outside::Fault::WrongType,
                                Outside::Fault::OutOfMemory, Outside::Fault::Empty})
            for (long Call = 1; Call <= Calls; ++Call, ++Injected) RunWithFault(Tried, Call, Kind);
    }
    std::printf("faults injected: %ld in %zu scenarios\n", Injected, std::size(Scenarios));
}

TEST(Faults, TenThousandTicksOfEightProfilesLeaveNothingBehind) {
    Server Game;
    for (Long Index = 1; Index <= 8; ++Index) SetProfileData(Index, HostData());
    BanName(L"lic[2]");
    mdlVNT::KillPermList(TestProfile).Add(L"Nobody", L"Nobody");
    for (int Tick = 0; Tick < 10000; ++Tick) {
        if (Tick % 100 == 0) Game.Join(1 + Tick / 100 % 16, "Alice" + std::to_string(Tick));
        tmrVN_Timer(1 + Tick % 8);
        Outside::Journal.clear();
    }
    EXPECT_TRUE(Outside::Reports.empty());
    EXPECT_EQ(mdlVNT::KillPermList(TestProfile).Count(), 0u);
}

} // namespace
