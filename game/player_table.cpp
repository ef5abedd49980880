#include "game/player_table.h"

#include <unordered_map>

#include "game/game_state.h"
#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_records.h"
#include "game/show_msg.h"
#include "host/memory_helper.h"

namespace {

constexpr TextView ServerName = L"Host"; // the server's own entry

// The addresses and counts that one read of the table works with, read once at its start.
struct TableBase {
    Long Profile;
    Long Process;
    Long MaxPlayers;
    Long SerDedi;
    Long PlayerList;
    Long PlyrStats;
    Long IpList;
};

struct PlayerEntryRead {
    std::wstring Name;
    int Team;
    std::uint8_t Slot;
};

TableBase ReadTableBase(Long Profile) {
    TableBase Base{};
    Base.Profile = Profile;
    Base.Process = mdlVNT::Profiles(Profile).ProcessRef;
    Base.MaxPlayers = ReadMaxPlayers(Profile);
    Base.SerDedi = ReadMapped(Profile, L"SerDedi");
    Base.PlayerList = ReadMapped(Profile, L"PlayerList");
    Base.PlyrStats = ReadMapped(Profile, L"PlyrStats");
    Base.IpList = ReadMapped(Profile, L"IpList");
    return Base;
}

// --- Pings. Those of one read share the records that were passed on the way to a match.

struct PingScan {
    Long Next = 0; // the first record that has not been read
    std::unordered_map<std::wstring, Long> RecordOfName;
    bool Failed = false; // one report for a read, not one for every player
};

// The first record with this name among the first Count; -1 for none.
Long FindPingRecord(PingScan& Scan, const TableBase& Base, const std::wstring& Name, Long Count) {
    const auto Passed = Scan.RecordOfName.find(Name);
    if (Passed != Scan.RecordOfName.end()) return Passed->second;
    while (Scan.Next < Count) {
        const Long Address = RecordAddress(Base.PlyrStats, Scan.Next, StatsRecord::Stride, StatsRecord::Name);
        const auto [Entry, New] =
            Scan.RecordOfName.emplace(MemoryHelper::ReadStr(Base.Process, Address), Scan.Next);
        ++Scan.Next;
        if (New && Entry->first == Name) return Entry->second;
    }
    return -1;
}

// The ping of a name as decimal text; "0" when no record among the first Count has it.
std::wstring GetPing(PingScan& Scan, const TableBase& Base, const std::wstring& Name, Long Count) noexcept {
    std::wstring Ping = L"0";
    if (Scan.Failed) return Ping;
    Scan.Failed = !Trapped(L"GetPing", Base.Profile, [&] {
        const Long Record = FindPingRecord(Scan, Base, Name, Count);
        if (Record < 0) return;
        const Long Address = RecordAddress(Base.PlyrStats, Record, StatsRecord::Stride, StatsRecord::Ping);
        Ping = ToText(MemoryHelper::ReadLong(Base.Process, Address));
    });
    return Ping;
}

// --- The entries of the table

std::wstring ReadDottedIp(const TableBase& Base, std::uint8_t Slot) {
    const std::wstring Raw = GetPlayerIp(Base.Profile, Slot, Base.PlyrStats, Base.IpList);
    std::wstring Ip;
    if (Slot != 0 && !Raw.empty()) Ip = ConvertIP(Raw, Base.Profile);
    return Ip.empty() ? std::wstring(NoAddress) : Ip;
}

// The game keeps the four bytes in reverse order. Error 13 when one of them is missing or not hexadecimal.
std::wstring DottedFrom(TextView Digits) {
    std::wstring Dotted;
    for (const std::size_t Pair : {6u, 4u, 2u, 0u}) {
        Dotted += ToText(HexToByte(Pair < Digits.size() ? Digits.substr(Pair, 2) : TextView()));
        if (Pair != 0) Dotted += L".";
    }
    return Dotted;
}

enum class EntryKind : unsigned char { Listed, Skipped, EndOfTable };

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

// Calls Take(entry) for every player in the table, in its order.
template <class F> void ScanPlayers(const TableBase& Base, F&& Take) {
    Long LastSlot = 0;
    for (Long Number = 0; Number <= Base.MaxPlayers; ++Number) {
        PlayerEntryRead Entry{};
        const EntryKind Kind = ReadEntry(Base, Number, LastSlot, Entry);
        if (Kind == EntryKind::EndOfTable) return;
        if (Kind == EntryKind::Skipped) continue;
        LastSlot = Entry.Slot;
        Take(Entry);
    }
}

void ReadRows(const TableBase& Base, PlayerTable& Table) {
    PingScan Pings;
    Long Blue = 0, Red = 0; // not in mdlVNT yet: another read inside a call starts its own count there
    ScanPlayers(Base, [&](PlayerEntryRead& Entry) {
        Table.Rows.push_back({Entry.Slot, Entry.Name, Entry.Team, ReadDottedIp(Base, Entry.Slot),
                              GetPing(Pings, Base, Entry.Name, Base.MaxPlayers + 1)});
        if (Entry.Team == 1) ++Blue;
        if (Entry.Team == 2) ++Red;
    });
    GetPlayerExtras(Base.Profile, Base.MaxPlayers, Base.SerDedi);
    mdlVNT::BlueCount = Blue;
    mdlVNT::RedCount = Red;
    Table.Summary = L"Blue Team: " + ToText(mdlVNT::BlueCount) + L", Red Team: " + ToText(mdlVNT::RedCount);
}

// What a mode does not show is not read: each read of another process's memory takes its time.
std::wstring ElementOf(const TableBase& Base, PingScan& Pings, TextView Mode, PlayerEntryRead& Entry) {
    if (Mode == L"ARRAY")
        return Trim(Entry.Name).empty() ? std::wstring(NamelessPlayer) : std::move(Entry.Name);
    if (Mode == L"IPARRAY") return ReadDottedIp(Base, Entry.Slot);
    const std::wstring Name64 = MemoryHelper::Enc64(Entry.Name);
    const std::wstring Ip = ReadDottedIp(Base, Entry.Slot);
    return ToText(Entry.Slot) + L"|" + Name64 + L"|" + ToText(Entry.Team) + L"|" + Ip + L"|" +
           GetPing(Pings, Base, Entry.Name, Base.MaxPlayers + 1);
}

void ReadArray(const TableBase& Base, TextView Mode, Lines& BySlot) {
    PingScan Pings;
    BySlot.assign(static_cast<std::size_t>(Base.MaxPlayers) + 1, {});
    ScanPlayers(Base, [&](PlayerEntryRead& Entry) {
        // A slot above MaxPlayers has no place in the array: passed over, the rest is read.
        if (Entry.Slot < BySlot.size()) BySlot[Entry.Slot] = ElementOf(Base, Pings, Mode, Entry);
    });
}

void ReadTable(Long Profile, TextView Mode, PlayerTable& Table) {
    ReadGameState(Profile); // fails here, before anything is reset, when there is no server to read
    Table.Begun = true;
    mdlVNT::BlueCount = mdlVNT::RedCount = 0;
    const TableBase Base = ReadTableBase(Profile);
    if (Mode == L"LIST")
        ReadRows(Base, Table);
    else
        ReadArray(Base, Mode, Table.BySlot);
}

bool IsMode(TextView Mode) {
    return Mode == L"LIST" || Mode == L"ARRAY" || Mode == L"IPARRAY" || Mode == L"REMOTE";
}

// --- Life and armed states

// The first value of a key stays: two records may have one name and slot.
void AddOnce(Collection<Long>& Values, Long Value, const std::wstring& Key) {
    if (!Values.Contains(Key)) Values.Add(Value, Key);
}

// Returns false when the pass ends: a slot that cannot be.
bool ReadExtrasOf(Long Profile, Long Process, Long Record) {
    const std::wstring Name = MemoryHelper::ReadStr(Process, OffsetBy(Record, StatsRecord::Name));
    if (Name.empty()) return true;
    const Long Slot = MemoryHelper::ReadLong(Process, OffsetBy(Record, StatsRecord::Slot));
    if (Slot > MaxSlot) return false;
    const std::wstring Key = Name + L"_" + ToText(Slot);
    const Long Entity = MemoryHelper::ReadLong(Process, OffsetBy(Record, StatsRecord::Entity));
    const Long Life = MemoryHelper::ReadLong(Process, OffsetBy(Entity, EntityLifeState));
    AddOnce(mdlVNT::LifeStates(Profile), Life, Key);
    const Long Armed = MemoryHelper::ReadLong(Process, OffsetBy(Record, StatsRecord::Armed));
    AddOnce(mdlVNT::ArmedFlags(Profile), Armed, Key);
    return true;
}

} // namespace

