#include "sandbox/game/simulation.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <optional>
#include <stdexcept>
#include <utility>

#include "sandbox/game/records.h"

namespace Simulation {

namespace {

void Note(const Game& World, std::string_view Kind, std::string_view Detail, int Slot = -1,
          std::string_view Name = {}, std::string_view Address = {}) {
    if (!World.Journal) return;
    World.Journal(
        {World.Time, std::string(Kind), Slot, std::string(Name), std::string(Address), std::string(Detail)});
}

void NotePlayer(const Game& World, std::string_view Kind, int Slot, std::string_view Detail = {}) {
    const Player& Target = World.Players.at(static_cast<std::size_t>(Slot));
    Note(World, Kind, Detail, Slot, Target.Name, Target.Address);
}

std::string FromTo(std::int32_t Old, std::int32_t New) {
    return std::to_string(Old) + ' ' + std::to_string(New);
}

void CheckBlocks(const Game& World) {
    const GameMemory& Memory = World.Memory;
    if (World.Setup.MaxPlayers < 1 || World.Setup.MaxPlayers > Layout::LastSlot)
        throw std::invalid_argument("the number of players must be 1 to 50");
    if (Memory.Image.Size < ImageSize || Memory.Entries.Size < EntriesSize ||
        Memory.Statistics.Size < StatisticsSize || Memory.Clients.Size < ClientsSize ||
        Memory.Entities.Size < EntitiesSize)
        throw std::invalid_argument("a block of the game's memory is too small");
}

bool IsFiltered(const Game& World, const std::string& Address) {
    return std::find(World.Filtered.begin(), World.Filtered.end(), Address) != World.Filtered.end();
}

// Why nobody can join there, or empty.
std::string_view JoinRefusal(const Game& World, int Slot, std::string_view Name, std::string_view Address) {
    if (Slot < 0 || Slot > World.Setup.MaxPlayers) return "slot";
    if (Slot == 0 && World.Setup.Dedicated) return "server";
    if (World.Players.at(static_cast<std::size_t>(Slot)).Present) return "taken";
    if (Name.size() >= Layout::Entry::NameSize) return "name";
    if (Address.size() >= Layout::Client::AddressSize) return "address";
    if (IsFiltered(World, std::string(Address))) return "filtered";
    return {};
}

// The player of a slot; null, after a journal line, when there is none.
Player* PlayerOrRefusal(Game& World, int Slot) {
    if (Slot < 0 || Slot > Layout::LastSlot) {
        Note(World, "refused", "slot", Slot);
        return nullptr;
    }
    Player& Target = World.Players.at(static_cast<std::size_t>(Slot));
    if (Target.Present) return &Target;
    Note(World, "refused", "empty", Slot);
    return nullptr;
}

void Remove(Game& World, int Slot) {
    World.Players.at(static_cast<std::size_t>(Slot)) = {};
    WritePlayer(World, Slot, {});
}

void Drop(Game& World, int Slot, std::string_view Cause) {
    const Player& Target = World.Players.at(static_cast<std::size_t>(Slot));
    NotePlayer(World, "dropped", Slot,
               std::to_string(World.Time - Target.JoinedAt) + ' ' + std::string(Cause));
    Remove(World, Slot);
}

void ChangeActivity(const Game& World, int Slot, Player& Target) {
    const std::uint32_t Entry = EntryAt(World, Slot);
    const auto AddOne = [&](auto Read, auto Write, std::uint32_t Offset) {
        const auto Value = static_cast<std::uint32_t>(Read(World.Memory, Entry + Offset)) + 1;
        Write(World.Memory, Entry + Offset, static_cast<decltype(Read(World.Memory, 0))>(Value));
    };
    // One value at a time: a reader that leaves one of them out takes the player for idle.
    switch (Target.Moves++ % 4) {
    case 0: return AddOne(ReadLong, WriteLong, Layout::Entry::ActivityA);
    case 1: return AddOne(ReadLong, WriteLong, Layout::Entry::ActivityB);
    case 2: return AddOne(ReadByte, WriteByte, Layout::Entry::ActivityC);
    default: return AddOne(ReadByte, WriteByte, Layout::Entry::ActivityD);
    }
}

void NoticeLife(Game& World, int Slot, Player& Target) {
    const std::uint32_t Address = EntityAt(World, Slot) + Layout::Entity::LifeState;
    const std::int32_t Life = ReadLong(World.Memory, Address);
    if (Life == Layout::Entity::SpawnSelect && Target.Life > Life) {
        NotePlayer(World, "killed", Slot);
        Target.RespawnAt = World.Time + RespawnDelay;
    }
    Target.Life = Life;
    if (Life != Layout::Entity::SpawnSelect || World.Time < Target.RespawnAt) return;
    Target.Life = Layout::Entity::Alive;
    WriteLong(World.Memory, Address, Target.Life);
    NotePlayer(World, "respawned", Slot);
}

void NoticeArmed(Game& World, int Slot, Player& Target) {
    const std::int32_t Armed = ReadLong(World.Memory, RecordAt(World, Slot) + Layout::Statistics::Armed);
    if (Armed == Target.Armed) return;
    Target.Armed = Armed;
    NotePlayer(World, Armed == 0 ? "disarmed" : "armed", Slot, std::to_string(Armed));
}

void NoticeTeam(Game& World, int Slot, Player& Target) {
    const std::int32_t Team = ReadLong(World.Memory, RecordAt(World, Slot) + Layout::Statistics::Team);
    if (Team == Target.Team) return;
    NotePlayer(World, "switched", Slot, FromTo(Target.Team, Team));
    Target.Team = static_cast<std::uint8_t>(Team);
    WriteByte(World.Memory, EntryAt(World, Slot) + Layout::Entry::Team, Target.Team);
    WriteLong(World.Memory, RecordAt(World, Slot) + Layout::Statistics::Team, Target.Team);
}

void MoveWhenDue(const Game& World, int Slot, Player& Target) {
    while (Target.MoveEvery != 0 && Target.NextMove <= World.Time) {
        ChangeActivity(World, Slot, Target);
        Target.NextMove += Target.MoveEvery;
    }
}

// The slot of a command "punt NN".
std::optional<int> PuntedSlot(std::string_view Text) {
    constexpr std::string_view Command = "punt ";
    if (!Text.starts_with(Command)) return {};
    Text.remove_prefix(Command.size());
    int Slot = -1;
    const auto [End, Error] = std::from_chars(Text.data(), Text.data() + Text.size(), Slot);
    if (Error != std::errc{} || End != Text.data() + Text.size()) return {};
    if (Slot < 0 || Slot > Layout::LastSlot) return {};
    return Slot;
}

std::string StartDetail(const Settings& Setup) {
    const auto Pair = [](const char* Key, std::int64_t Value) {
        return std::string(" ") + Key + '=' + std::to_string(Value);
    };
    return "process=" + std::to_string(Setup.ProcessId) + Pair("target", Setup.MessageTarget) +
           " build=" + (Setup.Build == Layout::Build::Affiliate ? "affiliate" : "standard") +
           Pair("players", Setup.MaxPlayers) + Pair("dedicated", Setup.Dedicated ? 1 : 0) +
           Pair("type", Setup.GameType) + Pair("port", Setup.Port) + Pair("state", Setup.State);
}

} // namespace

void Start(Game& World) {
    CheckBlocks(World);
    World.Time = 0;
    World.Running = true;
    World.Players = {};
    World.PartOfMessage.clear();
    WriteGlobals(World);
    for (int Slot = 0; Slot <= World.Setup.MaxPlayers; ++Slot) Remove(World, Slot);
    if (World.Setup.Dedicated) WritePlayer(World, 0, {.Name = "Host", .Address = "0.0.0.0", .Team = 1});
    Note(World, "start", StartDetail(World.Setup));
}

void Stop(Game& World, std::string_view Why) {
    if (!World.Running) return;
    World.Running = false;
    Note(World, "stop", Why);
}

bool Join(Game& World, int Slot, std::string_view Name, std::string_view Address, std::uint8_t Team,
          std::int32_t Ping) {
    if (const auto Why = JoinRefusal(World, Slot, Name, Address); !Why.empty()) {
        Note(World, "refused", Why, Slot, Name, Address);
        return false;
    }
    Player& Target = World.Players.at(static_cast<std::size_t>(Slot));
    Target = {.Present = true,
              .Name = std::string(Name),
              .Address = std::string(Address),
              .Team = Team,
              .Life = Layout::Entity::Alive,
              .Armed = 1,
              .JoinedAt = World.Time,
              .MoveEvery = UsualMoveInterval,
              .NextMove = World.Time + UsualMoveInterval};
    WritePlayer(World, Slot, Target, Ping);
    NotePlayer(World, "join", Slot, "team=" + std::to_string(Team) + " ping=" + std::to_string(Ping));
    return true;
}

bool Leave(Game& World, int Slot) {
    const Player* Target = PlayerOrRefusal(World, Slot);
    if (!Target) return false;
    NotePlayer(World, "leave", Slot, std::to_string(World.Time - Target->JoinedAt));
    Remove(World, Slot);
    return true;
}

bool ChangeTeam(Game& World, int Slot, std::uint8_t Team) {
    Player* Target = PlayerOrRefusal(World, Slot);
    if (!Target) return false;
    NotePlayer(World, "team", Slot, FromTo(Target->Team, Team));
    Target->Team = Team;
    WriteByte(World.Memory, EntryAt(World, Slot) + Layout::Entry::Team, Team);
    WriteLong(World.Memory, RecordAt(World, Slot) + Layout::Statistics::Team, Team);
    return true;
}

bool ChangePing(Game& World, int Slot, std::int32_t Ping) {
    if (!PlayerOrRefusal(World, Slot)) return false;
    WriteLong(World.Memory, RecordAt(World, Slot) + Layout::Statistics::Ping, Ping);
    NotePlayer(World, "ping", Slot, std::to_string(Ping));
    return true;
}

bool Move(Game& World, int Slot) {
    Player* Target = PlayerOrRefusal(World, Slot);
    if (!Target) return false;
    ChangeActivity(World, Slot, *Target);
    NotePlayer(World, "move", Slot, "once");
    return true;
}

bool MoveEvery(Game& World, int Slot, std::uint32_t Interval) {
    Player* Target = PlayerOrRefusal(World, Slot);
    if (!Target) return false;
    Target->MoveEvery = Interval;
    Target->NextMove = World.Time + Interval;
    NotePlayer(World, "move", Slot, Interval == 0 ? "idle" : std::to_string(Interval));
    return true;
}

void SetGameState(Game& World, std::int32_t State) {
    const std::uint32_t Address = Layout::MapOf(World.Setup.Build).GameState;
    Note(World, "state", FromTo(ReadLong(World.Memory, Address), State));
    WriteLong(World.Memory, Address, State);
}

void AdvanceTo(Game& World, std::uint32_t Time) {
    if (!World.Running || Time < World.Time) return;
    World.Time = Time;
    TakeMessages(World);
    for (int Slot = 0; Slot < Layout::SlotCount; ++Slot) {
        Player& Target = World.Players.at(static_cast<std::size_t>(Slot));
        if (!Target.Present) continue;
        NoticeLife(World, Slot, Target);
        NoticeArmed(World, Slot, Target);
        NoticeTeam(World, Slot, Target);
        MoveWhenDue(World, Slot, Target);
        if (IsFiltered(World, Target.Address)) Drop(World, Slot, "filtered");
    }
}

void SetFiltered(Game& World, std::vector<std::string> Addresses) { World.Filtered = std::move(Addresses); }

void TakeMessages(Game& World) {
    const Layout::MemoryMap& Map = Layout::MapOf(World.Setup.Build);
    // The sender is another process: the word is what hands the text over, so it is read first and cleared
    // last. The image begins at a page and the word's address is a multiple of four.
    auto& Word = *reinterpret_cast<std::uint32_t*>(World.Memory.Image.Bytes +
                                                   (Map.MsgTypeAdd - World.Memory.Image.Address));
    const std::atomic_ref<std::uint32_t> Type(Word);
    const std::uint32_t Kind = Type.load(std::memory_order_acquire);
    if (Kind == 0) return;
    World.PartOfMessage += ReadText(World.Memory, Map.MsgStrAdd, Layout::Message::PieceSize - 1);
    const bool Complete = ReadLong(World.Memory, Map.MsgTypeAdd + Layout::Message::MoreFollows) == 0;
    Type.store(0, std::memory_order_release);
    if (!Complete) return;
    const std::string Text = std::exchange(World.PartOfMessage, {});
    ReceiveText(World, static_cast<Layout::Message::Channel>(Kind >> 8), static_cast<std::uint8_t>(Kind),
                Text);
}

void ReceiveText(Game& World, Layout::Message::Channel Channel, std::uint8_t Kind, std::string_view Text) {
    const bool IsCommand = Channel == Layout::Message::Channel::Command;
    Note(World, IsCommand ? "command" : "message", Text, -1, {},
         (IsCommand ? "CMD/" : "MSG/") + std::to_string(Kind));
    if (IsCommand) RunCommand(World, Text);
}

void RunCommand(Game& World, std::string_view Text) {
    const auto Slot = PuntedSlot(Text);
    if (Slot && World.Players.at(static_cast<std::size_t>(*Slot)).Present) return Drop(World, *Slot, Text);
    Note(World, "ignored", Text);
}

} // namespace Simulation
