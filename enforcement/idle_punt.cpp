#include "enforcement/idle_punt.h"

#include "enforcement/tick_punts.h"
#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_actions.h"
#include "game/player_records.h"
#include "game/settings.h"
#include "host/memory_helper.h"

namespace {

constexpr Long SecondsPerTick = 5;

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

void Remember(Long Index, std::size_t Id, const std::wstring& Name, const Activity& Now) {
    IdleTable& Table = mdlVNT::IdleTables(Index);
    Table.IdleName[Id] = Name;
    Table.IdleLong38[Id] = Now.A;
    Table.IdleLong9C[Id] = Now.B;
    Table.IdleByteD6[Id] = Now.C;
    Table.IdleByteD7[Id] = Now.D;
    Table.IdleSeconds[Id] = 0;
}

// The limit is read for each player who is idle, so that a change holds at once. Fractions are allowed.
double LimitSeconds(Long Index) { return ToNumber(PeriodOr5(ReadSetting(Index, Setting::IdleMax))) * 60.0; }

void PuntIdle(Long Index, const std::wstring& Name, Long Id) {
    if (ReadMapped(Index, L"GameState") <= 1) return; // no punt while no game runs, and nothing to announce
    if (PuntInTick(Index, Name, {}, Id)) SendServerMessage(Index, Name + L" has been punted for being idle!");
}

void CheckPlayer(Long Index, const std::wstring& Name, Long Id, const Activity& Now) {
    const auto Element = static_cast<std::size_t>(Id);
    const bool Same = mdlVNT::IdleTables(Index).IdleName[Element] == Name;
    if (!Same || Remembered(mdlVNT::IdleTables(Index), Element) != Now) {
        Remember(Index, Element, Name, Now);
        return;
    }
    const Long Seconds = mdlVNT::IdleTables(Index).IdleSeconds[Element] += SecondsPerTick;
    if (Seconds >= LimitSeconds(Index)) PuntIdle(Index, Name, Id);
}

void CheckRecord(Long Index, Long Record) {
    const Long Process = mdlVNT::Profiles(Index).ProcessRef;
    const std::wstring Name = MemoryHelper::ReadStr(Process, OffsetBy(Record, PlayerEntry::Name));
    const Long Id = MemoryHelper::ReadByte(Process, OffsetBy(Record, PlayerEntry::Slot));
    if (Id < 1 || Id > IdleTable::Bound) return;
    if (Name.empty())
        Remember(Index, static_cast<std::size_t>(Id), {}, {});
    else
        CheckPlayer(Index, Name, Id, ReadActivity(Process, Record));
}

} // namespace

void PuntIdlePlayers(Long Index) {
    if (!PlayersIniExists() || ReadSetting(Index, Setting::IdlePunt) != L"1") return;
    const Long MaxPlayers = ReadMaxPlayers(Index);
    const Long Base = OffsetBy(ReadMapped(Index, L"PlayerList"), PlayerEntry::FirstOffset);
    for (Long Number = 0; Number <= MaxPlayers; ++Number)
        CheckRecord(Index, RecordAddress(Base, Number, PlayerEntry::Stride));
}
