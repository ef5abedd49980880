// The player list and its menu: what they show, and what an entry does.
#include "tests/native/window_fixture.h"

namespace {

// --- The player list

TEST_F(PlayerList, ARefreshWritesOnlyWhatChanged) {
    for (int Slot = 1; Slot <= 15; ++Slot) Game.Join(Slot, "Player" + std::to_string(Slot), "10.0.0.7");
    FakeWindow::PressHeader(1);
    Refresh();
    FakeWindow::ChooseRow(3);
    FakeWindow::GridWrites();
    Refresh();
    EXPECT_EQ(FakeWindow::GridWrites(), 0);
    Simulation::ChangePing(Game.World, 3, 99);
    Refresh();
    EXPECT_EQ(FakeWindow::GridWrites(), 1);
    Simulation::ChangeTeam(Game.World, 3, 2);
    Refresh();
    EXPECT_EQ(FakeWindow::GridWrites(), 1);
    EXPECT_EQ(FakeWindow::SelectedRow(), 0);
}

TEST_F(PlayerList, SortsByWhatAColumnHolds) {
    Game.Join(2, "bob", "10.0.0.10", 1, 100);
    Game.Join(10, "Zoe", "9.0.0.200", 1, 20);
    Game.Join(11,
              "\xC4"
              "DA",
              "10.0.0.9", 2, 9); // "Ä" sorts with "A"
    Refresh();
    const auto Names = [] {
        std::wstring Initials;
        for (const std::wstring& Row : FakeWindow::Rows()) Initials += Row[3] == L'\u00C4' ? L'A' : Row[3];
        return Initials;
    };
    const struct {
        int Column;
        TextView Order, Mark;
    } Clicks[] = {
        {0, L"bZA", L"0 up"}, {0, L"AZb", L"0 down"}, {0, L"bZA", L"0 up"},
        {1, L"AbZ", L"1 up"}, {1, L"ZbA", L"1 down"}, {2, L"ZAb", L"2 up"},
        {3, L"AZb", L"3 up"}, {3, L"bZA", L"3 down"}, {1, L"AbZ", L"1 up"},
    };
    for (const auto& Click : Clicks) {
        FakeWindow::PressHeader(Click.Column);
        EXPECT_EQ(Names(), Click.Order) << Click.Column;
        EXPECT_EQ(FakeWindow::SortMark(), Click.Mark);
        Refresh();
        EXPECT_EQ(Names(), Click.Order) << "after a refresh";
    }
}

TEST_F(PlayerList, TheSelectionFollowsItsPlayer) {
    JoinBobAndRita();
    EXPECT_EQ(FakeWindow::Rows(), (Lines{L"03|Bob|10.0.0.7|50|1", L"12|Rita|10.0.0.9|140|2"}));
    EXPECT_EQ(FakeWindow::Text(ID_lblTeams), L"Blue Team: 1, Red Team: 1");
    FakeWindow::Click(ID_chkRefresh);
    FakeWindow::ChooseRow(1);
    FakeWindow::PressHeader(1);
    FakeWindow::PressHeader(1);
    EXPECT_EQ(FakeWindow::SelectedRow(), 0) << "sorted downwards";
    Game.Join(2, "Zoe");
    FakeWindow::Tick(ID_tmrRefresh);
    EXPECT_EQ(FakeWindow::SelectedRow(), 1) << "a row came above";
    FakeWindow::RightClickRow(-1);
    EXPECT_EQ(FakeWindow::SelectedRow(), 1) << "a click beside the rows";
    Game.Leave(2);
    FakeWindow::Tick(ID_tmrRefresh);
    EXPECT_EQ(FakeWindow::SelectedRow(), 0);
    // Somebody else in the slot is not the player who was chosen, nor is one who comes back.
    Game.Leave(12);
    Game.Join(12, "Eve", "10.0.0.9", 2);
    FakeWindow::Tick(ID_tmrRefresh);
    EXPECT_EQ(FakeWindow::SelectedRow(), -1);
    Game.Leave(12);
    Game.Join(12, "Rita", "10.0.0.9", 2);
    FakeWindow::Tick(ID_tmrRefresh);
    EXPECT_EQ(FakeWindow::SelectedRow(), -1);
    // An entry that arrives without its menu finds nobody.
    Outside::Journal.clear();
    for (const int Entry : {ID_mnuPunt, ID_mnuBan1, ID_mnuBan2, ID_mnuKill, ID_mnuKillPerm, ID_mnuSwitch})
        FakeWindow::Command(Entry);
    EXPECT_TRUE(Outside::Journal.empty());
}

// --- The pop-up menus

const Lines PlayerEntries = Split(
    L"Punt Player/Ban Player (With Reason)/Ban Player (Without Reason)/-/Switch Teams/-/Kill Player (Once)/"
    L"Disarm Player (Once)/Kill Player (Permanently)/Disarm Player (Permanently)/Rearm Player/-/"
    L"Refresh Player List",
    L"/");

TEST_F(PlayerList, TheMenuFollowsWhereTheMouseIs) {
    FakeWindow::RightClickRow(-1);
    EXPECT_EQ(FakeWindow::LastMenu(), Lines{L"Refresh Player List"});
    JoinBobAndRita();
    FakeWindow::RightClickRow(1);
    EXPECT_EQ(FakeWindow::LastMenu(), PlayerEntries);
    EXPECT_EQ(FakeWindow::SelectedRow(), 1);
    Outside::PutIni(SettingsFile(L"Slaps.ini"), L"Messages", L"0", L"go away");
    Outside::PutIni(SettingsFile(L"Slaps.ini"), L"Messages", L"1", L"50% & more");
    Open();
    FakeWindow::RightClickRow(0);
    EXPECT_EQ(FakeWindow::LastMenu()[0], L"Slap Player > go away");
    EXPECT_EQ(FakeWindow::LastMenu()[1], L"Slap Player > 50% & more");
    EXPECT_EQ(FakeWindow::LastMenu().size(), PlayerEntries.size() + 2);
    for (const int List : {ID_lstBannedNames, ID_lstBannedIps}) {
        FakeWindow::RightClick(List);
        EXPECT_EQ(FakeWindow::LastMenu(), Lines{L"Import Ban List > Merrows Server Manager - v3.0.0"});
    }
    // With players, neither the header nor the space below them has a menu.
    const Lines Before = FakeWindow::LastMenu();
    FakeWindow::RightClickRow(-1);
    EXPECT_EQ(FakeWindow::LastMenu(), Before);
}

// The rest of what an action does is its own tests' affair.
TEST_F(PlayerList, EachEntryDoesItsWorkOnTheChosenPlayer) {
    const TextView Ask = L"AskText Ban Player: Rita Enter a reason why you have banned this player!";
    const TextView Banned = L"MSG 3 Rita has been banned by the Server Admin!";
    const struct {
        int Entry;
        Lines Answers;
        TextView Last;
        std::size_t Effects = 1;
    } Table[] = {
        {ID_mnuPunt, {}, L"MSG 3 Rita has been punted by the Server Admin!", 2},
        {ID_mnuBan1, {}, Ask},
        {ID_mnuBan1, {L"   "}, Ask},
        {ID_mnuBan1, {L" aimbot "}, Banned, 6},
        {ID_mnuBan2, {}, Banned, 5},
        {ID_mnuKill, {}, L"Box Success Player Killed.", 3},
        {ID_mnuDisarm, {}, L"Box Success Player Disarmed.", 3},
        {ID_mnuRearm, {}, L"Box Failed! The selected player is already armed!"},
        {ID_mnuSwitch, {}, L"WriteLong 1"},
        {ID_mnuKillPerm, {}, L"", 0},
        {ID_mnuDisarmPerm, {}, L"", 0},
    };
    for (const auto& Row : Table) {
        Game.Leave(3);
        Game.Leave(12);
        Outside::RemoveAll(L"C:\\Host\\profiles\\Server1\\settings");
        Outside::PutFolder(L"C:\\Host\\profiles\\Server1\\settings");
        JoinBobAndRita();
        Outside::TextAnswers = Row.Answers;
        const long Turns = FakeWindow::HourglassTurns();
        FakeWindow::ChooseForRow(1, Row.Entry);
        ASSERT_EQ(Outside::Journal.size(), Row.Effects) << Row.Entry;
        EXPECT_EQ(Row.Effects > 0 ? Outside::Journal.back() : L"", Row.Last);
        EXPECT_EQ(Outside::Recorded(L"WriteIniKey [Players] Rita[1]=2024-05-06 7:08:09[-] aimbot ").size(),
                  Row.Effects == 6 ? 1u : 0u);
        EXPECT_GT(FakeWindow::HourglassTurns(), Turns);
        EXPECT_FALSE(FakeWindow::HourglassIsShown());
        EXPECT_EQ(FakeWindow::Rows().size(), Game.World.Players[12].Present ? 2u : 1u)
            << "refreshed after a punt";
    }
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), Lines{L"[1] Rita"}) << "shown at once, and once";
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps), Lines{L"10.0.0.9"});
    EXPECT_TRUE(mdlVNT::KillPermList(TestProfile).Contains(L"Rita"));
    EXPECT_TRUE(mdlVNT::DisarmPermList(TestProfile).Contains(L"Rita"));
    EXPECT_TRUE(Outside::Reports.empty());
    FakeWindow::ChooseForRow(1, ID_mnuKillPerm);
    EXPECT_EQ(
        Outside::Reports,
        Lines{L"mnuKillPerm: 457 This key is already associated with an element of this collection [Rita]"});
}

