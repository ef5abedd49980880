#include "game/player_table.h"

#include <unordered_map>

#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_grid.h"
#include "game/player_records.h"
#include "game/show_msg.h"
#include "host/memory_helper.h"

namespace {

constexpr TextView ServerName = L"Host"; // the server's own entry

// The addresses and counts that one read of the table works with, read once at its start.
struct TableBase {
    Long Index;
    Long Process;
    Long MaxPlayers;
    Long SerDedi;
    Long PlayerList;
    Long PlyrStats;
    Long IpList;
};

// The statistics record of each name, found in one pass when the first ping is asked for.
struct PingIndex {
    bool Built = false;
    std::unordered_map<std::wstring, Long> RecordOfName;
};

struct PlayerEntryRead {
    std::wstring Name;
    int Team;
    std::uint8_t Slot;
};

void BuildPingIndex(PingIndex& Pings, const TableBase& Base, Long Count) {
    Pings.Built = true; // also when it fails below: one report for a read, not one for every player
    for (Long Record = 0; Record < Count; ++Record) {
        const Long Address = RecordAddress(Base.PlyrStats, Record, StatsRecord::Stride, StatsRecord::Name);
        // The first record of a name counts.
        Pings.RecordOfName.emplace(MemoryHelper::ReadStr(Base.Process, Address), Record);
    }
}

// The ping of a name as decimal text; "0" when no record among the first Count has it.
std::wstring GetPing(PingIndex& Pings, const TableBase& Base, const std::wstring& Name, Long Count) noexcept {
    std::wstring Ping = L"0";
    Trapped(L"GetPing", Base.Index, [&] {
        if (!Pings.Built) BuildPingIndex(Pings, Base, Count);
        const auto Found = Pings.RecordOfName.find(Name);
        if (Found == Pings.RecordOfName.end()) return;
        Ping = ToText(
            MemoryHelper::ReadLong(Base.Process, RecordAddress(Base.PlyrStats, Found->second,
                                                               StatsRecord::Stride, StatsRecord::Ping)));
    });
    return Ping;
}

TableBase ReadTableBase(Long Index) {
    ReadMapped(Index, L"GameState"); // fails here, before anything else, when there is no server to read
    TableBase Base{};
    Base.Index = Index;
    Base.Process = mdlVNT::Profiles(Index).ProcessRef;
    Base.MaxPlayers = ReadMaxPlayers(Index);
    Base.SerDedi = ReadMapped(Index, L"SerDedi");
    Base.PlayerList = ReadMapped(Index, L"PlayerList");
    Base.PlyrStats = ReadMapped(Index, L"PlyrStats");
    Base.IpList = ReadMapped(Index, L"IpList");
    return Base;
}

std::wstring ReadDottedIp(const TableBase& Base, std::uint8_t Slot) {
    const std::wstring Raw = GetPlayerIp(Base.Index, Slot, Base.PlyrStats, Base.IpList);
    std::wstring Ip;
    if (Slot != 0 && !Raw.empty()) Ip = ConvertIP(Raw, Base.Index);
    return Ip.empty() ? std::wstring(NoAddress) : Ip;
}

enum class EntryKind { Listed, Skipped, EndOfTable };

EntryKind ReadEntry(const TableBase& Base, Long Number, Long LastSlot, PlayerEntryRead& Entry) {
    const Long Address =
        RecordAddress(Base.PlayerList, Number, PlayerEntry::Stride, PlayerEntry::FirstOffset);
    Entry.Team = MemoryHelper::ReadByte(Base.Process, OffsetBy(Address, PlayerEntry::Team));
    if (Entry.Team == 0) return EntryKind::Skipped;
    Entry.Slot = MemoryHelper::ReadByte(Base.Process, OffsetBy(Address, PlayerEntry::Slot));
    if (Entry.Slot > MaxSlot) return EntryKind::EndOfTable;
    Entry.Name = MemoryHelper::ReadStr(Base.Process, OffsetBy(Address, PlayerEntry::Name));
    // A repeated entry is listed once. As the last slot starts at 0, a leading slot 0 is not listed either.
    if (Entry.Name == ServerName || Entry.Slot == LastSlot) return EntryKind::Skipped;
    return EntryKind::Listed;
}

void ListPlayer(const TableBase& Base, PingIndex& Pings, const PlayerEntryRead& Entry) {
    AddPlayerRow({TwoDigits(Entry.Slot), Entry.Name, Entry.Team, ReadDottedIp(Base, Entry.Slot),
                  GetPing(Pings, Base, Entry.Name, Base.MaxPlayers + 1)});
    if (Entry.Team == 1) ++mdlVNT::BlueCount;
    if (Entry.Team == 2) ++mdlVNT::RedCount;
}

// What a mode does not show is not read: each read of another process's memory takes its time.
std::wstring ElementOf(const TableBase& Base, PingIndex& Pings, TextView Mode, PlayerEntryRead& Entry) {
    if (Mode == L"ARRAY")
        return Trim(Entry.Name).empty() ? std::wstring(NamelessPlayer) : std::move(Entry.Name);
    if (Mode == L"IPARRAY") return ReadDottedIp(Base, Entry.Slot);
    const std::wstring Name64 = MemoryHelper::Enc64(Entry.Name);
    const std::wstring Ip = ReadDottedIp(Base, Entry.Slot);
    return ToText(Entry.Slot) + L"|" + Name64 + L"|" + ToText(Entry.Team) + L"|" + Ip + L"|" +
           GetPing(Pings, Base, Entry.Name, Base.MaxPlayers + 1);
}

// Calls Take(entry) for every player in the table, in its order.
template <class F> void ScanPlayers(const TableBase& Base, F&& Take) {
    Long LastSlot = 0;
    for (Long Number = 0; Number <= Base.MaxPlayers; ++Number) {
        PlayerEntryRead Entry{};
        const EntryKind Kind = ReadEntry(Base, Number, LastSlot, Entry);
        if (Kind == EntryKind::EndOfTable) return;
        if (Kind == EntryKind::Skipped) continue;
        Take(Entry);
        LastSlot = Entry.Slot;
    }
}

void ReadGrid(Long Index, std::wstring& Summary) {
    const TableBase Base = ReadTableBase(Index);
    PingIndex Pings;
    ScanPlayers(Base, [&](const PlayerEntryRead& Entry) { ListPlayer(Base, Pings, Entry); });
    GetPlayerExtras(Index, Base.MaxPlayers, Base.SerDedi);
    Summary = L"Blue Team: " + ToText(mdlVNT::BlueCount) + L", Red Team: " + ToText(mdlVNT::RedCount);
}

void ReadArray(Long Index, TextView Mode, Lines& BySlot) {
    const TableBase Base = ReadTableBase(Index);
    PingIndex Pings;
    BySlot.assign(static_cast<std::size_t>(Base.MaxPlayers) + 1, {});
    ScanPlayers(Base, [&](PlayerEntryRead& Entry) {
        // A slot above MaxPlayers has no place in the array: passed over, the rest is read.
        if (Entry.Slot < BySlot.size()) BySlot[Entry.Slot] = ElementOf(Base, Pings, Mode, Entry);
    });
}

// One statistics record's life state and armed flag. False ends the pass: a slot that cannot be.
bool ReadExtrasOf(Long Index, Long Process, Long Record) {
    const std::wstring Name = MemoryHelper::ReadStr(Process, OffsetBy(Record, StatsRecord::Name));
    if (Name.empty()) return true;
    const Long Slot = MemoryHelper::ReadLong(Process, OffsetBy(Record, StatsRecord::Slot));
    if (Slot > MaxSlot) return false;
    const Long Entity = MemoryHelper::ReadLong(Process, OffsetBy(Record, StatsRecord::Entity));
    const Long Life = MemoryHelper::ReadLong(Process, OffsetBy(Entity, EntityLifeState));
    const Long Armed = MemoryHelper::ReadLong(Process, OffsetBy(Record, StatsRecord::Armed));
    const std::wstring Key = Name + L"_" + ToText(Slot);
    // Two records with one name and slot: the first one's values stay.
    if (!mdlVNT::LifeStates(Index).Contains(Key)) mdlVNT::LifeStates(Index).Add(Life, Key);
    if (!mdlVNT::ArmedFlags(Index).Contains(Key)) mdlVNT::ArmedFlags(Index).Add(Armed, Key);
    return true;
}

bool IsArrayMode(TextView Mode) { return Mode == L"ARRAY" || Mode == L"IPARRAY" || Mode == L"REMOTE"; }

} // namespace