std::wstring GetPlayerIp(Long Profile, std::uint8_t Slot, Long PlyrStats, Long IpList) {
    const Long Process = mdlVNT::Profiles(Profile).ProcessRef;
    const std::uint8_t Client = MemoryHelper::ReadByte(
        Process, RecordAddress(PlyrStats, Slot, StatsRecord::Stride, StatsRecord::ClientIndex));
    return MemoryHelper::ReadStr(
        Process, RecordAddress(IpList, Client, ClientAddress::Stride, ClientAddress::FirstOffset));
}

std::wstring ConvertIP(TextView Text, Long Profile) noexcept {
    std::wstring Dotted;
    Trapped(L"ConvertIP", Profile, [&] {
        const std::wstring Digits = Trim(Text);
        Dotted = Digits == L"0" ? std::wstring(NoAddress) : DottedFrom(Digits);
    });
    return Dotted;
}

void GetPlayerExtras(Long Profile, Long Count, Long SerDedi) noexcept {
    Trapped(L"GetPlayerExtras", Profile, [&] {
        mdlVNT::LifeStates(Profile) = {};
        mdlVNT::ArmedFlags(Profile) = {};
        const Long Process = mdlVNT::Profiles(Profile).ProcessRef;
        const Long PlyrStats = ReadMapped(Profile, L"PlyrStats");
        const Long First = SerDedi == 1 ? 1 : 0; // a dedicated server's own record is left out
        for (Long Number = 0; Number < Count; ++Number) {
            const Long Record = RecordAddress(PlyrStats, First + Number, StatsRecord::Stride);
            if (!ReadExtrasOf(Profile, Process, Record)) return;
        }
    });
}

PlayerTable GetPlayerList(Long Profile, TextView Mode) noexcept {
    PlayerTable Table;
    if (IsMode(Mode))
        Table.Complete = Trapped(L"GetPlayerList", Profile, [&] { ReadTable(Profile, Mode, Table); });
    return Table;
}
