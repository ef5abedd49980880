// The player list and its menu: what they show, and whom an entry acts on.
#include <random>

#include "tests/native/window_fixture.h"

namespace {

// Opened for an empty server.
class PlayerList : public Window {
protected:
    void SetUp() override {
        Window::SetUp();
        Open();
    }
    // The players as the administrator sees them after a refresh.
    void Refresh() { FakeWindow::ChooseForRow(FakeWindow::Rows().empty() ? -1 : 0, ID_mnuRefresh); }
    void JoinBobAndRita() {
        Game.Join(3, "Bob", "10.0.0.7", 1, 50);
        Game.Join(12, "Rita", "10.0.0.9", 2, 140);
        Refresh();
        Outside::Journal.clear();
    }
};

// --- The player list

TEST_F(PlayerList, ShowsThePlayersAndCountsTheTeams) {
    JoinBobAndRita();
    EXPECT_EQ(FakeWindow::Rows(), (Lines{L"03|Bob|10.0.0.7|50|1", L"12|Rita|10.0.0.9|140|2"}));
    EXPECT_EQ(FakeWindow::Text(ID_lblTeams), L"Blue Team: 1, Red Team: 1");
}

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

const Lines PlayerEntries{L"Punt Player",
                          L"Ban Player (With Reason)",
                          L"Ban Player (Without Reason)",
                          L"-",
                          L"Switch Teams",
                          L"-",
                          L"Kill Player (Once)",
                          L"Disarm Player (Once)",
                          L"Kill Player (Permanently)",
                          L"Disarm Player (Permanently)",
                          L"Rearm Player",
                          L"-",
                          L"Refresh Player List"};

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

TEST_F(PlayerList, EachEntryDoesItsWorkOnTheChosenPlayer) {
    const std::wstring Ask = L"AskText Ban Player: Rita Enter a reason why you have banned this player!";
    const struct {
        int Entry;
        Lines Answers;
        Lines Journal;
    } Table[] = {
        {ID_mnuPunt, {}, {L"CMD 1 punt 12", L"MSG 3 Rita has been punted by the Server Admin!"}},
        {ID_mnuBan1, {}, {Ask}},
        {ID_mnuBan1, {L"   "}, {Ask}},
        {ID_mnuBan1,
         {L" aimbot "},
         {Ask, L"WriteIniKey [Rita] 0=10.0.0.9",
          L"WriteIniKey [Players] Rita[1]=2024-05-06 7:08:09[-] aimbot ",
          L"WriteIniKey [IpAddresses] 10.0.0.9=2024-05-06 7:08:09", L"CMD 1 punt 12",
          L"MSG 3 Rita has been banned by the Server Admin!"}},
        {ID_mnuBan2,
         {},
         {L"WriteIniKey [Rita] 0=10.0.0.9", L"WriteIniKey [Players] Rita[1]=2024-05-06 7:08:09[-]None",
          L"WriteIniKey [IpAddresses] 10.0.0.9=2024-05-06 7:08:09", L"CMD 1 punt 12",
          L"MSG 3 Rita has been banned by the Server Admin!"}},
        {ID_mnuKill,
         {},
         {L"WriteLong 1", L"MSG 3 Rita has been 'Killed' by the Server Admin!",
          L"Box Success Player Killed."}},
        {ID_mnuDisarm,
         {},
         {L"WriteLong 0", L"MSG 3 Rita has been 'Disarmed' by the Server Admin!",
          L"Box Success Player Disarmed."}},
        {ID_mnuRearm, {}, {L"Box Failed! The selected player is already armed!"}},
        {ID_mnuSwitch, {}, {L"WriteLong 1"}},
        {ID_mnuKillPerm, {}, {}},
        {ID_mnuDisarmPerm, {}, {}},
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
        EXPECT_EQ(Outside::Journal, Row.Journal) << Row.Entry;
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
    EXPECT_EQ(Outside::Reports,
              Lines{L"mnuKillPerm: 457 This key is already associated with an element of this collection"});
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

TEST_F(PlayerList, AClanTagThatNoFileHoldsIsBannedAsAPartOrByItsAddress) {
    const std::wstring Question =
        L"AskNo Ban Player: [ABC]Eve \"[ABC]Eve\" cannot be stored as a whole name. "
        L"Ban everybody whose name contains \"ABC]Eve\" instead?";
    for (const bool Yes : {true, false}) {
        Game.Join(5, "[ABC]Eve", "10.0.0.5");
        Refresh();
        Outside::Journal.clear();
        Outside::YesNoAnswers = {Yes};
        FakeWindow::ChooseForRow(0, ID_mnuBan2);
        EXPECT_EQ(Boxes().front(), Question);
        EXPECT_EQ(Commands(), Lines{L"punt 05"});
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps), Lines{L"10.0.0.5"});
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), Lines{L"[2] ABC]Eve"});
        EXPECT_EQ(Boxes().size(), Yes ? 1u : 2u) << "on No the box tells that the name is missing";
    }
    EXPECT_EQ(Outside::Reports, Lines());
}

