#include "enforcement/tick_punts.h"

#include "game/player_actions.h"

namespace {

constexpr int MostFailures = 3;

int Failures = 0; // of this tick

} // namespace

void BeginTickPunts() noexcept { Failures = 0; }

bool PuntInTick(Long Index, TextView Name, TextView Ip, Long Slot) noexcept {
    if (Failures >= MostFailures) return false;
    const bool Sent = PuntPlayer(Index, Name, Ip, ToText(Slot), false, {}, true);
    if (!Sent) ++Failures;
    return Sent;
}