Long ReadMaxPlayers(Long Index, Place Where) {
    const Long MaxPlayers = ReadMapped(Index, L"MaxPlayers", Where);
    if (MaxPlayers < 0 || MaxPlayers > MaxPlayerEntries) Fail(ErrorNumber::Overflow, {}, Where);
    return MaxPlayers;
}

std::wstring GetPlayerIp(Long Index, std::uint8_t Slot, Long PlyrStats, Long IpList, Place Where) {
    const Long Process = mdlVNT::Profiles(Index, Where).ProcessRef;
    const std::uint8_t Client = MemoryHelper::ReadByte(
        Process, RecordAddress(PlyrStats, Slot, StatsRecord::Stride, StatsRecord::ClientIndex), Where);
    return MemoryHelper::ReadStr(
        Process, RecordAddress(IpList, Client, ClientAddress::Stride, ClientAddress::FirstOffset), Where);
}

std::wstring ConvertIP(TextView Text, Long Index) noexcept {
    std::wstring Dotted;
    Trapped(L"ConvertIP", Index, [&] {
        const std::wstring Digits = Trim(Text);
        if (Digits == L"0") {
            Dotted = NoAddress;
            return;
        }
        // The game keeps the four bytes in reverse order.
        for (const std::size_t Pair : {6u, 4u, 2u, 0u}) {
            const TextView Hex = Pair < Digits.size() ? TextView(Digits).substr(Pair, 2) : TextView();
            Dotted += ToText(HexToByte(Hex));
            if (Pair != 0) Dotted += L".";
        }
    });
    return Dotted;
}

