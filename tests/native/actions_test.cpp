// Punt, ban, kill, arm and switch: what reaches the game, the files and the screen.
#include <gtest/gtest.h>

#include "game/mdlVNT.h"
#include "game/player_actions.h"
#include "tests/fakes/server.h"

namespace {

const PuntRequest PuntBob{.Profile = TestProfile, .Name = L"Bob", .Ip = L"10.0.0.7", .Slot = 7};

PuntRequest BanBob(TextView Reason = {}, bool Quiet = true) {
    PuntRequest Ban = PuntBob;
    Ban.Ban = true;
    Ban.Reason = Reason;
    Ban.Quiet = Quiet;
    return Ban;
}

TEST(Punt, NothingHappensWhileNoGameRuns) {
    for (const Long State : {0, 1, -1}) {
        Server Game({.State = State});
        EXPECT_TRUE(PuntPlayer(BanBob(L"why", false)).Done);
        EXPECT_TRUE(Outside::Journal.empty());
    }
}

TEST(Punt, AnnouncesUnlessQuiet) {
    Server Game({.Build = Layout::Build::Affiliate});
    Game.Join(7, "Bob");
    PuntPlayer(PuntBob);
    EXPECT_EQ(Outside::Journal, (Lines{L"CMD 1 punt 07 (affiliate)",
                                       L"MSG 3 Bob has been punted by the Server Admin! (affiliate)"}));
    EXPECT_FALSE(Game.World.Players[7].Present);
}

TEST(Ban, WritesLinkNameAndAddressThenPunts) {
    Server Game;
    Outside::RemoveAll(L"C:\\Host\\profiles\\Server1\\settings");
    EXPECT_TRUE(PuntPlayer(BanBob(L"aimbot", false)).Done);
    EXPECT_EQ(Outside::Journal,
              (Lines{L"CreateFolder C:\\Host\\profiles\\Server1\\settings", L"WriteIniKey [Bob] 0=10.0.0.7",
                     L"WriteIniKey [Players] Bob[1]=2024-05-06 7:08:09[-]aimbot",
                     L"WriteIniKey [IpAddresses] 10.0.0.7=2024-05-06 7:08:09", L"CMD 1 punt 07",
                     L"MSG 3 Bob has been banned by the Server Admin!"}));
    // The same again with a blank reason: the link is there already; a second address gets the next key.
    PuntRequest Elsewhere = BanBob(L"  ");
    Elsewhere.Ip = L"10.0.0.9";
    PuntPlayer(Elsewhere);
    PuntPlayer(BanBob());
    EXPECT_EQ(Outside::FileText(SettingsFile(L"BannedReference.ini")),
              L"[Bob]\r\n0=10.0.0.7\r\n1=10.0.0.9\r\n");
    EXPECT_EQ(Outside::IniValue(SettingsFile(L"BannedNames.ini"), L"Players", L"Bob[1]"),
              L"2024-05-06 7:08:09[-]None");
}

TEST(Ban, ABareKeyInTheNamesFileStopsItAndSaysSo) {
    const std::wstring Said = L"Bob stands in the ban list without a tag; nothing was done.";
    for (const bool Quiet : {true, false}) {
        Server Game;
        Outside::PutIni(SettingsFile(L"BannedNames.ini"), L"Players", L"Bob", L"by hand");
        EXPECT_TRUE(PuntPlayer(BanBob({}, Quiet)).Done);
        EXPECT_TRUE(Commands().empty());
        EXPECT_EQ(Outside::IniValue(SettingsFile(L"BannedReference.ini"), L"Bob", L"0"), L"10.0.0.7");
        EXPECT_EQ(Outside::Recorded(L"Box Failed! " + Said).size(), Quiet ? 0u : 1u);
        EXPECT_EQ(Outside::Reports, Quiet ? Lines{L"PuntPlayer: 5 " + Said} : Lines{});
        // The key of Bob's own ban is no bare key of somebody with that name.
        BanName(L"Bob[1]");
        PuntRequest Namesake = BanBob();
        Namesake.Name = L"Bob[1]";
        EXPECT_TRUE(PuntPlayer(Namesake).Done);
        EXPECT_FALSE(Outside::IniValue(SettingsFile(L"BannedNames.ini"), L"Players", L"Bob[1][1]").empty());
        EXPECT_EQ(Commands(), Lines{L"punt 07"});
    }
}

// Half a ban is a ban. What can be stored is, with a link where name and address are both there.
struct HalfBan {
    const char* What;
    TextView Name, Ip;
    std::optional<BannedName> Entry;
    Lines Entries; // of the three files
    TextView Missing;
};

TEST(Ban, StoresWhatCanBeStoredAndTellsTheRest) {
    const TextView NoName = L"The name could not be stored in the ban list.";
    const std::wstring LongName(1000, L'x');
    const HalfBan Table[] = {
        {"no key", L"[a]b=c", L"10.0.0.7", {}, {L"10.0.0.7"}, NoName},
        {"comment", L";Bob", L"10.0.0.7", {}, {L"10.0.0.7"}, NoName},
        {"not in the code page", L"\x416", L"10.0.0.7", {}, {L"10.0.0.7"}, NoName},
        {"part instead",
         L"[ABC]Bob",
         L"10.0.0.7",
         BannedName::Part(L"ABC]Bob"),
         {L"ABC]Bob 10.0.0.7", L"ABC]Bob[2]", L"10.0.0.7"},
         {}},
        {"address alone", L"[ABC]Bob", L"10.0.0.7", BannedName(), {L"10.0.0.7"}, {}},
        {"blank name", L" ", L"10.0.0.7", {}, {L"10.0.0.7"}, NoName},
        {"too long a name", LongName, L"10.0.0.7", {}, {L"10.0.0.7"}, NoName},
        {"no address", L"Bob", L"", {}, {L"Bob[1]"}, {}},
        {"blank address", L"Bob", L" ", {}, {L"Bob[1]"}, {}},
        {"address not known", L"Bob", L"0.0.0.0", {}, {L"Bob[1]"}, {}},
        {"no address at all", L"Bob", L"300.1.1.1", {}, {L"Bob[1]"}, {}},
        {"no key, not known", L"a=b", L"0.0.0.0", {}, {}, NoName},
    };
    for (const HalfBan& Row : Table) {
        for (const bool Quiet : {true, false}) {
            Server Game;
            PuntRequest Ban = BanBob({}, Quiet);
            Ban.Name = Row.Name;
            Ban.Ip = Row.Ip;
            Ban.Entry = Row.Entry;
            const bool IsBan = !Row.Entries.empty();
            EXPECT_EQ(PuntPlayer(Ban).Done, IsBan) << Row.What;
            EXPECT_EQ(Commands(), Lines{L"punt 07"}) << Row.What; // whoever bans wants him gone
            EXPECT_EQ(Outside::Recorded(L"MSG").size(), IsBan && !Quiet ? 1u : 0u) << Row.What;
            Lines Entries;
            for (const std::wstring& Name : Lines{std::wstring(Row.Name), L"ABC]Bob"})
                if (!Outside::IniValue(SettingsFile(L"BannedReference.ini"), Name, L"0").empty())
                    Entries.push_back(Name + L" 10.0.0.7");
            for (const std::wstring& Written : Outside::Recorded(L"WriteIniKey [Players] "))
                Entries.push_back(Written.substr(22, Written.find(L'=') - 22));
            for (const std::wstring& Written : Outside::Recorded(L"WriteIniKey [IpAddresses] "))
                Entries.push_back(Written.substr(26, Written.find(L'=') - 26));
            EXPECT_EQ(Entries, Row.Entries) << Row.What;
            const bool Told = !Row.Missing.empty();
            EXPECT_EQ(Outside::Recorded(L"Box Failed! " + std::wstring(Row.Missing)).size(),
                      Told && !Quiet ? 1u : 0u)
                << Row.What;
            EXPECT_EQ(Outside::Reports,
                      Told && Quiet ? Lines{L"PuntPlayer: 5 " + std::wstring(Row.Missing)} : Lines{})
                << Row.What;
        }
    }
}

TEST(Ban, AWriteThatFailsLeavesTheOtherHalf) {
    struct Row {
        int First, Last; // writes that fail, or are lost without a word
        TextView Report, WhenLost;
    };
    const Row Table[] = {
        {1, 1, L"AddBanReference: 1004 locked", {}},
        {2, 2, L"PuntPlayer: 5 The name could not be stored in the ban list.", L"same"},
        {3, 3, L"PuntPlayer: 5 The address could not be stored in the ban list.", L"same"},
        {2, 3, L"PuntPlayer: 1004 locked",
         L"PuntPlayer: 5 Neither the name nor the address could be stored in the ban list."}};
    for (const auto& [First, Last, Report, WhenLost] : Table)
        for (const bool IsLost : {false, true}) {
            Server Game;
            int Writes = 0;
            Outside::BeforeCall = [&, From = First, To = Last](TextView Name) {
                const bool Fails = Name == L"WriteIniKey" && ++Writes >= From && Writes <= To;
                Outside::SetReadOnly(Fails);
                if (Fails && !IsLost) Fail(1004, L"locked");
            };
            EXPECT_EQ(PuntPlayer(BanBob()).Done, First == Last);
            Outside::BeforeCall = nullptr;
            EXPECT_EQ(Commands(), Lines{L"punt 07"});
            const TextView Wanted = IsLost && WhenLost != L"same" ? WhenLost : Report;
            EXPECT_EQ(Outside::Reports, Wanted.empty() ? Lines{} : Lines{std::wstring(Wanted)})
                << First << IsLost;
        }
}

TEST(Ban, ControlCharactersInANameDoNotReachTheFiles) {
    Server Game;
    PuntRequest Ban = BanBob();
    Ban.Name = L"Bob\r\n[Players]";
    PuntPlayer(Ban);
    EXPECT_EQ(Outside::FileText(SettingsFile(L"BannedNames.ini")).find(L"\r\n[Players]\r\n"),
              std::wstring::npos);
    EXPECT_EQ(Commands(), Lines{L"punt 07"});
}

struct KillCase {
    Long Life;
    bool ShowBoxes;
    Long LifeAfter;
    Lines Journal;
};

TEST(Kill, ByLifeState) {
    const std::wstring Sent = L"MSG 3 Bob has been 'Killed' by the Server Admin!";
    const std::wstring Refused =
        L"Box Failed! The selected player is on the spawn select screen and cannot be killed!";
    const KillCase Table[] = {
        {2, true, 1, {L"WriteLong 1", Sent, L"Box Success Player Killed."}},
        {9, false, 1, {L"WriteLong 1", Sent}},
        {1, true, 1, {Refused}},
        {1, false, 1, {}},
        {0, true, 0, {}},
        {-5, true, -5, {}},
    };
    for (const KillCase& Case : Table) {
        Server Game;
        Game.Join(7, "Bob");
        Game.SetLife(7, Case.Life);
        EXPECT_TRUE(KillPlayer(TestProfile, L"Bob", Case.ShowBoxes));
        EXPECT_EQ(Outside::Journal, Case.Journal);
        EXPECT_EQ(Game.Life(7), Case.LifeAfter);
    }
}

struct ArmCase {
    TextView Mode;
    Long Flag;
    Long FlagAfter;
    Lines Journal;
};

TEST(Arm, ByModeAndFlag) {
    const Lines Disarmed{L"WriteLong 0", L"MSG 3 Bob has been 'Disarmed' by the Server Admin!",
                         L"Box Success Player Disarmed."};
    const Lines Rearmed{L"WriteLong 1", L"MSG 3 Bob has been 'Re-Armed' by the Server Admin!",
                        L"Box Success Player Re-Armed."};
    const ArmCase Table[] = {
        {L"Disarm", 1, 0, Disarmed},
        {L"Disarm", 2, 0, Disarmed},
        {L"Disarm", 0, 0, {L"Box Failed! The selected player is already disarmed!"}},
        {L"Rearm", 0, 1, Rearmed},
        {L"Rearm", 2, 1, Rearmed},
        {L"Rearm", 1, 1, {L"Box Failed! The selected player is already armed!"}},
        {L"disarm", 1, 1, {}},
        {L"Explode", 1, 1, {}},
    };
    for (const ArmCase& Case : Table) {
        Server Game;
        Game.Join(7, "Bob");
        Game.SetStats(7, Layout::Statistics::Armed, Case.Flag);
        EXPECT_TRUE(ArmPlayer(TestProfile, L"Bob", Case.Mode, true));
        EXPECT_EQ(Outside::Journal, Case.Journal);
        EXPECT_EQ(Game.Stats(7, Layout::Statistics::Armed), Case.FlagAfter);
    }
}

TEST(Search, DedicatedServersOwnRecordIsFoundBySwitchAlone) {
    Server Game({.Dedicated = true});
    const std::uint32_t Name = Game.World.Memory.Statistics.Address + Layout::Statistics::Name;
    Simulation::WriteText(Game.World.Memory, Name, "Boss", 16);
    KillPlayer(TestProfile, L"Boss", false);
    ArmPlayer(TestProfile, L"Boss", L"Disarm", false);
    EXPECT_TRUE(Outside::Journal.empty());
    Game.SetStats(0, Layout::Statistics::Team, 0);
    SwitchTeam(TestProfile, L"Boss");
    EXPECT_EQ(Game.Stats(0, Layout::Statistics::Team), 1);
    // Nobody is found by an empty name, although free records have one; case counts.
    Outside::Journal.clear();
    KillPlayer(TestProfile, L"", false);
    SwitchTeam(TestProfile, L"boss");
    EXPECT_TRUE(Outside::Journal.empty());
}

TEST(Switch, ToTheOtherTeamWhereThereAreTeams) {
    const std::pair<Long, Long> Table[] = {{1, 2}, {2, 1}, {0, 1}, {7, 1}};
    for (const auto& [Before, After] : Table) {
        Server Game;
        Game.Join(7, "Bob");
        Game.SetStats(7, Layout::Statistics::Team, Before);
        EXPECT_TRUE(SwitchTeam(TestProfile, L"Bob"));
        EXPECT_EQ(Game.Stats(7, Layout::Statistics::Team), After);
    }
    Server Game({.GameType = 0});
    Game.Join(7, "Bob");
    SwitchTeam(TestProfile, L"Bob");
    EXPECT_TRUE(Outside::Journal.empty());
}

} // namespace
