// The player table in its four modes.
#include <gtest/gtest.h>

#include "game/mdlVNT.h"
#include "game/player_table.h"
#include "sandbox/game/records.h"
#include "tests/fakes/server.h"

namespace {

// Entry Number of the player list as the game keeps it, written by hand.
void PutEntry(Server& Game, int Number, TextView Name, int Team, int Slot) {
    const std::uint32_t Entry = Simulation::EntryAt(Game.World, Number);
    Simulation::WriteText(Game.World.Memory, Entry, std::string(Name.begin(), Name.end()),
                          Layout::Entry::NameSize);
    Simulation::WriteByte(Game.World.Memory, Entry + Layout::Entry::Team, static_cast<std::uint8_t>(Team));
    Simulation::WriteByte(Game.World.Memory, Entry + Layout::Entry::Slot, static_cast<std::uint8_t>(Slot));
}

Lines Present(const PlayerTable& Players) {
    Lines Found;
    for (std::size_t Slot = 0; Slot < Players.BySlot.size(); ++Slot)
        if (!Players.BySlot[Slot].empty())
            Found.push_back(std::to_wstring(Slot) + L"=" + Players.BySlot[Slot]);
    return Found;
}

TEST(PlayerTable, ModesOfBothBuilds) {
    for (const auto Build : {Layout::Build::Standard, Layout::Build::Affiliate}) {
        Server Game({.Build = Build});
        Game.Join(1, "Alice", "192.168.0.1", 1, 33);
        Game.Join(7, "Bob|x", "10.0.0.7", 2, 120);
        Game.Join(9, "  ", "1.2.3.4", 1, 5);
        const PlayerTable Names = GetPlayerList(TestProfile, L"ARRAY");
        EXPECT_EQ(Names.BySlot.size(), 17u);
        EXPECT_EQ(Present(Names), (Lines{L"1=Alice", L"7=Bob|x", L"9=PUNT_PLAYER"}));
        EXPECT_EQ(Present(GetPlayerList(TestProfile, L"IPARRAY")),
                  (Lines{L"1=192.168.0.1", L"7=10.0.0.7", L"9=1.2.3.4"}));
        EXPECT_EQ(Present(GetPlayerList(TestProfile, L"REMOTE")),
                  (Lines{L"1=1|QWxpY2U=|1|192.168.0.1|33", L"7=7|Qm9ifHg=|2|10.0.0.7|120",
                         L"9=9|ICA=|1|1.2.3.4|5"}));
        EXPECT_TRUE(GetPlayerList(TestProfile, L"array").BySlot.empty());
        EXPECT_TRUE(Outside::Reports.empty());
    }
}

TEST(PlayerTable, WhoIsListed) {
    Server Game;
    const std::tuple<TextView, int, int> Entries[] = {
        {L"First", 1, 0},                     // a leading slot 0
        {L"Two", 1, 2},    {L"Again", 1, 2},  // one slot twice
        {L"Free", 0, 3},                      // no team: no player
        {L"Host", 1, 4},   {L"host", 1, 5},   // the server's own, and somebody of that name
        {L"Far", 1, 40},                      // a slot above MaxPlayers
        {L"Zero", 2, 0},                      // slot 0 behind others
        {L"Last", 2, 16},  {L"Wrong", 1, 51}, // ends the scan
        {L"Behind", 1, 10}};
    int Number = 0;
    for (const auto& [Name, Team, Slot] : Entries) PutEntry(Game, Number++, Name, Team, Slot);
    EXPECT_EQ(Present(GetPlayerList(TestProfile, L"ARRAY")),
              (Lines{L"0=Zero", L"2=Two", L"5=host", L"16=Last"}));
    EXPECT_EQ(GetPlayerList(TestProfile, L"IPARRAY").BySlot[0], L"0.0.0.0");
}

TEST(PlayerTable, RowsCountersAndExtrasOfAList) {
    Server Game;
    Game.Join(1, "Alice", "192.168.0.1", 1, 33);
    Game.Join(7, "Bob", "10.0.0.7", 2, 120);
    Game.Join(8, "Carol", "10.0.0.8", 1, 9);
    PutEntry(Game, 0, L"Nobody", 1, 9);    // in no statistics record
    for (int Read = 0; Read < 2; ++Read) { // counted anew each time
        const PlayerTable Table = GetPlayerList(TestProfile, L"LIST");
        ASSERT_EQ(Table.Rows.size(), 4u);
        EXPECT_EQ(Table.Rows[0].Ping + Table.Rows[3].Ping, L"09");
        EXPECT_EQ(ToText(Table.Rows[2].Slot) + Table.Rows[2].Ip, L"710.0.0.7");
        EXPECT_EQ(Table.Summary, L"Blue Team: 3, Red Team: 1");
    }
    EXPECT_EQ(mdlVNT::BlueCount, 3);
    EXPECT_EQ(mdlVNT::RedCount, 1);
    EXPECT_EQ(mdlVNT::LifeStates(TestProfile).Count(), 3u);
    GetPlayerList(TestProfile, L"ARRAY"); // counts nobody
    EXPECT_EQ(mdlVNT::BlueCount + mdlVNT::RedCount, 0);
    Game.SetWord(Game.Map().MaxPlayers, 0);
    EXPECT_EQ(GetPlayerList(TestProfile, L"ARRAY").BySlot.size(), 1u);
    // Without a game state to read nothing has begun, and an older content stays what it is.
    mdlVNT::BlueCount = 5;
    Outside::DetachAll();
    const PlayerTable Gone = GetPlayerList(TestProfile, L"LIST");
    EXPECT_FALSE(Gone.Begun || Gone.Complete);
    EXPECT_EQ(mdlVNT::BlueCount, 5);
}

TEST(PlayerTable, ExtrasByNameAndSlot) {
    Server Game({.Dedicated = true});
    Game.Join(1, "Alice");
    Game.Join(2, "Bob");
    Game.SetStats(2, Layout::Statistics::Armed, 0);
    GetPlayerExtras(TestProfile, 16, 1);
    EXPECT_EQ(mdlVNT::LifeStates(TestProfile).Count(), 2u); // not the server's own record
    EXPECT_EQ(mdlVNT::LifeStates(TestProfile).Item(L"Alice_1"), Game.Life(1));
    EXPECT_EQ(mdlVNT::ArmedFlags(TestProfile).Item(L"Bob_2"), 0);
    // Again, from the beginning; two records of one name and slot keep the first value.
    Game.SetStats(2, Layout::Statistics::Slot, 1);
    Simulation::WriteText(Game.World.Memory, Simulation::RecordAt(Game.World, 2) + Layout::Statistics::Name,
                          "Alice", 16);
    GetPlayerExtras(TestProfile, 16, 1);
    EXPECT_EQ(mdlVNT::ArmedFlags(TestProfile).Count(), 1u);
    EXPECT_EQ(mdlVNT::ArmedFlags(TestProfile).Item(L"Alice_1"), 1);
    EXPECT_TRUE(Outside::Reports.empty());
}

TEST(PlayerTable, HostCallsGrowWithTheEntriesAlone) {
    // Calls for each entry, pings and extras included; a few more read the addresses once.
    const std::pair<TextView, long> Table[] = {{L"LIST", 16}, {L"ARRAY", 8}, {L"IPARRAY", 8}, {L"REMOTE", 8}};
    for (const auto& [Mode, Most] : Table) {
        for (const int Players : {10, 50}) {
            Server Game({.MaxPlayers = Players});
            for (int Slot = 1; Slot <= Players; ++Slot) Game.Join(Slot, "Player" + std::to_string(Slot));
            Outside::Calls = 0;
            EXPECT_TRUE(GetPlayerList(TestProfile, Mode).Complete);
            EXPECT_LE(Outside::Calls, Most * Players + 16);
        }
    }
}

TEST(PlayerTable, DamagedMemoryEndsSoonAndIsReported) {
    using Map = Layout::MemoryMap;
    const std::wstring Overflow = L"GetPlayerList: 6 Overflow";
    const std::wstring Unreadable = L"GetPlayerList: 1299 The process could not be read.";
    const std::tuple<std::uint32_t Map::*, Long, std::wstring> Table[] = {
        {&Map::MaxPlayers, 1025, Overflow},       {&Map::MaxPlayers, -1, Overflow},
        {&Map::MaxPlayers, 2147483647, Overflow}, {&Map::PlayerList, 0, Unreadable},
        {&Map::PlayerList, -1, Unreadable},       {&Map::PlyrStats, 0x7FFFFFFF, Unreadable}};
    for (const auto& [Word, Value, Report] : Table) {
        Server Game;
        Game.Join(1, "Alice");
        Game.SetWord(Game.Map().*Word, Value);
        for (const TextView Mode : {L"ARRAY", L"REMOTE", L"LIST"}) {
            // Names alone do not need the statistics.
            if (Mode == L"ARRAY" && Word == &Map::PlyrStats) continue;
            Outside::Reports.clear();
            EXPECT_FALSE(GetPlayerList(TestProfile, Mode).Complete);
            EXPECT_EQ(Outside::Reports.at(0), Report);
        }
    }
}

} // namespace