void GetPlayerExtras(Long Index, Long Count, Long SerDedi) noexcept {
    Trapped(L"GetPlayerExtras", Index, [&] {
        mdlVNT::LifeStates(Index) = {};
        mdlVNT::ArmedFlags(Index) = {};
        const Long Process = mdlVNT::Profiles(Index).ProcessRef;
        const Long PlyrStats = ReadMapped(Index, L"PlyrStats");
        const Long First = SerDedi == 1 ? 1 : 0; // a dedicated server's own record is left out
        for (Long Number = 0; Number < Count; ++Number)
            if (!ReadExtrasOf(Index, Process, RecordAddress(PlyrStats, First + Number, StatsRecord::Stride)))
                return;
    });
}

PlayerArray GetPlayerList(Long Index, TextView Mode) noexcept {
    PlayerArray Players;
    if (Mode == L"LIST") {
        std::wstring Summary;
        Players.Complete = Trapped(L"GetPlayerList", Index, [&] {
            mdlVNT::BlueCount = mdlVNT::RedCount = 0;
            BeginPlayerGrid();
            ReadGrid(Index, Summary);
        });
        // Also after a failure: the grid shows the rows that came.
        Players.Complete &= Trapped(L"GetPlayerList", Index, [&] { EndPlayerGrid(Summary); });
    } else if (IsArrayMode(Mode)) {
        Players.Complete = Trapped(L"GetPlayerList", Index, [&] {
            mdlVNT::BlueCount = mdlVNT::RedCount = 0;
            ReadArray(Index, Mode, Players.BySlot);
        });
    }
    return Players;
}
