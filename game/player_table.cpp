#include "game/player_table.h"

#include <exception>
#include <unordered_map>

#include "game/game_state.h"
#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_records.h"
#include "game/show_msg.h"
#include "host/memory_helper.h"

namespace {

constexpr TextView ServerName = L"Host"; // the server's own entry

// What has failed so far in one read of the table for one procedure: it is reported once, at the end of the
// read, and not once for every player.
struct ReadFailure {
    TextView Procedure;
    bool HasRun = false;
    std::exception_ptr First{};

    template <class F> void Try(F&& Body) noexcept {
        HasRun = true;
        try {
            std::forward<F>(Body)();
        } catch (...) {
            if (!First) First = std::current_exception();
        }
    }
    void Report(Long Profile) const noexcept {
        if (!HasRun) return;
        Trapped(Procedure, Profile, [&] {
            if (First) std::rethrow_exception(First);
        });
    }
};

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

// What one read of the table shares: the records that were passed on the way to a ping, and what failed.
struct Shared {
    Long NextPing = 0; // the first record that has not been read
    std::unordered_map<std::wstring, Long> RecordOfName{};
    ReadFailure Pings{L"GetPing"}, Addresses{L"ConvertIP"};
};

// The first record with this name among the first Count; -1 for none.
Long FindPingRecord(Shared& Read, const TableBase& Base, const std::wstring& Name, Long Count) {
    const auto Passed = Read.RecordOfName.find(Name);
    if (Passed != Read.RecordOfName.end()) return Passed->second;
    while (Read.NextPing < Count) {
        const Long Address =
            RecordAddress(Base.PlyrStats, Read.NextPing, StatsRecord::Stride, StatsRecord::Name);
        const auto [Entry, New] = Read.RecordOfName.emplace(ReadName(Base.Process, Address), Read.NextPing);
        ++Read.NextPing;
        if (New && Entry->first == Name) return Entry->second;
    }
    return -1;
}

// The ping of a name as decimal text; "0" when no record among the first MaxPlayers + 1 has it, or after a
// failure.
std::wstring GetPing(Shared& Read, const TableBase& Base, const std::wstring& Name) noexcept {
    Long Ping = 0;
    if (!Read.Pings.First)
        Read.Pings.Try([&] {
            const Long Record = FindPingRecord(Read, Base, Name, Base.MaxPlayers + 1);
            if (Record < 0) return;
            Ping = MemoryHelper::ReadLong(
                Base.Process, RecordAddress(Base.PlyrStats, Record, StatsRecord::Stride, StatsRecord::Ping));
        });
    return ToText(Ping);
}

// --- The entries of the table

std::wstring ReadDottedIp(Shared& Read, const TableBase& Base, std::uint8_t Slot) {
    const std::wstring Raw = GetPlayerIp(Base.Profile, Slot, Base.PlyrStats, Base.IpList);
    std::wstring Ip(NoAddress);
    if (Slot != 0 && !Raw.empty()) Read.Addresses.Try([&] { Ip = ConvertIP(Raw); });
    return Ip;
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
    Entry.Name = ReadName(Base.Process, OffsetBy(Address, PlayerEntry::Name));
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

void ReadRows(const TableBase& Base, Shared& Read, PlayerTable& Table) {
    Long Blue = 0, Red = 0; // not in mdlVNT yet: another read inside a call starts its own count there
    ScanPlayers(Base, [&](PlayerEntryRead& Entry) {
        Table.Rows.push_back({Entry.Slot, Entry.Name, Entry.Team, ReadDottedIp(Read, Base, Entry.Slot),
                              GetPing(Read, Base, Entry.Name)});
        if (Entry.Team == 1) ++Blue;
        if (Entry.Team == 2) ++Red;
    });
    GetPlayerExtras(Base.Profile, Base.MaxPlayers, Base.SerDedi);
    mdlVNT::BlueCount = Blue;
    mdlVNT::RedCount = Red;
    Table.Summary = L"Blue Team: " + ToText(mdlVNT::BlueCount) + L", Red Team: " + ToText(mdlVNT::RedCount);
}

// What a mode does not show is not read: each read of another process's memory takes its time.
std::wstring ElementOf(const TableBase& Base, Shared& Read, TextView Mode, PlayerEntryRead& Entry) {
    if (Mode == L"ARRAY")
        return Trim(Entry.Name).empty() ? std::wstring(NamelessPlayer) : std::move(Entry.Name);
    if (Mode == L"IPARRAY") return ReadDottedIp(Read, Base, Entry.Slot);
    const std::wstring Name64 = MemoryHelper::Enc64(Entry.Name);
    const std::wstring Ip = ReadDottedIp(Read, Base, Entry.Slot);
    return ToText(Entry.Slot) + L"|" + Name64 + L"|" + ToText(Entry.Team) + L"|" + Ip + L"|" +
           GetPing(Read, Base, Entry.Name);
}

void ReadArray(const TableBase& Base, Shared& Read, TextView Mode, Lines& BySlot) {
    BySlot.assign(static_cast<std::size_t>(Base.MaxPlayers) + 1, {});
    ScanPlayers(Base, [&](PlayerEntryRead& Entry) {
        // A slot above MaxPlayers has no place in the array: passed over, the rest is read.
        if (Entry.Slot < BySlot.size()) BySlot[Entry.Slot] = ElementOf(Base, Read, Mode, Entry);
    });
}

void ReadTable(Long Profile, TextView Mode, Shared& Read, PlayerTable& Table) {
    ReadGameState(Profile); // fails here, before anything is reset, when there is no server to read
    Table.Begun = true;
    mdlVNT::BlueCount = mdlVNT::RedCount = 0;
    const TableBase Base = ReadTableBase(Profile);
    if (Mode == L"LIST")
        ReadRows(Base, Read, Table);
    else
        ReadArray(Base, Read, Mode, Table.BySlot);
}

bool IsMode(TextView Mode) {
    return Mode == L"LIST" || Mode == L"ARRAY" || Mode == L"IPARRAY" || Mode == L"REMOTE";
}

// --- Life and armed states

// The first value of a key stays: two records may have one name and slot.
void AddOnce(Collection<Long>& Values, Long Value, const std::wstring& Key) {
    if (!Values.Contains(Key)) Values.Add(Value, Key);
}

// Returns false when the pass ends: a slot that cannot be. The name is read here, although a ping may have
// read it before: with an older one the values could be kept under the name of a player who has left
// meanwhile.
bool ReadExtrasOf(Long Profile, Long Process, Long Record) {
    const std::wstring Name = ReadName(Process, OffsetBy(Record, StatsRecord::Name));
    if (Name.empty()) return true;
    const Long Slot = MemoryHelper::ReadLong(Process, OffsetBy(Record, StatsRecord::Slot));
    if (Slot > MaxSlot) return false;
    const std::wstring Key = Name + L"_" + ToText(Slot);
    const Long Entity = MemoryHelper::ReadLong(Process, OffsetBy(Record, StatsRecord::Entity));
    if (Entity == 0) return true; // not in the game yet
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

std::wstring ConvertIP(TextView Text) {
    const std::wstring Digits = Trim(Text);
    return Digits == L"0" ? std::wstring(NoAddress) : DottedFrom(Digits);
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
    if (!IsMode(Mode)) return Table;
    Shared Read;
    Table.Complete = Trapped(L"GetPlayerList", Profile, [&] { ReadTable(Profile, Mode, Read, Table); });
    for (const ReadFailure* Failed : {&Read.Pings, &Read.Addresses}) Failed->Report(Profile);
    return Table;
}