TEST_F(PlayerList, SwitchingWaitsForAGame) {
    JoinBobAndRita();
    Simulation::SetGameState(Game.World, 0);
    FakeWindow::ChooseForRow(1, ID_mnuSwitch);
    FakeWindow::ChooseForRow(1, ID_mnuSwitch);
    EXPECT_EQ(mdlVNT::SwitchQueue(TestProfile).Count(), 1u);
    EXPECT_EQ(Game.Stats(12, Layout::Statistics::Team), 2);
    Simulation::SetGameState(Game.World, 1);
    FakeWindow::Tick(ID_tmrVN + TestProfile);
    EXPECT_EQ(Game.Stats(12, Layout::Statistics::Team), 1);
    // A row without a team colour is left alone.
    Simulation::ChangeTeam(Game.World, 12, 5);
    Refresh();
    Outside::Journal.clear();
    FakeWindow::ChooseForRow(1, ID_mnuSwitch);
    EXPECT_TRUE(Outside::Journal.empty());
}

TEST_F(PlayerList, WithoutAGameNobodyIsAskedForAReason) {
    JoinBobAndRita();
    for (const int State : {0, 1}) {
        Simulation::SetGameState(Game.World, State);
        for (const int Entry : {ID_mnuPunt, ID_mnuBan1, ID_mnuBan2}) {
            Outside::Journal.clear();
            FakeWindow::ChooseForRow(1, Entry);
            EXPECT_EQ(Outside::Journal, Lines{L"Box Failed! There is no game running!"}) << Entry;
        }
    }
}

