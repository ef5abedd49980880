#include "game/player_actions.h"

#include <optional>

#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_records.h"
#include "game/player_table.h"
#include "game/show_msg.h"
#include "host/memory_helper.h"
#include "host/platform.h"
#include "lists/ban_lists.h"
#include "lists/ban_references.h"

namespace {

constexpr Long GameRuns = 1; // a game runs while the state is above this

Long ProcessOf(Long Index) { return mdlVNT::Profiles(Index).ProcessRef; }

// The punt command wants two digits; 7 and 07 are the same slot.
std::wstring TwoDigitSlot(TextView Slot) {
    const std::wstring Digits = Trim(Slot);
    const bool Whole = !Digits.empty() && Digits.find_first_not_of(L"0123456789") == std::wstring::npos;
    if (!Whole) Fail(ErrorNumber::TypeMismatch);
    return TwoDigits(ToWhole(Digits));
}

// The address of the first statistics record with exactly this name; none when there is none. A dedicated
// server's own record is left out when SkipServer is set. Nobody is found by an empty name: free records have
// none.
std::optional<Long> FindRecord(Long Index, TextView Name, bool SkipServer) {
    if (Name.empty()) return std::nullopt;
    const Long Count = ReadMaxPlayers(Index);
    const Long First = SkipServer && ReadMapped(Index, L"SerDedi") == 1 ? 1 : 0;
    const Long PlyrStats = ReadMapped(Index, L"PlyrStats");
    for (Long Number = First; Number < First + Count; ++Number) {
        const Long Record = RecordAddress(PlyrStats, Number, StatsRecord::Stride);
        if (MemoryHelper::ReadStr(ProcessOf(Index), OffsetBy(Record, StatsRecord::Name)) == Name)
            return Record;
    }
    return std::nullopt;
}

void Announce(Long Index, TextView Name, TextView What) {
    SendServerMessage(Index, std::wstring(Name) + std::wstring(What));
}

void ShowIf(bool ShowBoxes, MsgKind Kind, TextView Text, Long Index) {
    if (ShowBoxes) ShowMsg(Kind, Text, Index);
}

enum class BanResult { Stored, WithoutName, AlreadyBanned };

// Writes link, name entry and address entry; a player whose address is not known is banned by name alone, as
// everybody else without one would be banned with him. What the game reports as a name may hold anything; the
// files must not.
BanResult StoreBan(Long Index, TextView PlayerName, TextView Ip, TextView Reason, TextView Stamp) {
    const std::wstring Name = WithoutLineBreaks(PlayerName);
    const std::wstring Address = Trim(Ip);
    RefuseUnlessKey(Address); // before anything is written
    const bool HasAddress = !Address.empty() && Address != NoAddress;
    EnsureSettingsFolder(Index);
    if (HasAddress)
        AddBanReference(mdlVNT::SettingsFolder(Index), mdlVNT::BannedReferencePath(Index), Name, Address);
    // Kept on purpose: entries carry a tag, so that this finds only a bare key that somebody wrote by hand.
    if (!FileHelper::GetIniKey(NamesSection, Name, mdlVNT::BannedNamesPath(Index)).empty())
        return BanResult::AlreadyBanned;
    const bool NameStored = StoreBannedName(Index, Name + std::wstring(WholeName), Stamp,
                                            Trim(Reason).empty() ? L"None" : Reason);
    if (HasAddress) StoreBannedIp(Index, Address, Stamp);
    return NameStored ? BanResult::Stored : BanResult::WithoutName;
}

// The ban has gone on with address, link and punt; whoever banned must know what is missing.
void TellNameNotStored(Long Index, bool Quiet) {
    static constexpr TextView Text = L"The name could not be stored in the ban list.";
    if (!Quiet)
        ShowMsg(MsgKind::Failed, Text, Index);
    else
        Trapped(L"PuntPlayer", Index, [] { Fail(ErrorNumber::InvalidCall, std::wstring(Text)); });
}

void KillRecord(Long Index, TextView Name, Long Record, bool ShowBoxes) {
    const Long Entity = MemoryHelper::ReadLong(ProcessOf(Index), OffsetBy(Record, StatsRecord::Entity));
    const Long LifeState = OffsetBy(Entity, EntityLifeState);
    const Long Life = MemoryHelper::ReadLong(ProcessOf(Index), LifeState);
    if (Life == 1)
        ShowIf(ShowBoxes, MsgKind::Failed,
               L"The selected player is on the spawn select screen and cannot be killed!", Index);
    if (Life <= 1) return;
    MemoryHelper::WriteLong(ProcessOf(Index), LifeState, 1);
    Announce(Index, Name, L" has been 'Killed' by the Server Admin!");
    ShowIf(ShowBoxes, MsgKind::Success, L"Player Killed.", Index);
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

void ArmRecord(Long Index, TextView Name, Long Record, const ArmMode& Mode, bool ShowBoxes) {
    const Long ArmedFlag = OffsetBy(Record, StatsRecord::Armed);
    if (MemoryHelper::ReadLong(ProcessOf(Index), ArmedFlag) == Mode.Flag) {
        ShowIf(ShowBoxes, MsgKind::Failed, Mode.Refusal, Index);
        return;
    }
    MemoryHelper::WriteLong(ProcessOf(Index), ArmedFlag, Mode.Flag);
    Announce(Index, Name, Mode.Announcement);
    ShowIf(ShowBoxes, MsgKind::Success, Mode.Confirmation, Index);
}

void Send(Long Index, TextView Text, TextView Channel, Long Kind, Place Where) {
    const Long MessageRef = mdlVNT::Profiles(Index, Where).MessageRef;
    const bool IsAffiliate = mdlVNT::Profiles(Index, Where).IsAffiliate;
    MemoryHelper::AddMsg(Index, MessageRef, Text, IsAffiliate, Channel, Kind, Where);
}

} // namespace

void SendCommand(Long Index, TextView Text, Place Where) { Send(Index, Text, L"CMD", 1, Where); }

void SendServerMessage(Long Index, TextView Text, Long Kind, Place Where) {
    Send(Index, Text, L"MSG", Kind, Where);
}

bool PuntPlayer(Long Index, TextView Name, TextView Ip, TextView Slot, bool Ban, TextView Reason,
                bool Quiet) noexcept {
    return Trapped(L"PuntPlayer", Index, [&] {
        const std::wstring Stamp = TimeStamp();
        const Long GameState = ReadMapped(Index, L"GameState");
        const std::wstring SlotText = TwoDigitSlot(Slot);
        if (GameState <= GameRuns) return;
        const BanResult Result = Ban ? StoreBan(Index, Name, Ip, Reason, Stamp) : BanResult::Stored;
        if (Result == BanResult::AlreadyBanned) return;
        SendCommand(Index, L"punt " + SlotText);
        if (!Quiet)
            Announce(Index, Name,
                     Ban ? L" has been banned by the Server Admin!"
                         : L" has been punted by the Server Admin!");
        if (Result == BanResult::WithoutName) TellNameNotStored(Index, Quiet);
    });
}

bool KillPlayer(Long Index, TextView Name, bool ShowBoxes) noexcept {
    return Trapped(L"KillPlayer", Index, [&] {
        const std::optional<Long> Record = FindRecord(Index, Name, true);
        if (Record) KillRecord(Index, Name, *Record, ShowBoxes);
    });
}

bool ArmPlayer(Long Index, TextView Name, TextView Mode, bool ShowBoxes) noexcept {
    return Trapped(L"ArmPlayer", Index, [&] {
        const std::optional<Long> Record = FindRecord(Index, Name, true);
        if (!Record) return;
        for (const ArmMode& Row : ArmModes)
            if (Row.Mode == Mode) ArmRecord(Index, Name, *Record, Row, ShowBoxes);
    });
}

bool SwitchTeam(Long Index, TextView Name) noexcept {
    return Trapped(L"SwitchTeam", Index, [&] {
        if (ReadMapped(Index, L"GameType") == 0) return;
        // From record 0 on any server, on purpose: who plays on the server itself can change teams too.
        const std::optional<Long> Record = FindRecord(Index, Name, false);
        if (!Record) return;
        const Long Team = OffsetBy(*Record, StatsRecord::Team);
        const Long Current = MemoryHelper::ReadLong(ProcessOf(Index), Team);
        MemoryHelper::WriteLong(ProcessOf(Index), Team, Current == 1 ? 2 : 1);
    });
}
