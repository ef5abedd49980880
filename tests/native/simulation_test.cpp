// The simulated game, which every other test of the plug-in trusts: its memory is what an administration
// tool expects, and what comes from outside has its effect.
#include "sandbox/game/scenario.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>

#include "tests/fakes/private_memory.h"

namespace {

using namespace Simulation;
using Layout::Build;

struct World {
    PrivateMemory Memory;
    std::vector<JournalEntry> Lines;
    Game Play;

    explicit World(Settings Setup = {}) {
        Play.Setup = Setup;
        Play.Memory = Memory.Memory;
        Play.Journal = [this](const JournalEntry& Entry) { Lines.push_back(Entry); };
        Start(Play);
    }
    std::uint32_t Pointer(std::uint32_t Address) const {
        return static_cast<std::uint32_t>(ReadLong(Memory.Memory, Address));
    }
    std::int32_t Long(std::uint32_t Address) const { return ReadLong(Memory.Memory, Address); }
};

// The numbers stand here a second time, as an administration tool has them.
TEST(Simulation, KeepsAPlayerWhereToolsLookInBothBuilds) {
    struct Row {
        Build Which;
        std::uint32_t State, Type, Players, Dedicated, Port, List, Statistics, Clients;
    };
    for (const Row& At : {Row{Build::Standard, 0x009E4748, 0x00A0342C, 0x00A03430, 0x00A34484, 0x00A34540,
                              0x0096C290, 0x009ED600, 0x00ECE248},
                          Row{Build::Affiliate, 0x009DB300, 0x00A2B85C, 0x00A2B860, 0x00A2B864, 0x00A2B920,
                              0x0070CA40, 0x009E49B8, 0x00F79448}}) {
        World Game({.Build = At.Which, .MaxPlayers = 20, .GameType = 3, .Port = 4711, .State = 5});
        const std::string Name = "B\xF6"
                                 "b";
        ASSERT_TRUE(Join(Game.Play, 20, Name, "10.0.0.7", 2, 45));
        const auto& Memory = Game.Memory.Memory;
        const std::uint32_t Entry = Game.Pointer(At.List) + 0xC8 + 20 * 0x29C;
        const std::uint32_t Record = Game.Pointer(At.Statistics) + 20 * 0xAF33C;
        const std::uint32_t Client =
            Game.Pointer(At.Clients) + 0x88 + ReadByte(Memory, Record + 0x30) * 0xBCU;
        const std::pair<std::uint32_t, int> Words[] = {
            {At.State, 5},         {At.Type, 3},
            {At.Players, 20},      {At.Dedicated, 1},
            {At.Port, 4711},       {Record + 0x2C, 20},
            {Record + 0xB0, 2},    {Record + 0xADB60, 45},
            {Record + 0xADE28, 1}, {Game.Pointer(Record + 0x38) + 0xE0, 2}};
        for (const auto& [Address, Value] : Words) EXPECT_EQ(Game.Long(Address), Value) << Address;
        EXPECT_EQ(ReadText(Memory, Entry), Name);
        EXPECT_EQ(ReadByte(Memory, Entry + 0x2E), 2);
        EXPECT_EQ(ReadByte(Memory, Entry + 0x5C), 20);
        EXPECT_EQ(ReadText(Memory, Record + 0x3C), Name);
        EXPECT_EQ(ReadText(Memory, Client), "0700000A");
        ASSERT_TRUE(Leave(Game.Play, 20));
        for (const std::uint32_t Freed : {Entry, Entry + 0x2E, Record + 0x3C})
            EXPECT_EQ(ReadByte(Memory, Freed), 0);
    }
}

TEST(Scenario, RandomPlayersDependOnTheSeedAlone) {
    std::set<std::string> Different;
    for (const std::uint32_t Seed : {1u, 2u, 3u, 4u, 1u}) {
        World Game({.MaxPlayers = 50});
        Playback Script{ParseScenario("random players=50 from=1000 to=60000", Seed)};
        Play(Game.Play, Script, 61000);
        std::string Result;
        for (const auto& Line : Game.Lines) Result += FormatEntry(Line) + '\n';
        EXPECT_EQ(Result.find("\trefused\t"), std::string::npos) << "seed " << Seed;
        Different.insert(Result);
    }
    EXPECT_EQ(Different.size(), 4U);
}

TEST(Journal, LinesCarryAnyByte) {
    std::string All;
    for (int Byte = 0; Byte < 256; ++Byte) All += static_cast<char>(Byte);
    const JournalEntry Entry{.Time = 4294967295, .Kind = "join", .Slot = 50, .Name = All, .Detail = "\\x41"};
    const std::string Line = FormatEntry(Entry);
    EXPECT_EQ(Line.find_first_of("\r\n"), std::string::npos);
    EXPECT_EQ(ParseEntry(Line + "\r\n"), Entry);
    for (const char* Bad : {"", "1\tjoin\t3\tBob\t", "x\tjoin\t3\tBob\t\t", "1\tjoin\t3x\tBob\t\t",
                            "1\tjoin\t3\t\\x4\t\t", "1\tjoin\t3\t\t\t\t"})
        EXPECT_THROW(ParseEntry(Bad), std::invalid_argument) << Bad;
}

} // namespace
