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

void SwitchQueuedTeams(const Tick& Current) {
    // Taken out first: a name that is queued while the switches run waits for the next tick.
    const NameList Queue = std::exchange(mdlVNT::SwitchQueue(Current.Profile), NameList());
    for (const auto& Entry : Queue)
        if (GoesOn(Current)) SwitchTeam(Current.Profile, Entry.Item);
}

// The names or addresses by slot. Returns false when the tick must end: half a table must neither be judged
// nor empty the permanent lists. The failed read is reported already.
bool ReadSlots(const Tick& Current, TextView Mode, Lines& BySlot) {
    if (!GoesOn(Current)) return false;
    PlayerTable Table = GetPlayerList(Current.Profile, Mode);
    BySlot = std::move(Table.BySlot);
    return Table.Complete && GoesOn(Current);
}

void Enforce(Tick& Current) {
    if (!ReadSlots(Current, L"ARRAY", Current.Names) || !ReadSlots(Current, L"IPARRAY", Current.Addrs))
        return;
    EnforceBans(Current);
    const NameSet Listed = PermanentNames(Current.Profile);
    if (!ReadSlots(Current, L"ARRAY", Current.Names)) return; // afresh: some have been punted
    EnforcePermanentLists(Current);
    PrunePermanentLists(Current, Listed);
    if (GoesOn(Current)) PuntIdlePlayers(Current);
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
        Tick Current{.Profile = Profile};
        if (ReadGameState(Profile) == GameState::BetweenGames) return SwitchQueuedTeams(Current);
        Enforce(Current);
        ReportLeftOut(Current);
    });
}