TEST_F(PlayerList, AClanTagThatNoFileHoldsIsBannedAsAPartOrByItsAddressIfThatIsWanted) {
    const std::wstring Question =
        L"\"[ABC]Eve\" cannot be stored as it is. Ban everybody whose name contains "
        L"\"ABC]Eve\" instead?";
    const std::wstring ByName = L"Everybody is banned whose name contains \"ABC]Eve\".";
    struct Row {
        const char* Address;
        std::vector<bool> Answers; // none: Cancel
        Lines Names, Ips;
        std::wstring Summary;
    };
    const Row Table[] = {
        {"10.0.0.5",
         {true},
         {L"[2] ABC]Eve"},
         {L"10.0.0.5"},
         ByName + L"\r\nThe address 10.0.0.5 is banned."},
        {"10.0.0.5", {false}, {}, {L"10.0.0.5"}, L"The address 10.0.0.5 is banned."},
        {"10.0.0.5", {}, {}, {}, {}},
        {"0.0.0.0", {true}, {L"[2] ABC]Eve"}, {}, ByName},
        {"0.0.0.0", {false}, {}, {}, {}},
    };
    for (const Row& Case : Table) {
        Outside::RemoveAll(L"C:\\Host\\profiles\\Server1\\settings");
        FakeWindow::Reset();
        Game.Leave(5);
        Game.Join(5, "[ABC]Eve", Case.Address);
        Open();
        Outside::YesNoAnswers = Case.Answers;
        FakeWindow::ChooseForRow(0, ID_mnuBan2);
        const bool HasAddress = std::string_view(Case.Address) != "0.0.0.0";
        Lines Expected{(HasAddress ? L"AskCancel" : L"AskNo") + (L" Ban Player: [ABC]Eve " + Question) +
                       (HasAddress ? L"\r\n\r\nNo bans only the address 10.0.0.5." : L"")};
        if (!Case.Summary.empty()) Expected.push_back(L"Box Success " + Case.Summary);
        EXPECT_EQ(Boxes(), Expected);
        EXPECT_EQ(Commands(), Case.Summary.empty() ? Lines{} : Lines{L"punt 05"});
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps), Case.Ips);
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), Case.Names);
    }
    EXPECT_EQ(Outside::Reports, Lines());
}

TEST_F(PlayerList, APartThatManyHaveIsAskedAbout) {
    JoinBobAndRita();
    Game.Join(4, "Bobby");
    Refresh();
    for (const auto& [Part, Answer, Asked] : {std::tuple<TextView, bool, bool>{L"Rit", false, false},
                                              {L"Bob", false, true},
                                              {L"Bob", true, true}}) {
        Outside::Journal.clear();
        Outside::YesNoAnswers = {Answer};
        FakeWindow::Type(ID_txtBannedName, Part);
        FakeWindow::Click(ID_optBanned + 1);
        FakeWindow::Click(ID_cmdAddName);
        EXPECT_EQ(Boxes().front() ==
                      L"AskNo Add Name \"Bob\" is part of the names of 2 players who are here now. "
                      L"Ban everybody whose name contains it?",
                  Asked);
        EXPECT_EQ(FakeWindow::Text(ID_txtBannedName).empty(), Answer || !Asked);
    }
}

// The rows stay as they were, but nobody counts the teams of a server that is gone.
TEST_F(PlayerList, AServerThatCannotBeReadHasNoTeams) {
    JoinBobAndRita();
    EXPECT_EQ(FakeWindow::Text(ID_lblAsOf), L"As of 7:08:09");
    mdlVNT::MemoryMap.Reset();
    Outside::Clock.Hour = 9;
    Refresh();
    EXPECT_EQ(FakeWindow::Rows().size(), 2u);
    EXPECT_EQ(FakeWindow::Text(ID_lblTeams), L"");
    EXPECT_EQ(FakeWindow::Text(ID_lblAsOf), L"No answer since 7:08:09");
}

} // namespace
