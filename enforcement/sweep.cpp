#include "enforcement/sweep.h"

#include <utility>

#include "enforcement/ban_checks.h"
#include "enforcement/idle_punt.h"
#include "enforcement/permanent_lists.h"
#include "enforcement/tick.h"
#include "game/game_state.h"
#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_actions.h"
#include "game/player_table.h"
#include "game/show_msg.h"

namespace {

bool TickRuns = false;

// Set while a tick is on the stack: an outside call may let the message loop run and bring the next one.
struct TickGuard {
    TickGuard() { TickRuns = true; }
    ~TickGuard() { TickRuns = false; }
    TickGuard(const TickGuard&) = delete;
    TickGuard& operator=(const TickGuard&) = delete;
};

void SwitchQueuedTeams(Long Profile) {
    // Taken out first: a name that is queued while the switches run waits for the next tick.
    const NameList Queue = std::exchange(mdlVNT::SwitchQueue(Profile), NameList());
    for (const auto& Entry : Queue) SwitchTeam(Profile, Entry.Item);
}

// The names or addresses by slot. Returns false when the tick must end: half a table must neither be judged
// nor empty the permanent lists. The failed read is reported already.
bool ReadSlots(Long Profile, TextView Mode, Lines& BySlot) {
    if (!HasMemoryMap(Profile)) return false; // unloaded in the middle of the tick
    PlayerTable Table = GetPlayerList(Profile, Mode);
    BySlot = std::move(Table.BySlot);
    return Table.Complete;
}

void Enforce(Tick& Current) {
    const Long Profile = Current.Profile;
    if (!ReadSlots(Profile, L"ARRAY", Current.Names) || !ReadSlots(Profile, L"IPARRAY", Current.Addrs))
        return;
    EnforceBans(Current);
    if (!ReadSlots(Profile, L"ARRAY", Current.Names)) return; // afresh: some have been punted
    EnforcePermanentLists(Current);
    PrunePermanentLists(Current);
    PuntIdlePlayers(Current);
}

// Ends the tick with a report when the server took no more commands.
void ReportLeftOut(const Tick& Current) {
    if (Current.LeftOut == 0) return;
    Fail(ErrorNumber::DeviceUnavailable, L"The game server does not take commands; " +
                                             ToText(Current.LeftOut) + L" more were not tried in this tick.");
}

} // namespace

void tmrVN_Timer(Long Profile) noexcept {
    if (TickRuns) return;
    const TickGuard Guard;
    // cppcheck-suppress throwInNoexceptFunction ; Trapped lets no failure out
    Trapped(L"tmrVN", Profile, [&] {
        if (ReadGameState(Profile) == GameState::BetweenGames) return SwitchQueuedTeams(Profile);
        Tick Current{.Profile = Profile};
        Enforce(Current);
        ReportLeftOut(Current);
    });
}
