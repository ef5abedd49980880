// One tick of the sweep: given memory, files and settings, what reaches the game.
#include <gtest/gtest.h>

#include <algorithm>

#include "enforcement/permanent_lists.h"
#include "enforcement/sweep.h"
#include "game/mdlVNT.h"
#include "plugin/lifecycle.h"
#include "tests/fakes/server.h"

namespace {

constexpr TextView Everybody[] = {L"Alice", L"xbobx", L"BOB", L"Carol"};

// Slots 1 to 4: Alice 10.0.0.1, xbobx 10.0.0.2, BOB 10.1.0.3, Carol 192.168.5.4.
void JoinAll(Server& Game) {
    Game.Join(1, "Alice", "10.0.0.1");
    Game.Join(2, "xbobx", "10.0.0.2");
    Game.Join(3, "BOB", "10.1.0.3");
    Game.Join(4, "Carol", "192.168.5.4");
}

// How many calls to the host one tick makes with all of them on and Alice banned.
long CallsOfATick() {
    Server Measured;
    JoinAll(Measured);
    BanName(L"Alice[1]");
    long Calls = 0;
    Outside::BeforeCall = [&](TextView) { ++Calls; };
    tmrVN_Timer(TestProfile);
    Outside::BeforeCall = nullptr;
    return Calls;
}

struct BanCase {
    const char* What;
    Lines Names;
    Lines Ips;
    Lines CommandLine; // the commands under each method
    Lines Kernel;
};

const BanCase BanCases[] = {
    {"nobody is banned", {}, {}, {}, {}},
    {"the first line of a section counts", {L"Alice[1]"}, {}, {L"punt 01"}, {L"punt 01"}},
    {"whole names compare whole; the INI look-up ignores case",
     {L"Ali[1]", L"bob[1]", L"Carol[1]"},
     {},
     {L"punt 03", L"punt 04"},
     {L"punt 03", L"punt 04"}},
    {"parts compare with regard to case", {L"bob[2]"}, {}, {L"punt 02"}, {L"punt 02"}},
    {"every matching part punts again",
     {L"bob[2]", L"x[2]", L"obx[2]"},
     {},
     {L"punt 02", L"punt 02", L"punt 02"},
     {L"punt 02", L"punt 02", L"punt 02"}},
    {"a part without text bans nobody", {L"[2]"}, {}, {}, {}},
    {"an exact address", {}, {L"10.0.0.2"}, {L"punt 02"}, {}},
    {"ranges of each length",
     {},
     {L"192.*", L"10.1.*", L"10.0.0.*"},
     {L"punt 01", L"punt 02", L"punt 03", L"punt 04"},
     {}},
    {"address, range and name punt thrice, in this order of players",
     {L"BOB[1]", L"Alice[1]"},
     {L"10.1.0.3", L"10.1.*"},
     {L"punt 01", L"punt 03", L"punt 03", L"punt 03"},
     {L"punt 01", L"punt 03"}},
    {"a lone star bans nobody", {}, {L"*"}, {}, {}},
};

TEST(Sweep, BansUnderBothMethods) {
    for (const BanCase& Case : BanCases) {
        for (const bool Kernel : {false, true}) {
            Server Game;
            JoinAll(Game);
            for (const std::wstring& Key : Case.Names) BanName(Key);
            for (const std::wstring& Pattern : Case.Ips) BanIp(Pattern);
            Outside::PutIni(PlayersIni, L"BanMethod", L"Server1", Kernel ? L"1" : L"0");
            tmrVN_Timer(TestProfile);
            EXPECT_EQ(Commands(), Kernel ? Case.Kernel : Case.CommandLine)
                << Case.What << (Kernel ? " (kernel)" : "");
            EXPECT_TRUE(Outside::Reports.empty()) << Case.What;
            EXPECT_TRUE(Outside::Recorded(L"MSG").empty()); // bans are quiet
        }
    }
}

TEST(Sweep, TheKernelMethodIsChosenByExactlyOne) {
    for (const TextView Value : {L"0", L"", L"2", L"01", L"True", L"1.0"}) {
        Server Game;
        JoinAll(Game);
        BanIp(L"10.0.0.2");
        Outside::PutIni(PlayersIni, L"BanMethod", L"Server1", Value);
        tmrVN_Timer(TestProfile);
        EXPECT_EQ(Commands(), Lines{L"punt 02"});
    }
}

TEST(Sweep, NamelessPlayersArePuntedAndGarbagePunishesNobody) {
    Server Game;
    Game.Join(1, "Alice", "10.0.0.1");
    Game.Join(2, "  ", "10.0.0.2");
    Game.Join(3, "Mallory", "xx0B0C0D");
    tmrVN_Timer(TestProfile);
    EXPECT_EQ(Commands(), Lines{L"punt 02"});
    EXPECT_EQ(Outside::Reports, Lines{L"ConvertIP: 13 Type mismatch"});
    EXPECT_FALSE(Game.World.Players[2].Present);
    // The marker is a name like any other to the checks before it.
    Game.Join(2, "  ", "10.0.0.2");
    BanName(L"PUNT_PLAYER[1]");
    Outside::Journal.clear();
    tmrVN_Timer(TestProfile);
    EXPECT_EQ(Commands(), (Lines{L"punt 02", L"punt 02"}));
}

TEST(Sweep, BetweenGamesOnlyQueuedSwitchesRun) {
    Server Game({.State = 1});
    JoinAll(Game);
    BanName(L"Alice[1]");
    mdlVNT::KillPermList(TestProfile).Add(L"Carol", L"Carol");
    tmrVN_Timer(TestProfile);
    EXPECT_TRUE(Outside::Journal.empty());
    mdlVNT::SwitchQueue(TestProfile).Add(L"Carol", L"Carol");
    mdlVNT::SwitchQueue(TestProfile).Add(L"Gone", L"Gone");
    tmrVN_Timer(TestProfile);
    EXPECT_EQ(Outside::Journal, Lines{L"WriteLong 2"});
    EXPECT_EQ(Game.Stats(4, Layout::Statistics::Team), 2);
    EXPECT_EQ(mdlVNT::SwitchQueue(TestProfile).Count(), 0u);
    EXPECT_EQ(mdlVNT::KillPermList(TestProfile).Count(), 1u);
}

TEST(Sweep, PermanentListsActOnEveryTickAndEndWithTheStay) {
    Server Game;
    JoinAll(Game);
    mdlVNT::KillPermList(TestProfile).Add(L"Alice", L"Alice");
    mdlVNT::DisarmPermList(TestProfile).Add(L"Carol", L"Carol");
    mdlVNT::DisarmPermList(TestProfile).Add(L"carol", L"carol");
    tmrVN_Timer(TestProfile);
    EXPECT_EQ(Game.Life(1), 1);
    EXPECT_EQ(Game.Stats(4, Layout::Statistics::Armed), 0);
    EXPECT_FALSE(InDisarmPermList(TestProfile, L"carol")); // nobody of that name is there
    Game.SetLife(1, 2);
    tmrVN_Timer(TestProfile);
    EXPECT_EQ(Game.Life(1), 1);
    Game.Leave(1);
    tmrVN_Timer(TestProfile);
    EXPECT_FALSE(InKillPermList(TestProfile, L"Alice"));
    EXPECT_TRUE(InDisarmPermList(TestProfile, L"Carol"));
    Game.Join(1, "Alice");
    tmrVN_Timer(TestProfile);
    EXPECT_EQ(Game.Life(1), Layout::Entity::Alive);
    EXPECT_TRUE(Outside::Recorded(L"Box").empty());
}

TEST(Sweep, AHalfReadTablePunishesNobodyAndEmptiesNoList) {
    // Whichever outside call it is that fails: most are reads in the middle of the table.
    const long Calls = CallsOfATick();
    for (long At = 1; At <= Calls; ++At) {
        Server Game;
        JoinAll(Game);
        mdlVNT::KillPermList(TestProfile).Add(L"Carol", L"Carol");
        Outside::FailCall(At, Outside::Fault::Failure);
        tmrVN_Timer(TestProfile);
        EXPECT_TRUE(Commands().empty()) << "call " << At;
        EXPECT_TRUE(InKillPermList(TestProfile, L"Carol")) << "call " << At;
        EXPECT_LE(Outside::Reports.size(), 1u) << "call " << At;
    }
}

TEST(Sweep, PatienceWithAServerThatTakesNoCommandsIsMeasuredInTime) {
    struct Row {
        std::int64_t Cost; // of a failed command, milliseconds
        long Tried;
        TextView NotSent;
    };
    for (const auto& [Cost, Tried, NotSent] :
         {Row{250, 2, L" 9 more "}, Row{499, 2, L" 9 more "}, Row{500, 1, L" 10 more "}, Row{40, 11, {}}}) {
        Server Game;
        for (int Slot = 1; Slot <= 10; ++Slot) Game.Join(Slot, "Spammer" + std::to_string(Slot));
        BanName(L"Spam[2]");
        mdlVNT::KillPermList(TestProfile).Add(L"Spammer1", L"Spammer1");
        long Sent = 0;
        bool FailsLater = false;
        Outside::BeforeCall = [&](TextView Name) {
            if (Name == L"AddMsg") {
                ++Sent;
                Outside::Elapsed += Cost;
                Fail(1001, L"The game takes no messages.");
            }
            if (Sent > 0 && FailsLater && Name == L"ReadByte") Fail(1002, L"gone");
        };
        const bool IsHung = !NotSent.empty();
        const auto LeftOut = [&] { return Outside::Reports.back().find(NotSent) != std::wstring::npos; };
        tmrVN_Timer(TestProfile);
        EXPECT_EQ(Sent, Tried) << Cost;
        EXPECT_EQ(Outside::Reports.size(), static_cast<std::size_t>(Tried) + IsHung) << Cost;
        EXPECT_EQ(LeftOut(), true) << Cost;
        EXPECT_EQ(Outside::Reports.back().ends_with(L" more were not tried in this tick."), IsHung);
        // Further ticks try one command each, and the number left out is not lost with a later failure.
        Sent = 0;
        Outside::Reports.clear();
        FailsLater = IsHung;
        tmrVN_Timer(TestProfile);
        EXPECT_EQ(Sent, IsHung ? 1 : 10); // the kill has been done
        EXPECT_EQ(std::ranges::count_if(Outside::Reports,
                                        [](const auto& Report) { return Report.starts_with(L"tmrVN: 68"); }),
                  IsHung ? 1 : 0);
        // Each is shown once for the outage.
        EXPECT_LE(Outside::Recorded(L"ErrorBox").size(), 4u);
        Outside::BeforeCall = nullptr;
        tmrVN_Timer(TestProfile);
        EXPECT_EQ(Commands().size(), 10u); // one that succeeds, and all go on
    }
}

TEST(Sweep, ReportsNameTheAddressUnderCheck) {
    Server Game;
    JoinAll(Game);
    Outside::BeforeCall = [](TextView Name) {
        if (Name == L"GetIniKey") Fail(1004, L"locked");
    };
    tmrVN_Timer(TestProfile);
    EXPECT_EQ(Outside::Reports, Lines{L"tmrVN: 1004 locked [10.0.0.1]"});
    Outside::BeforeCall = nullptr;
    Outside::Reports.clear();
    tmrVN_Timer(99); // no such profile
    EXPECT_EQ(Outside::Reports, Lines{L"tmrVN: 9 Subscript out of range"});
}

TEST(Sweep, AFragmentIsParsedOnceHoweverManyPlayersAreOnAndAWholeNameNever) {
    for (const int Players : {1, 16}) {
        Server Game;
        for (int Slot = 1; Slot <= Players; ++Slot) Game.Join(Slot, "Player" + std::to_string(Slot));
        for (int I = 0; I < 400; ++I) BanName(L"nobody" + std::to_wstring(I) + (I % 2 ? L"[1]" : L"[2]"));
        long Parsed = 0;
        Outside::BeforeCall = [&](TextView Name) { Parsed += Name == L"ParseIniKey"; };
        tmrVN_Timer(TestProfile);
        EXPECT_EQ(Parsed, 200);
    }
}

} // namespace
