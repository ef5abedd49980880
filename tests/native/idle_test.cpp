// The idle punt: who is idle, and after how many ticks.
#include <gtest/gtest.h>

#include <algorithm>

#include "enforcement/sweep.h"
#include "game/mdlVNT.h"
#include "sandbox/game/records.h"
#include "tests/fakes/server.h"

namespace {

void SetIdle(TextView On, TextView Max) {
    Outside::PutIni(PlayersIni, L"IdlePunt", L"Server1", On);
    Outside::PutIni(PlayersIni, L"IdleMax", L"Server1", Max);
}

// The tick, counted from 1, that punts somebody who never moves; 0 when none of the first Most does.
int TickOfPunt(int Most) {
    for (int Tick = 1; Tick <= Most; ++Tick) {
        tmrVN_Timer(TestProfile);
        if (!Commands().empty()) return Tick;
    }
    return 0;
}

TEST(Idle, LimitInMinutes) {
    // The first tick only remembers; each further one counts five seconds.
    const std::pair<TextView, int> Table[] = {{L"1", 13},  {L"2", 25},   {L"1.5", 19}, {L"0", 61},
                                              {L"05", 61}, {L"abc", 61}, {L"", 61},    {L"0.5", 61}};
    for (const auto& [Max, Tick] : Table) {
        Server Game;
        Game.Join(3, "Bob");
        SetIdle(L"1", Max);
        EXPECT_EQ(TickOfPunt(70), Tick) << std::string(Max.begin(), Max.end());
        EXPECT_EQ(Commands(), Lines{L"punt 03"});
        EXPECT_EQ(Outside::Recorded(L"MSG"), Lines{L"MSG 3 Bob has been punted for being idle!"});
    }
}

TEST(Idle, AnnouncedWhateverBecameOfThePunt) {
    Server Game(ServerSettings{.State = 0}); // no game: the punt does nothing
    Game.Join(3, "Bob");
    SetIdle(L"1", L"1");
    EXPECT_EQ(TickOfPunt(13), 0);
    EXPECT_EQ(Outside::Recorded(L"MSG"), Lines{L"MSG 3 Bob has been punted for being idle!"});
}

// Ids 1 and 150 have an entry of the table, 0 and 151 have none.
TEST(Idle, IdsAtTheEndsOfTheTable) {
    for (const int Id : {0, 1, 150, 151}) {
        Server Game;
        Game.Join(3, "Bob");
        SetIdle(L"1", L"1");
        Simulation::WriteByte(Game.World.Memory, Simulation::EntryAt(Game.World, 3) + Layout::Entry::Slot,
                              static_cast<std::uint8_t>(Id));
        tmrVN_Timer(TestProfile);
        const auto& Names = mdlVNT::IdleTables(TestProfile).IdleName;
        EXPECT_EQ(std::count(Names.begin(), Names.end(), L"Bob"), Id == 1 || Id == 150) << Id;
        EXPECT_TRUE(Outside::Reports.empty());
    }
}

TEST(Idle, OnlyWhenSwitchedOnWithExactlyOne) {
    Server Game;
    Game.Join(3, "Bob");
    for (const TextView On : {L"0", L"", L"True", L"2"}) {
        SetIdle(On, L"1");
        EXPECT_EQ(TickOfPunt(20), 0);
    }
}

TEST(Idle, EachActivityValueAndANewNameStartAgain) {
    for (int Which = 0; Which < 5; ++Which) {
        Server Game;
        Game.Join(3, "Bob");
        SetIdle(L"1", L"1");
        EXPECT_EQ(TickOfPunt(12), 0);
        if (Which < 4) { // each move changes the next of the four values
            for (int I = 0; I <= Which; ++I) Simulation::Move(Game.World, 3);
        } else {
            Game.Leave(3);
            Game.Join(3, "Eve");
        }
        EXPECT_EQ(TickOfPunt(12), 0) << Which;
        EXPECT_EQ(TickOfPunt(1), 1) << Which;
    }
}

TEST(Idle, CountersFreezeWhileSwitchedOffAndClearWhenTheRecordIsFree) {
    Server Game;
    Game.Join(3, "Bob");
    SetIdle(L"1", L"1");
    EXPECT_EQ(TickOfPunt(10), 0);
    SetIdle(L"0", L"1");
    EXPECT_EQ(TickOfPunt(50), 0);
    EXPECT_EQ(mdlVNT::IdleTables(TestProfile).IdleSeconds[3], 45);
    SetIdle(L"1", L"1");
    EXPECT_EQ(TickOfPunt(5), 3);
    // The seconds stay after a punt, and go with the player.
    EXPECT_EQ(mdlVNT::IdleTables(TestProfile).IdleSeconds[3], 60);
    tmrVN_Timer(TestProfile);
    EXPECT_TRUE(mdlVNT::IdleTables(TestProfile).IdleName[3].empty());
    EXPECT_EQ(mdlVNT::IdleTables(TestProfile).IdleSeconds[3], 0);
}

} // namespace
