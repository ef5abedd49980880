#include "game/player_actions.h"

#include <optional>

#include "game/game_state.h"
#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_records.h"
#include "game/show_msg.h"
#include "host/memory_helper.h"
#include "lists/first_failure.h"

namespace {

Long ProcessOf(Long Profile) { return mdlVNT::Profiles(Profile).ProcessRef; }

// The address of the first statistics record with exactly this name, if there is one. A dedicated
// server's own record is left out when SkipServer is set. Nobody is found by an empty name: free records have
// none.
std::optional<Long> FindRecord(Long Profile, TextView Name, bool SkipServer) {
    if (Name.empty()) return std::nullopt;
    const Long Count = ReadMaxPlayers(Profile);
    const Long First = SkipServer && ReadMapped(Profile, L"SerDedi") == 1 ? 1 : 0;
    const Long PlyrStats = ReadMapped(Profile, L"PlyrStats");
    for (Long Number = First; Number < First + Count; ++Number) {
        const Long Record = RecordAddress(PlyrStats, Number, StatsRecord::Stride);
        if (ReadName(ProcessOf(Profile), OffsetBy(Record, StatsRecord::Name)) == Name) return Record;
    }
    return std::nullopt;
}

void Send(Long Profile, TextView Text, TextView Channel, Long Kind) {
    const Long MessageRef = mdlVNT::Profiles(Profile).MessageRef;
    const bool IsAffiliate = mdlVNT::Profiles(Profile).IsAffiliate;
    MemoryHelper::AddMsg(Profile, MessageRef, Text, IsAffiliate, Channel, Kind);
}

void SendCommand(Long Profile, TextView Text) { Send(Profile, Text, L"CMD", 1); }

void Announce(Long Profile, TextView Name, TextView Event) {
    SendServerMessage(Profile, std::wstring(Name) + std::wstring(Event));
}

void ShowIf(bool ShowBoxes, MsgKind Kind, TextView Text, Long Profile) {
    if (ShowBoxes) ShowMsg(Kind, Text, Profile);
}

// The punt has gone out all the same; whoever banned must know what is missing.
void TellProblem(const PuntRequest& Request, const std::wstring& Problem) {
    if (Problem.empty()) return;
    if (!Request.Quiet)
        ShowMsg(MsgKind::Failed, Problem, Request.Profile);
    else
        Trapped(L"PuntPlayer", Request.Profile, [&] { Fail(ErrorNumber::InvalidCall, Problem); });
}

// The command wants two digits.
void SendPunt(const PuntRequest& Request, TextView Announcement) {
    SendCommand(Request.Profile, L"punt " + TwoDigits(Request.Slot));
    if (!Request.Quiet && !Announcement.empty()) Announce(Request.Profile, Request.Name, Announcement);
}

std::optional<BannedName> EntryOf(const PuntRequest& Request) {
    // What the game reports as a name may hold anything; the files must not.
    if (!Request.Entry) return BannedName::Whole(WithoutControls(Request.Name));
    return Request.Entry->Name.empty() ? std::nullopt : Request.Entry;
}

// Whoever bans wants the player gone, also when nothing could be stored; only that is not announced as a ban.
PuntOutcome BanAndPunt(const PuntRequest& Request, const std::wstring& Stamp) {
    PuntOutcome Outcome;
    FirstFailure Failed;
    Failed.Try([&] {
        Outcome.Ban = StoreBan({.Profile = Request.Profile,
                                .Name = EntryOf(Request),
                                .Ip = Request.Ip,
                                .Reason = Request.Reason,
                                .Stamp = Stamp});
    });
    Outcome.Done = Outcome.Ban.IsBan() || Outcome.Ban.StandsWithoutTag;
    if (!Outcome.Ban.StandsWithoutTag)
        SendPunt(Request, Outcome.Ban.IsBan() ? L" has been banned by the Server Admin!" : L"");
    Failed.Throw();
    TellProblem(Request, Outcome.Ban.Problem);
    return Outcome;
}

void KillRecord(Long Profile, TextView Name, Long Record, bool ShowBoxes) {
    const Long Entity = MemoryHelper::ReadLong(ProcessOf(Profile), OffsetBy(Record, StatsRecord::Entity));
    if (Entity == 0) return; // not in the game yet
    const Long LifeAddress = OffsetBy(Entity, EntityLifeState);
    const LifeState Life = LifeStateOf(MemoryHelper::ReadLong(ProcessOf(Profile), LifeAddress));
    if (Life == LifeState::SpawnSelect)
        ShowIf(ShowBoxes, MsgKind::Failed,
               L"The selected player is on the spawn select screen and cannot be killed!", Profile);
    if (Life != LifeState::Alive) return;
    MemoryHelper::WriteLong(ProcessOf(Profile), LifeAddress, SpawnSelectWord);
    Announce(Profile, Name, L" has been 'Killed' by the Server Admin!");
    ShowIf(ShowBoxes, MsgKind::Success, L"Player Killed.", Profile);
}

struct ArmMode {
    TextView Mode;
    Long Flag; // what the mode writes; a player who has it already is refused
    TextView Refusal, Announcement, Confirmation;
};

constexpr ArmMode ArmModes[] = {
    {L"Disarm", 0, L"The selected player is already disarmed!", L" has been 'Disarmed' by the Server Admin!",
     L"Player Disarmed."},
    {L"Rearm", 1, L"The selected player is already armed!", L" has been 'Re-Armed' by the Server Admin!",
     L"Player Re-Armed."},
};

void ArmRecord(Long Profile, TextView Name, Long Record, const ArmMode& Mode, bool ShowBoxes) {
    const Long ArmedFlag = OffsetBy(Record, StatsRecord::Armed);
    if (MemoryHelper::ReadLong(ProcessOf(Profile), ArmedFlag) == Mode.Flag) {
        ShowIf(ShowBoxes, MsgKind::Failed, Mode.Refusal, Profile);
        return;
    }
    MemoryHelper::WriteLong(ProcessOf(Profile), ArmedFlag, Mode.Flag);
    Announce(Profile, Name, Mode.Announcement);
    ShowIf(ShowBoxes, MsgKind::Success, Mode.Confirmation, Profile);
}

} // namespace

