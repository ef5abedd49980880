// An action of the menu hits the player who was chosen, whatever happens in the meantime.
#include <random>

#include "tests/native/window_fixture.h"

namespace {

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

TEST_F(PlayerList, AnAddressThatIsNotKnownYetProtectsNobody) {
    for (const auto& [Chosen, Now] : {std::pair("0.0.0.0", "10.0.0.9"), std::pair("10.0.0.9", "0.0.0.0")}) {
        Game.Leave(12);
        Game.Join(12, "Rita", Chosen);
        Refresh();
        Outside::Journal.clear();
        FakeWindow::WhileNextMenuIsOpen = [&, Address = Now] {
            Game.Leave(12);
            Game.Join(12, "Rita", Address);
        };
        FakeWindow::ChooseForRow(0, ID_mnuPunt);
        EXPECT_EQ(Commands(), Lines{L"punt 12"});
        EXPECT_EQ(Boxes(), Lines());
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
