#include "sandbox/game/scenario.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <random>
#include <stdexcept>

namespace Simulation {

namespace {

using Words = std::vector<std::string>;

struct Reader {
    std::vector<Event> Events;
    std::uint32_t LastTime = 0;
    std::mt19937 Random;
};

[[noreturn]] void Complain(const std::string& What) { throw std::runtime_error(What); }

std::uint32_t ToNumber(std::string_view Text, std::string_view What, std::uint32_t Highest = 0x7FFFFFFF) {
    std::uint32_t Value = 0;
    const auto [End, Error] = std::from_chars(Text.data(), Text.data() + Text.size(), Value);
    if (Error != std::errc{} || End != Text.data() + Text.size() || Value > Highest)
        Complain(std::string(What) + " must be a number from 0 to " + std::to_string(Highest) + ", not \"" +
                 std::string(Text) + '"');
    return Value;
}

// One quoted word; At stands on its first quote and afterwards behind its last.
std::string QuotedWord(std::string_view Line, std::size_t& At) {
    std::string Word;
    for (++At; At < Line.size() && Line[At] != '"'; ++At) {
        if (Line[At] != '\\') {
            Word += Line[At];
        } else if (At + 1 < Line.size() && (Line[At + 1] == '"' || Line[At + 1] == '\\')) {
            Word += Line[++At];
        } else {
            Word += Unescaped(Line.substr(At, 4));
            At += 3;
        }
    }
    if (At >= Line.size()) Complain("the closing quote is missing");
    ++At;
    if (Word.find('\0') != std::string::npos) Complain("a text cannot hold \\x00");
    return Word;
}

Words SplitLine(std::string_view Line) {
    constexpr std::string_view Blanks = " \t\r";
    Words Result;
    for (std::size_t At = 0; (At = Line.find_first_not_of(Blanks, At)) != std::string_view::npos;) {
        if (Line[At] == '#') break;
        if (Line[At] == '"') {
            Result.push_back(QuotedWord(Line, At));
        } else {
            const auto End = std::min(Line.find_first_of(Blanks, At), Line.size());
            Result.emplace_back(Line.substr(At, End - At));
            At = End;
        }
    }
    return Result;
}

std::int32_t ToTeam(std::string_view Text) {
    if (Text == "blue") return 1;
    if (Text == "red") return 2;
    return static_cast<std::int32_t>(ToNumber(Text, "the team", 255));
}

std::int32_t ToPing(std::string_view Text) { return static_cast<std::int32_t>(ToNumber(Text, "the ping")); }

// Each takes the words behind time, verb and (where the verb has one) slot.
void ReadJoin(Event& What, const Words& Behind) {
    What.Name = Behind[0];
    What.Address = Behind[1];
    if (Behind.size() > 2) What.Team = ToTeam(Behind[2]);
    What.Number = Behind.size() > 3 ? ToPing(Behind[3]) : 50;
}
void ReadTeam(Event& What, const Words& Behind) { What.Team = ToTeam(Behind[0]); }
void ReadPing(Event& What, const Words& Behind) { What.Number = ToPing(Behind[0]); }
void ReadMove(Event& What, const Words& Behind) {
    if (Behind.empty()) return;
    if (Behind.size() != 2 || Behind[0] != "every")
        Complain("move takes a slot and perhaps \"every\" and milliseconds");
    What.Number = static_cast<std::int32_t>(ToNumber(Behind[1], "the interval"));
    if (What.Number == 0) Complain("the interval must not be 0; say idle");
}
void ReadState(Event& What, const Words& Behind) {
    What.Number = static_cast<std::int32_t>(ToNumber(Behind[0], "the state"));
}
void ReadNothing(Event&, const Words&) {}

struct Verb {
    std::string_view Word;
    Action What;
    bool HasSlot;
    std::size_t Least, Most; // words behind the slot
    void (*Read)(Event&, const Words&);
    std::string_view Usage;
};

constexpr Verb Verbs[] = {
    {"join", Action::Join, true, 2, 4, ReadJoin, "SLOT NAME ADDRESS [TEAM [PING]]"},
    {"leave", Action::Leave, true, 0, 0, ReadNothing, "SLOT"},
    {"team", Action::Team, true, 1, 1, ReadTeam, "SLOT TEAM"},
    {"ping", Action::Ping, true, 1, 1, ReadPing, "SLOT PING"},
    {"idle", Action::Idle, true, 0, 0, ReadNothing, "SLOT"},
    {"move", Action::Move, true, 0, 2, ReadMove, "SLOT [every MILLISECONDS]"},
    {"state", Action::State, false, 1, 1, ReadState, "NUMBER"},
    {"stop", Action::Stop, false, 0, 0, ReadNothing, ""},
};

std::uint32_t ToTime(Reader& Script, std::string_view Text) {
    const bool Relative = Text.starts_with('+');
    if (Relative) Text.remove_prefix(1);
    const std::uint32_t Base = Relative ? Script.LastTime : 0;
    return Script.LastTime = Base + ToNumber(Text, "the time", 0x7FFFFFFF - Base);
}

void ReadEvent(Reader& Script, const Words& Line) {
    Event What{.Time = ToTime(Script, Line[0])};
    if (Line.size() < 2) Complain("a time without an event");
    const auto Found = std::find_if(std::begin(Verbs), std::end(Verbs),
                                    [&](const Verb& Known) { return Known.Word == Line[1]; });
    if (Found == std::end(Verbs)) Complain("unknown event \"" + Line[1] + '"');
    const std::size_t Used = Found->HasSlot ? 3 : 2;
    if (Line.size() < Used + Found->Least || Line.size() > Used + Found->Most)
        Complain("wrong number of words, expected: " + Line[1] + ' ' + std::string(Found->Usage));
    What.What = Found->What;
    if (Found->HasSlot) What.Slot = static_cast<int>(ToNumber(Line[2], "the slot", Layout::LastSlot));
    Found->Read(What, Words(Line.begin() + static_cast<std::ptrdiff_t>(Used), Line.end()));
    Script.Events.push_back(std::move(What));
}

// The value of a word "key=number".
std::uint32_t Assignment(const Words& Line, std::string_view Key, std::uint32_t Highest) {
    for (const auto& Word : Line) {
        const std::string_view Text = Word;
        if (Text.starts_with(Key) && Text.substr(Key.size()).starts_with('='))
            return ToNumber(Text.substr(Key.size() + 1), Key, Highest);
    }
    Complain("wrong words, expected: random players=N from=MILLISECONDS to=MILLISECONDS");
}

// A number from Low to High (excluded when above Low). The engine's output is the same everywhere; the
// library's distributions are not.
std::uint32_t Between(std::mt19937& Random, std::uint32_t Low, std::uint32_t High) {
    const auto Drawn = static_cast<std::uint32_t>(Random());
    return High > Low ? Low + Drawn % (High - Low) : Low;
}

Event RandomJoin(std::mt19937& Random, int Slot, std::uint32_t Time, const char* Prefix) {
    std::string Address = "10";
    for (int Part = 0; Part < 3; ++Part) Address += '.' + std::to_string(Between(Random, 0, 256));
    return {.Time = Time,
            .What = Action::Join,
            .Slot = Slot,
            .Name = Prefix + std::to_string(Slot),
            .Address = std::move(Address),
            .Team = static_cast<std::int32_t>(Between(Random, 1, 3)),
            .Number = static_cast<std::int32_t>(Between(Random, 10, 400))};
}

void ReadRandom(Reader& Script, const Words& Line) {
    const std::uint32_t Players = Assignment(Line, "players", Layout::LastSlot);
    const std::uint32_t From = Assignment(Line, "from", 0x7FFFFFFF), To = Assignment(Line, "to", 0x7FFFFFFF);
    if (Line.size() != 4 || To < From) Complain("random takes players, from and a later to");
    for (int Slot = 1; Slot <= static_cast<int>(Players); ++Slot) {
        const std::uint32_t Joins = Between(Script.Random, From, To);
        Script.Events.push_back(RandomJoin(Script.Random, Slot, Joins, "Player"));
        if (Script.Random() % 2 != 0) continue;
        const std::uint32_t Leaves = Between(Script.Random, Joins, To);
        Script.Events.push_back({.Time = Leaves, .What = Action::Leave, .Slot = Slot});
        if (Script.Random() % 2 != 0) continue;
        const std::uint32_t Again = Between(Script.Random, Leaves, To);
        Script.Events.push_back(RandomJoin(Script.Random, Slot, Again, "Guest"));
    }
}

void ReadLine(Reader& Script, std::string_view Text) {
    const Words Line = SplitLine(Text);
    if (Line.empty()) return;
    if (Line[0] == "random") return ReadRandom(Script, Line);
    ReadEvent(Script, Line);
}

void Perform(Game& World, const Event& What) {
    switch (What.What) {
    case Action::Join:
        Join(World, What.Slot, What.Name, What.Address, static_cast<std::uint8_t>(What.Team), What.Number);
        break;
    case Action::Leave: Leave(World, What.Slot); break;
    case Action::Team: ChangeTeam(World, What.Slot, static_cast<std::uint8_t>(What.Team)); break;
    case Action::Ping: ChangePing(World, What.Slot, What.Number); break;
    case Action::Idle: MoveEvery(World, What.Slot, 0); break;
    case Action::Move:
        if (What.Number == 0) {
            Move(World, What.Slot);
        } else {
            MoveEvery(World, What.Slot, static_cast<std::uint32_t>(What.Number));
        }
        break;
    case Action::State: SetGameState(World, What.Number); break;
    case Action::Stop: Stop(World, "script"); break;
    }
}

} // namespace

std::vector<Event> ParseScenario(std::string_view Text, std::uint32_t Seed) {
    Reader Script;
    Script.Random.seed(Seed);
    for (int Number = 1; !Text.empty(); ++Number) {
        const auto End = std::min(Text.find('\n'), Text.size());
        try {
            ReadLine(Script, Text.substr(0, End));
        } catch (const std::exception& Error) {
            throw std::runtime_error("line " + std::to_string(Number) + ": " + Error.what());
        }
        Text.remove_prefix(std::min(End + 1, Text.size()));
    }
    std::stable_sort(Script.Events.begin(), Script.Events.end(),
                     [](const Event& A, const Event& B) { return A.Time < B.Time; });
    return Script.Events;
}

void Play(Game& World, Playback& Script, std::uint32_t Elapsed) {
    while (World.Running && Script.Next < Script.Events.size() &&
           Script.Events[Script.Next].Time <= Elapsed) {
        const Event& What = Script.Events[Script.Next++];
        AdvanceTo(World, What.Time);
        Perform(World, What);
    }
    AdvanceTo(World, Elapsed);
}

} // namespace Simulation
