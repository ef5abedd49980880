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

TEST(Punt, SaysSoToTheBuildThatItReaches) {
    Server Game({.Build = Layout::Build::Affiliate});
    PuntPlayer(PuntBob);
    EXPECT_EQ(Outside::Journal, (Lines{L"CMD 1 punt 07 (affiliate)",
                                       L"MSG 3 Bob has been punted by the Server Admin! (affiliate)"}));
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

// The keys of the entries that were written into a section.
Lines Written(TextView Section) {
    Lines Keys;
    for (const std::wstring& Entry : Outside::Recorded(L"WriteIniKey " + std::wstring(Section)))
        Keys.push_back(Entry.substr(13 + Section.size(), Entry.find(L'=') - 13 - Section.size()));
    return Keys;
}

// Half a ban is a ban. What can be stored is, with a link where name and address are both there.
TEST(Ban, StoresWhatCanBeStoredAndTellsTheRest) {
    const TextView NoName = L"The name could not be stored in the ban list.";
    const std::wstring LongName(1000, L'x');
    const TextView Known = L"10.0.0.7";
    const struct {
        TextView Name, Ip;
        std::optional<BannedName> Entry;
        TextView Link, Key, Address, Missing;
    } Table[] = {
        {L"[a]b=c", Known, {}, L"", L"", Known, NoName},
        {L";Bob", Known, {}, L"", L"", Known, NoName},
        {L"\x416", Known, {}, L"", L"", Known, NoName}, // not in the code page
        {LongName, Known, {}, L"", L"", Known, NoName},
        {L"[ABC]Bob", Known, BannedName::Part(L"ABC]Bob"), L"ABC]Bob", L"ABC]Bob[2]", Known, L""},
        {L"[ABC]Bob", Known, BannedName(), L"", L"", Known, L""},
        {L" ", Known, {}, L"", L"", Known, NoName},
        {L"Bob", L"", {}, L"", L"Bob[1]", L"", L""},
        {L"Bob", L" ", {}, L"", L"Bob[1]", L"", L""},
        {L"Bob", L"0.0.0.0", {}, L"", L"Bob[1]", L"", L""}, // not known
        {L"Bob", L"300.1.1.1", {}, L"", L"Bob[1]", L"", L""},
        {L"a=b", L"0.0.0.0", {}, L"", L"", L"", NoName},
    };
    const auto One = [](TextView Text) { return Text.empty() ? Lines{} : Lines{std::wstring(Text)}; };
    for (const auto& Row : Table)
        for (const bool Quiet : {true, false}) {
            SCOPED_TRACE(std::string(Row.Name.begin(), Row.Name.end()));
            Server Game;
            PuntRequest Ban = BanBob({}, Quiet);
            Ban.Name = Row.Name;
            Ban.Ip = Row.Ip;
            Ban.Entry = Row.Entry;
            const bool IsBan = !Row.Key.empty() || !Row.Address.empty();
            EXPECT_EQ(PuntPlayer(Ban).Done, IsBan);
            EXPECT_EQ(Commands(), Lines{L"punt 07"}); // whoever bans wants him gone
            EXPECT_EQ(Outside::Recorded(L"MSG").size(), IsBan && !Quiet ? 1u : 0u);
            for (const std::wstring& Name : {std::wstring(Row.Name), std::wstring(L"ABC]Bob")})
                EXPECT_EQ(Outside::IniValue(SettingsFile(L"BannedReference.ini"), Name, L"0"),
                          !Name.empty() && Name == Row.Link ? Known : L"");
            EXPECT_EQ(Written(L"[Players]"), One(Row.Key));
            EXPECT_EQ(Written(L"[IpAddresses]"), One(Row.Address));
            const bool Told = !Row.Missing.empty();
            EXPECT_EQ(Outside::Recorded(L"Box Failed! " + std::wstring(Row.Missing)).size(),
                      Told && !Quiet ? 1u : 0u);
            EXPECT_EQ(Outside::Reports,
                      Told && Quiet ? Lines{L"PuntPlayer: 5 " + std::wstring(Row.Missing)} : Lines{});
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

TEST(Kill, ByLifeState) {
    const std::wstring Sent = L"MSG 3 Bob has been 'Killed' by the Server Admin!";
    const std::wstring Refused =
        L"Box Failed! The selected player is on the spawn select screen and cannot be killed!";
    const std::tuple<Long, bool, Long, Lines> Table[] = {
        {2, true, 1, {L"WriteLong 1", Sent, L"Box Success Player Killed."}},
        {9, false, 1, {L"WriteLong 1", Sent}},
        {1, true, 1, {Refused}},
        {1, false, 1, {}},
        {0, true, 0, {}},
        {-5, true, -5, {}}};
    for (const auto& [Life, ShowBoxes, After, Journal] : Table) {
        Server Game;
        Game.Join(7, "Bob");
        Game.SetLife(7, Life);
        EXPECT_TRUE(KillPlayer(TestProfile, L"Bob", ShowBoxes));
        EXPECT_EQ(Outside::Journal, Journal);
        EXPECT_EQ(Game.Life(7), After);
    }
}

TEST(Arm, ByModeAndFlag) {
    const Lines Disarmed{L"WriteLong 0", L"MSG 3 Bob has been 'Disarmed' by the Server Admin!",
                         L"Box Success Player Disarmed."};
    const Lines Rearmed{L"WriteLong 1", L"MSG 3 Bob has been 'Re-Armed' by the Server Admin!",
                        L"Box Success Player Re-Armed."};
    const std::tuple<TextView, Long, Long, Lines> Table[] = {
        {L"Disarm", 1, 0, Disarmed},
        {L"Disarm", 2, 0, Disarmed},
        {L"Disarm", 0, 0, {L"Box Failed! The selected player is already disarmed!"}},
        {L"Rearm", 0, 1, Rearmed},
        {L"Rearm", 2, 1, Rearmed},
        {L"Rearm", 1, 1, {L"Box Failed! The selected player is already armed!"}},
        {L"disarm", 1, 1, {}},
        {L"Explode", 1, 1, {}}};
    for (const auto& [Mode, Flag, After, Journal] : Table) {
        Server Game;
        Game.Join(7, "Bob");
        Game.SetStats(7, Layout::Statistics::Armed, Flag);
        EXPECT_TRUE(ArmPlayer(TestProfile, L"Bob", Mode, true));
        EXPECT_EQ(Outside::Journal, Journal);
        EXPECT_EQ(Game.Stats(7, Layout::Statistics::Armed), After);
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