// The rows stay as they were, but nobody counts the teams of a server that is gone.
TEST_F(PlayerList, AServerThatCannotBeReadHasNoTeams) {
    JoinBobAndRita();
    mdlVNT::MemoryMap.Reset();
    Refresh();
    EXPECT_EQ(FakeWindow::Rows().size(), 2u);
    EXPECT_EQ(FakeWindow::Text(ID_lblTeams), L"");
}

// --- The right player

TEST_F(PlayerList, ASlotThatHasChangedHandsIsLeftAlone) {
    const std::wstring Gone = L"Box Failed! The selected player is no longer in this slot!";
    for (const int Entry : {ID_mnuPunt, ID_mnuBan1, ID_mnuBan2}) {
        for (const auto& [Name, Address] :
             {std::pair("Eve", "10.0.0.9"), std::pair("Rita", "10.9.9.9"), std::pair("", "")}) {
            Game.Leave(3);
            Game.Leave(12);
            JoinBobAndRita();
            Outside::TextAnswers = {L"aimbot"};
            const auto TakeOver = [&] {
                Game.Leave(12);
                if (*Address) Game.Join(12, Name, Address, 2);
            };
            FakeWindow::WhileNextMenuIsOpen = [&] {
                if (Entry != ID_mnuBan1) TakeOver();
            };
            Outside::WhileBoxIsOpen = [&] {
                if (Outside::Journal.back().starts_with(L"AskText")) TakeOver();
            };
            FakeWindow::ChooseForRow(1, Entry);
            Outside::WhileBoxIsOpen = nullptr;
            EXPECT_EQ(Outside::Journal.back(), Gone);
            EXPECT_TRUE(Commands().empty());
            for (const TextView File : {L"BannedNames.ini", L"BannedIps.ini", L"BannedReference.ini"})
                EXPECT_EQ(FileOf(File), L"");
            EXPECT_EQ(FakeWindow::Rows().size(), *Address ? 2u : 1u) << "refreshed";
        }
    }
}

TEST_F(PlayerList, TheGridStandsStillWhileAMenuOrTheReasonBoxIsOpen) {
    JoinBobAndRita();
    FakeWindow::Click(ID_chkRefresh);
    const Lines Before = FakeWindow::Rows();
    const auto Shake = [&] {
        Game.Join(1, "Aaron", "10.0.0.1");
        FakeWindow::Tick(ID_tmrRefresh);
        frmVNT::FormReload();
        EXPECT_EQ(FakeWindow::Rows(), Before);
    };
    FakeWindow::WhileNextMenuIsOpen = Shake;
    FakeWindow::RightClickRow(1);
    EXPECT_EQ(FakeWindow::Rows().size(), 3u) << "what was asked for meanwhile is done";
    Game.Leave(1);
    Refresh();
    Outside::WhileBoxIsOpen = Shake;
    FakeWindow::ChooseForRow(1, ID_mnuBan1); // and Cancel
    Outside::WhileBoxIsOpen = nullptr;
    EXPECT_EQ(FakeWindow::Rows().size(), 3u);
}

