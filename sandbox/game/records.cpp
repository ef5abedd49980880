#include "sandbox/game/records.h"

#include <charconv>

namespace Simulation {

namespace {

// Not the slot itself: a reader that takes the one for the other finds another player's address.
std::uint32_t ClientIndex(int Slot) { return static_cast<std::uint32_t>(Layout::LastSlot - Slot); }

std::uint32_t ClientAt(const Game& World, int Slot) {
    return World.Memory.Clients.Address + ClientIndex(Slot) * Layout::Client::Stride;
}

} // namespace

std::uint32_t EntryAt(const Game& World, int Slot) {
    return World.Memory.Entries.Address + Layout::Entry::First +
           static_cast<std::uint32_t>(Slot) * Layout::Entry::Stride;
}

std::uint32_t RecordAt(const Game& World, int Slot) {
    return World.Memory.Statistics.Address + static_cast<std::uint32_t>(Slot) * Layout::Statistics::Stride;
}

std::uint32_t EntityAt(const Game& World, int Slot) {
    return World.Memory.Entities.Address + static_cast<std::uint32_t>(Slot) * Layout::Entity::Stride;
}

std::string RawAddress(std::string_view Address) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string Raw;
    std::string_view Rest = Address;
    for (int Part = 0; Part < 4; ++Part) {
        unsigned Value = 256;
        const auto [End, Error] = std::from_chars(Rest.data(), Rest.data() + Rest.size(), Value);
        if (Error != std::errc{} || Value > 255) return std::string(Address);
        Rest.remove_prefix(static_cast<std::size_t>(End - Rest.data()));
        if (Part < 3 && !Rest.starts_with('.')) return std::string(Address);
        if (Part < 3) Rest.remove_prefix(1);
        Raw.insert(0, {Digits[Value >> 4], Digits[Value & 15]});
    }
    return Rest.empty() ? Raw : std::string(Address);
}

void WritePlayer(const Game& World, int Slot, const Player& Written, std::int32_t Ping) {
    const GameMemory& Memory = World.Memory;
    const std::uint32_t Entry = EntryAt(World, Slot), Record = RecordAt(World, Slot);
    WriteText(Memory, Entry + Layout::Entry::Name, Written.Name, Layout::Entry::NameSize);
    WriteByte(Memory, Entry + Layout::Entry::Team, Written.Team);
    WriteByte(Memory, Entry + Layout::Entry::Slot, static_cast<std::uint8_t>(Slot));
    WriteText(Memory, ClientAt(World, Slot) + Layout::Client::Address, RawAddress(Written.Address),
              Layout::Client::AddressSize);
    WriteLong(Memory, EntityAt(World, Slot) + Layout::Entity::LifeState, Written.Life);
    WriteLong(Memory, Record + Layout::Statistics::Slot, Slot);
    WriteByte(Memory, Record + Layout::Statistics::ClientIndex, static_cast<std::uint8_t>(ClientIndex(Slot)));
    WriteLong(Memory, Record + Layout::Statistics::Entity, static_cast<std::int32_t>(EntityAt(World, Slot)));
    WriteText(Memory, Record + Layout::Statistics::Name, Written.Name, Layout::Entry::NameSize);
    WriteLong(Memory, Record + Layout::Statistics::Team, Written.Team);
    WriteLong(Memory, Record + Layout::Statistics::Armed, Written.Armed);
    WriteLong(Memory, Record + Layout::Statistics::Ping, Ping);
}

void WriteGlobals(const Game& World) {
    const Layout::MemoryMap& Map = Layout::MapOf(World.Setup.Build);
    const auto Write = [&](std::uint32_t Address, std::int64_t Value) {
        WriteLong(World.Memory, Address, static_cast<std::int32_t>(Value));
    };
    Write(Map.GameState, World.Setup.State);
    Write(Map.GameType, World.Setup.GameType);
    Write(Map.MaxPlayers, World.Setup.MaxPlayers);
    Write(Map.SerDedi, World.Setup.Dedicated ? 1 : 0);
    Write(Map.GamePort, World.Setup.Port);
    Write(Map.PlayerList, World.Memory.Entries.Address);
    Write(Map.PlyrStats, World.Memory.Statistics.Address);
    Write(Map.IpList, World.Memory.Clients.Address);
    Write(Map.MsgTypeAdd, 0);
    WriteText(World.Memory, Map.MsgTitleAdd, "Server", 16);
    WriteText(World.Memory, Map.WpnNameAdd, "M4", 16);
}

} // namespace Simulation