void SendServerMessage(Long Profile, TextView Text, Long Kind) { Send(Profile, Text, L"MSG", Kind); }

PuntOutcome PuntPlayer(const PuntRequest& Request) noexcept {
    PuntOutcome Outcome;
    const bool Ended = Trapped(L"PuntPlayer", Request.Profile, [&] {
        const std::wstring Stamp = TimeStamp();
        Outcome.Done = true;
        if (ReadGameState(Request.Profile) != GameState::Running) return;
        if (Request.Ban)
            Outcome = BanAndPunt(Request, Stamp);
        else
            SendPunt(Request, L" has been punted by the Server Admin!");
    });
    Outcome.Done = Outcome.Done && Ended;
    return Outcome;
}

bool KillPlayer(Long Profile, TextView Name, bool ShowBoxes) noexcept {
    return Trapped(L"KillPlayer", Profile, [&] {
        const std::optional<Long> Record = FindRecord(Profile, Name, true);
        if (Record) KillRecord(Profile, Name, *Record, ShowBoxes);
    });
}

bool ArmPlayer(Long Profile, TextView Name, TextView Mode, bool ShowBoxes) noexcept {
    return Trapped(L"ArmPlayer", Profile, [&] {
        const std::optional<Long> Record = FindRecord(Profile, Name, true);
        if (!Record) return;
        for (const ArmMode& Row : ArmModes)
            if (Row.Mode == Mode) ArmRecord(Profile, Name, *Record, Row, ShowBoxes);
    });
}

bool SwitchTeam(Long Profile, TextView Name) noexcept {
    return Trapped(L"SwitchTeam", Profile, [&] {
        if (ReadMapped(Profile, L"GameType") == 0) return;
        // From record 0 on any server, on purpose: somebody who plays on the server itself can change teams,
        // too.
        const std::optional<Long> Record = FindRecord(Profile, Name, false);
        if (!Record) return;
        const Long Team = OffsetBy(*Record, StatsRecord::Team);
        const Long Current = MemoryHelper::ReadLong(ProcessOf(Profile), Team);
        MemoryHelper::WriteLong(ProcessOf(Profile), Team, Current == 1 ? 2 : 1);
    });
}
