// Punt, ban, kill, arm and switch: what reaches the game, the files and the screen.
#include <gtest/gtest.h>

#include "game/mdlVNT.h"
#include "game/player_actions.h"
#include "tests/fakes/server.h"

namespace {

TEST(Punt, SlotTextsBecomeTwoDigits) {
    const std::pair<TextView, TextView> Table[] = {
        {L"7", L"punt 07"}, {L"07", L"punt 07"}, {L"12", L"punt 12"}, {L" 3 ", L"punt 03"}};
    for (const auto& [Slot, Command] : Table) {
        Server Game;
        EXPECT_TRUE(PuntPlayer(Profile, L"Bob", L"10.0.0.7", Slot, false, {}, true));
        EXPECT_EQ(Commands(), Lines{std::wstring(Command)});
    }
    for (const TextView Slot : {L"", L"x", L"1.5", L"-1", L"7; kick", L"99999999999"}) {
        Server Game;
        EXPECT_FALSE(PuntPlayer(Profile, L"Bob", L"10.0.0.7", Slot, true, {}, true));
        EXPECT_TRUE(Commands().empty());
        EXPECT_FALSE(Outside::HasFile(SettingsFile(L"BannedNames.ini")));
        EXPECT_EQ(Outside::Reports.size(), 1u);
    }
}

TEST(Punt, NothingHappensWhileNoGameRuns) {
    for (const Long State : {0, 1, -1}) {
        Server Game({.State = State});
        EXPECT_TRUE(PuntPlayer(Profile, L"Bob", L"10.0.0.7", L"7", true, L"why", false));
        EXPECT_TRUE(Outside::Journal.empty());
    }
}

TEST(Punt, AnnouncesUnlessQuiet) {
    Server Game({.Build = Layout::Build::Affiliate});
    Game.Join(7, "Bob");
    PuntPlayer(Profile, L"Bob", L"10.0.0.7", L"7", false, {}, false);
    EXPECT_EQ(Outside::Journal, (Lines{L"CMD 1 punt 07 (affiliate)",
                                       L"MSG 3 Bob has been punted by the Server Admin! (affiliate)"}));
    EXPECT_FALSE(Game.World.Players[7].Present);
}

TEST(Ban, WritesLinkNameAndAddressThenPunts) {
    Server Game;
    Outside::RemoveAll(L"C:\\Host\\profiles\\Server1\\settings");
    EXPECT_TRUE(PuntPlayer(Profile, L"Bob", L"10.0.0.7", L"7", true, L"aimbot", false));
    EXPECT_EQ(Outside::Journal,
              (Lines{L"CreateFolder C:\\Host\\profiles\\Server1\\settings", L"WriteIniKey [Bob] 0=10.0.0.7",
                     L"WriteIniKey [Players] Bob[1]=2024-05-06 7:08:09[-]aimbot",
                     L"WriteIniKey [IpAddresses] 10.0.0.7=2024-05-06 7:08:09", L"CMD 1 punt 07",
                     L"MSG 3 Bob has been banned by the Server Admin!"}));
    // The same again with a blank reason: the link is there already; a second address gets the next key.
    PuntPlayer(Profile, L"Bob", L"10.0.0.9", L"7", true, L"  ", true);
    PuntPlayer(Profile, L"Bob", L"10.0.0.7", L"7", true, L"", true);
    EXPECT_EQ(Outside::FileText(SettingsFile(L"BannedReference.ini")),
              L"[Bob]\r\n0=10.0.0.7\r\n1=10.0.0.9\r\n");
    EXPECT_EQ(Outside::IniValue(SettingsFile(L"BannedNames.ini"), L"Players", L"Bob[1]"),
              L"2024-05-06 7:08:09[-]None");
}

TEST(Ban, APlayerWithoutAKnownAddressIsBannedByNameAlone) {
    for (const TextView Ip : {L"", L" ", L"0.0.0.0"}) {
        Server Game;
        EXPECT_TRUE(PuntPlayer(Profile, L"Bob", Ip, L"7", true, {}, true));
        EXPECT_EQ(Commands(), Lines{L"punt 07"});
        EXPECT_FALSE(Outside::HasFile(SettingsFile(L"BannedIps.ini")) ||
                     Outside::HasFile(SettingsFile(L"BannedReference.ini")));
    }
}

TEST(Ban, ABareKeyInTheNamesFileStopsIt) {
    Server Game;
    Outside::PutIni(SettingsFile(L"BannedNames.ini"), L"Players", L"Bob", L"by hand");
    EXPECT_TRUE(PuntPlayer(Profile, L"Bob", L"10.0.0.7", L"7", true, {}, false));
    EXPECT_TRUE(Commands().empty());
    EXPECT_EQ(Outside::IniValue(SettingsFile(L"BannedReference.ini"), L"Bob", L"0"), L"10.0.0.7");
}

TEST(Ban, ANameThatTheFileCannotHoldIsToldAndStillPunted) {
    for (const bool Quiet : {true, false}) {
        Server Game;
        EXPECT_TRUE(PuntPlayer(Profile, L"[a]b=c", L"10.0.0.7", L"7", true, {}, Quiet));
        EXPECT_EQ(Commands(), Lines{L"punt 07"});
        EXPECT_EQ(Outside::IniValue(SettingsFile(L"BannedIps.ini"), L"IpAddresses", L"10.0.0.7"),
                  L"2024-05-06 7:08:09");
        const TextView Told = L"The name could not be stored in the ban list.";
        EXPECT_EQ(Outside::Recorded(L"Box Failed! " + std::wstring(Told)).size(), Quiet ? 0u : 1u);
        EXPECT_EQ(Outside::Reports.size(), Quiet ? 1u : 0u);
    }
}

TEST(Ban, LineBreaksInANameDoNotReachTheFiles) {
    Server Game;
    PuntPlayer(Profile, L"Bob\r\n[Players]", L"10.0.0.7", L"7", true, {}, true);
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
    for (const KillCase& Each : Table) {
        Server Game;
        Game.Join(7, "Bob");
        Game.SetLife(7, Each.Life);
        EXPECT_TRUE(KillPlayer(Profile, L"Bob", Each.ShowBoxes));
        EXPECT_EQ(Outside::Journal, Each.Journal);
        EXPECT_EQ(Game.Life(7), Each.LifeAfter);
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
    for (const ArmCase& Each : Table) {
        Server Game;
        Game.Join(7, "Bob");
        Game.SetStats(7, Layout::Statistics::Armed, Each.Flag);
        EXPECT_TRUE(ArmPlayer(Profile, L"Bob", Each.Mode, true));
        EXPECT_EQ(Outside::Journal, Each.Journal);
        EXPECT_EQ(Game.Stats(7, Layout::Statistics::Armed), Each.FlagAfter);
    }
}

TEST(Search, DedicatedServersOwnRecordIsFoundBySwitchAlone) {
    Server Game({.Dedicated = true});
    const std::uint32_t Name = Game.World.Memory.Statistics.Address + Layout::Statistics::Name;
    Simulation::WriteText(Game.World.Memory, Name, "Boss", 16);
    KillPlayer(Profile, L"Boss", false);
    ArmPlayer(Profile, L"Boss", L"Disarm", false);
    EXPECT_TRUE(Outside::Journal.empty());
    Game.SetStats(0, Layout::Statistics::Team, 0);
    SwitchTeam(Profile, L"Boss");
    EXPECT_EQ(Game.Stats(0, Layout::Statistics::Team), 1);
    // Nobody is found by an empty name, although free records have one; case counts.
    Outside::Journal.clear();
    KillPlayer(Profile, L"", false);
    SwitchTeam(Profile, L"boss");
    EXPECT_TRUE(Outside::Journal.empty());
}

TEST(Switch, ToTheOtherTeamWhereThereAreTeams) {
    const std::pair<Long, Long> Table[] = {{1, 2}, {2, 1}, {0, 1}, {7, 1}};
    for (const auto& [Before, After] : Table) {
        Server Game;
        Game.Join(7, "Bob");
        Game.SetStats(7, Layout::Statistics::Team, Before);
        EXPECT_TRUE(SwitchTeam(Profile, L"Bob"));
        EXPECT_EQ(Game.Stats(7, Layout::Statistics::Team), After);
    }
    Server Game({.GameType = 0});
    Game.Join(7, "Bob");
    SwitchTeam(Profile, L"Bob");
    EXPECT_TRUE(Outside::Journal.empty());
}

} // namespace
