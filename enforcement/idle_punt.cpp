#include "enforcement/idle_punt.h"

#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_actions.h"
#include "game/player_records.h"
#include "game/settings.h"
#include "host/memory_helper.h"

namespace {

// What a player does in the game changes at least one of the four. What each means is not known.
struct Activity {
    Long A = 0, B = 0, C = 0, D = 0;
    bool operator==(const Activity&) const = default;
};

Activity ReadActivity(Long Process, Long Record) {
    Activity Read;
    Read.A = MemoryHelper::ReadLong(Process, OffsetBy(Record, PlayerEntry::ActivityA));
    Read.B = MemoryHelper::ReadLong(Process, OffsetBy(Record, PlayerEntry::ActivityB));
    Read.C = MemoryHelper::ReadByte(Process, OffsetBy(Record, PlayerEntry::ActivityC));
    Read.D = MemoryHelper::ReadByte(Process, OffsetBy(Record, PlayerEntry::ActivityD));
    return Read;
}

Activity Remembered(const IdleTable& Table, std::size_t Id) {
    return {Table.IdleLong38[Id], Table.IdleLong9C[Id], Table.IdleByteD6[Id], Table.IdleByteD7[Id]};
}

void Remember(Long Profile, std::size_t Id, const std::wstring& Name, const Activity& Seen) {
    IdleTable& Table = mdlVNT::IdleTables(Profile);
    Table.IdleName[Id] = Name;
    Table.IdleLong38[Id] = Seen.A;
    Table.IdleLong9C[Id] = Seen.B;
    Table.IdleByteD6[Id] = Seen.C;
    Table.IdleByteD7[Id] = Seen.D;
    Table.IdleSeconds[Id] = 0;
}

// The limit is read for each player who is idle, so that a change holds at once. Fractions are allowed.
double LimitSeconds(Long Profile) { return ToNumber(ReadValidSetting(Profile, Settings::IdleMax)) * 60.0; }

// Announced whatever has become of the punt.
void PuntIdle(Tick& Current, const std::wstring& Name, Long Id) {
    const Long Profile = Current.Profile;
    SendInTick(Current, [&] {
        const bool Punted = PuntPlayer({.Profile = Profile, .Name = Name, .Slot = Id, .Quiet = true}).Done;
        SendServerMessage(Profile, Name + L" has been punted for being idle!");
        return Punted;
    });
}

void CheckPlayer(Tick& Current, const std::wstring& Name, Long Id, const Activity& Seen) {
    const Long Profile = Current.Profile;
    const auto Element = static_cast<std::size_t>(Id);
    const bool Same = mdlVNT::IdleTables(Profile).IdleName[Element] == Name;
    if (!Same || Remembered(mdlVNT::IdleTables(Profile), Element) != Seen) {
        Remember(Profile, Element, Name, Seen);
        return;
    }
    const Long Seconds = mdlVNT::IdleTables(Profile).IdleSeconds[Element] += TickSeconds;
    if (Seconds >= LimitSeconds(Profile)) PuntIdle(Current, Name, Id);
}

void CheckRecord(Tick& Current, Long Record) {
    const Long Profile = Current.Profile;
    const Long Process = mdlVNT::Profiles(Profile).ProcessRef;
    const std::wstring Name = ReadName(Process, OffsetBy(Record, PlayerEntry::Name));
    const Long Id = MemoryHelper::ReadByte(Process, OffsetBy(Record, PlayerEntry::Slot));
    if (Id < 1 || Id > IdleTable::Bound) return;
    if (Name.empty())
        Remember(Profile, static_cast<std::size_t>(Id), {}, {});
    else
        CheckPlayer(Current, Name, Id, ReadActivity(Process, Record));
}

} // namespace

void PuntIdlePlayers(Tick& Current) {
    const Long Profile = Current.Profile;
    if (!PlayersIniExists() || ReadSetting(Profile, Settings::IdlePunt) != L"1") return;
    const Long MaxPlayers = ReadMaxPlayers(Profile);
    const Long Base = OffsetBy(ReadMapped(Profile, L"PlayerList"), PlayerEntry::FirstOffset);
    for (Long Number = 0; Number <= MaxPlayers; ++Number)
        CheckRecord(Current, RecordAddress(Base, Number, PlayerEntry::Stride));
}
