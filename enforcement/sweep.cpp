#include "enforcement/sweep.h"

#include <utility>

#include "enforcement/ban_checks.h"
#include "enforcement/idle_punt.h"
#include "enforcement/permanent_lists.h"
#include "enforcement/tick.h"
#include "game/game_state.h"
#include "game/mdlVNT.h"
#include "game/player_actions.h"
#include "game/player_table.h"
#include "game/show_msg.h"
#include "host/work.h"

namespace {

void SwitchQueuedTeams(const Tick& Current) {
    // Taken out first: a name that is queued while the switches run waits for the next tick.
    const NameList Queue = std::exchange(mdlVNT::SwitchQueue(Current.Profile), NameList());
    for (const auto& Entry : Queue) SwitchTeam(Current.Profile, Entry.Item);
}

// The names or addresses by slot. Returns false when the tick must end: half a table must neither be judged
// nor empty the permanent lists. The failed read is reported already.
bool ReadSlots(const Tick& Current, TextView Mode, Lines& BySlot) {
    PlayerTable Table = GetPlayerList(Current.Profile, Mode);
    BySlot = std::move(Table.BySlot);
    return Table.Complete;
}

void Enforce(Tick& Current) {
    if (ReadGameState(Current.Profile) == GameState::BetweenGames) return SwitchQueuedTeams(Current);
    if (!ReadSlots(Current, L"ARRAY", Current.Names) || !ReadSlots(Current, L"IPARRAY", Current.Addrs))
        return;
    EnforceBans(Current);
    const NameSet Listed = PermanentNames(Current.Profile);
    if (!ReadSlots(Current, L"ARRAY", Current.Names)) return; // afresh: some have been punted
    PrunePermanentLists(Current, Listed);
    EnforcePermanentLists(Current);
    PuntIdlePlayers(Current);
}

void FailForNotSent(const Tick& Current) {
    Fail(ErrorNumber::DeviceUnavailable, L"The game server does not take commands; " +
                                             ToText(Current.NotSent) + L" more were not tried in this tick.");
}

void RunTick(Tick& Current) {
    try {
        Enforce(Current);
    } catch (...) {
        // Both are worth knowing.
        if (Current.NotSent > 0) Trapped(L"tmrVN", Current.Profile, [&] { FailForNotSent(Current); });
        throw;
    }
    if (Current.NotSent > 0) FailForNotSent(Current);
}

} // namespace

void tmrVN_Timer(Long Profile) noexcept {
    if (Work::Runs(Work::Kind::Tick, Profile)) return;
    const Work Own(Work::Kind::Tick, Profile);
    // cppcheck-suppress throwInNoexceptFunction ; Trapped lets no failure out
    Trapped(L"tmrVN", Profile, [&] {
        Tick Current{.Profile = Profile};
        RunTick(Current);
    });
}