TEST_F(PlayerList, AMenuOfAProfileThatIsNotShownAnyMoreActsOnNobody) {
    JoinBobAndRita();
    Outside::PutFolder(L"C:\\Host\\profiles\\Server2\\settings");
    FakeWindow::WhileNextMenuIsOpen = [&] { Open(6, L"Server2"); };
    FakeWindow::ChooseForRow(1, ID_mnuKillPerm);
    EXPECT_EQ(mdlVNT::KillPermList(TestProfile).Count() + mdlVNT::KillPermList(6).Count(), 0u);
}

// Who is on the server, by slot.
std::map<int, std::string> Present(const Simulation::Game& World) {
    std::map<int, std::string> Found;
    for (int Slot = 0; Slot < static_cast<int>(World.Players.size()); ++Slot)
        if (const auto& Entry = World.Players[static_cast<std::size_t>(Slot)]; Entry.Present)
            Found[Slot] = Entry.Name + " " + Entry.Address;
    return Found;
}

TEST_F(PlayerList, TenThousandRacesNeverHitAnotherPlayer) {
    std::mt19937 Random(20240506);
    const auto Below = [&](unsigned Limit) { return static_cast<int>(Random() % Limit); };
    const auto Shake = [&] {
        for (int Change = Below(4); Change > 0; --Change) {
            const int Slot = 1 + Below(6);
            Game.Leave(Slot);
            // Few names and addresses, so that a slot is often taken over by somebody very alike.
            if (Below(4) != 0)
                Game.Join(Slot, std::string(1, static_cast<char>('A' + Below(5))),
                          "10.0.0." + std::to_string(Below(5)), 1 + Below(2));
        }
        if (FakeWindow::IntervalOf(ID_tmrRefresh) != 0) FakeWindow::Tick(ID_tmrRefresh);
    };
    Game.SetWord(Game.Map().MaxPlayers, 6); // no more are read than play
    FakeWindow::Click(ID_chkRefresh);
    constexpr int Entries[] = {ID_mnuPunt, ID_mnuBan1, ID_mnuBan2};
    long Punted = 0, Refused = 0, Wrong = 0;
    for (int Race = 0; Race < 10000; ++Race) {
        Outside::WhileBoxIsOpen = nullptr;
        Shake();
        Refresh();
        const Lines Rows = FakeWindow::Rows();
        if (Rows.empty()) continue;
        const int Row = Below(static_cast<unsigned>(Rows.size()));
        const Lines Chosen = Split(Rows[static_cast<std::size_t>(Row)], L"|");
        const int Slot = static_cast<int>(ToWhole(Chosen[0]));
        Outside::Journal.clear();
        std::map<int, std::string> Before;
        const auto ShakeAndLook = [&] {
            Shake();
            Before = Present(Game.World);
        };
        FakeWindow::WhileNextMenuIsOpen = ShakeAndLook;
        Outside::TextAnswers = {L"reason"};
        const int Entry = Entries[Below(3)];
        Outside::WhileBoxIsOpen = [&] {
            if (Outside::Journal.back().starts_with(L"AskText")) ShakeAndLook();
        };
        FakeWindow::ChooseForRow(Row, Entry);
        const std::string Identity = std::string(Chosen[1].begin(), Chosen[1].end()) + " " +
                                     std::string(Chosen[2].begin(), Chosen[2].end());
        for (const auto& [Where, Who] : Before) {
            if (Game.World.Players[static_cast<std::size_t>(Where)].Present) continue;
            ++Punted;
            if (Where != Slot || Who != Identity) ++Wrong;
        }
        for (const std::wstring& Line : Outside::Recorded(L"WriteIniKey [IpAddresses] "))
            if (!Line.starts_with(L"WriteIniKey [IpAddresses] " + Chosen[2] + L"=")) ++Wrong;
        for (const std::wstring& Line : Outside::Recorded(L"WriteIniKey [Players] "))
            if (!Line.starts_with(L"WriteIniKey [Players] " + Chosen[1] + L"[1]=")) ++Wrong;
        Refused += static_cast<long>(Outside::Recorded(L"Box Failed!").size());
    }
    EXPECT_EQ(Wrong, 0);
    EXPECT_GT(Punted, 2000);
    EXPECT_GT(Refused, 1000);
}

} // namespace
