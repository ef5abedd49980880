#include "plugin/remote.h"

#include <algorithm>

#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_actions.h"
#include "game/settings.h"
#include "game/show_msg.h"
#include "host/memory_helper.h"
#include "lists/ban_lists.h"
#include "lists/ban_references.h"
#include "lists/slap_messages.h"
#include "plugin/admin_log.h"
#include "plugin/lifecycle.h"
#include "plugin/remote_bundle.h"

namespace {

// The frame of every acting member: Act(text of the request) does its work and writes its log line, and
// answers false when it refused or an action on the way has reported a failure. The result is 1 when it
// answered true.
template <class F> Long Member(TextView Name, const RemoteRequest& Request, F&& Act) noexcept {
    bool Done = false;
    Trapped(Name, Request.Index, [&] {
        if (!SetProfileData(Request.Index, Request.Profile)) return;
        if (!Request.Data) Fail(ErrorNumber::ArgumentNotOptional);
        if (!Request.Data->Text) Fail(ErrorNumber::TypeMismatch);
        Done = Act(*Request.Data->Text);
    });
    return Done ? 1 : 0;
}

// The same for the members that answer nothing.
template <class F> Long SilentMember(TextView Name, const RemoteRequest& Request, F&& Act) noexcept {
    Member(Name, Request, [&](const std::wstring& Text) {
        RefuseLineBreaks(Text);
        Act(Text);
        return true;
    });
    return 0;
}

// The fields of a request; error 9 when there are fewer than Least.
Lines FieldsOf(const std::wstring& Text, std::size_t Least) {
    RefuseLineBreaks(Text);
    Lines Fields = Split(Text, L"|");
    if (Fields.size() < Least) Fail(ErrorNumber::SubscriptOutOfRange);
    return Fields;
}

std::wstring Decoded(const std::wstring& Field) {
    std::wstring Text = MemoryHelper::Dec64(Field);
    RefuseLineBreaks(Text);
    return Text;
}

bool Punt(const RemoteRequest& Request, const std::wstring& Text) {
    const Lines Fields = FieldsOf(Text, 3);
    const std::wstring Name = Decoded(Fields[0]);
    const std::wstring& Address = Fields[1];
    const std::wstring& Slot = Fields[2];
    const bool Ban = Fields.size() > 3;
    // Six fields and more are no request that any console makes: logged, not carried out.
    if (Fields.size() <= 5) {
        const std::wstring Reason = Fields.size() == 5 ? Decoded(Fields[4]) : std::wstring();
        if (!PuntPlayer(Request.Index, Name, Address, Slot, Ban, Reason, true)) return false;
    }
    WriteAdminLog(Request.Profile, (Ban ? L"Ban Player #" : L"Punt Player #") + Slot + L" (Name: " + Name +
                                       L", IP: " + Address);
    return true;
}

struct ArmAction {
    TextView Keyword;
    TextView LogText;
    bool (*Act)(Long Index, const std::wstring& Name);
};

constexpr ArmAction ArmActions[] = {
    {L"Kill", L"Kill Player",
     [](Long Index, const std::wstring& Name) { return KillPlayer(Index, Name, false); }},
    {L"Switch", L"Switch Player Team",
     [](Long Index, const std::wstring& Name) { return SwitchTeam(Index, Name); }},
    {L"KillPerm", L"Kill Player Permanently",
     [](Long Index, const std::wstring& Name) { return mdlVNT::KillPermList(Index).Add(Name, Name), true; }},
    {L"DisarmPerm", L"Disarm Player Permanently",
     [](Long Index, const std::wstring& Name) {
         return mdlVNT::DisarmPermList(Index).Add(Name, Name), true;
     }},
};

bool Arm(const RemoteRequest& Request, const std::wstring& Text) {
    const Lines Fields = FieldsOf(Text, 2);
    const std::wstring Name = Decoded(Fields[0]);
    const std::wstring& Keyword = Fields[1];
    const auto Row = std::find_if(std::begin(ArmActions), std::end(ArmActions),
                                  [&](const ArmAction& Each) { return Each.Keyword == Keyword; });
    const bool Known = Row != std::end(ArmActions);
    const bool Done = Known ? Row->Act(Request.Index, Name) : ArmPlayer(Request.Index, Name, Keyword, false);
    if (!Done) return false;
    WriteAdminLog(Request.Profile,
                  (Known ? std::wstring(Row->LogText) : Keyword + L" Player") + L" (" + Name);
    return true;
}

void RemoveName(Long Index, const std::wstring& Name, bool WithLinks) {
    DeleteBannedName(Index, Name + std::wstring(WholeName));
    DeleteBannedName(Index, Name + std::wstring(PartOfName));
    if (!WithLinks) return;
    UnlinkName(Index, Name, [&](const std::wstring& Address) { DeleteBannedIp(Index, Address); });
}

void RemoveIp(Long Index, const std::wstring& Address, bool WithLinks) {
    DeleteBannedIp(Index, Address);
    if (!WithLinks) return;
    UnlinkAddress(Index, Address,
                  [&](const std::wstring& Name) { DeleteBannedName(Index, Name + std::wstring(WholeName)); });
}

bool RemoveBanned(const RemoteRequest& Request, const std::wstring& Text) {
    const Lines Fields = FieldsOf(Text, 2);
    const std::wstring Value = Decoded(Fields[0]);
    const std::wstring& Kind = Fields[1];
    const bool WithLinks = Fields.size() > 2 && Fields[2] == L"1";
    if (Kind == L"Name")
        RemoveName(Request.Index, Value, WithLinks);
    else
        RemoveIp(Request.Index, Value, WithLinks);
    WriteAdminLog(Request.Profile, L"Remove Banned " + Kind + L" (" + Value);
    return true;
}

bool AddBanned(const RemoteRequest& Request, const std::wstring& Text) {
    const Lines Fields = FieldsOf(Text, 3);
    const std::wstring Key = Decoded(Fields[0]);
    const std::wstring Reason = Decoded(Fields[1]);
    const std::wstring& Kind = Fields[2];
    const bool IsName = Kind == L"Name";
    if (!IsName && !IsValidIp(Key)) return false;
    if (!IsName)
        StoreBannedIp(Request.Index, Key, TimeStamp());
    else if (!StoreBannedName(Request.Index, Key, TimeStamp(), Reason))
        Fail(ErrorNumber::InvalidCall, L"The name could not be stored in the ban list.");
    WriteAdminLog(Request.Profile, L"Add Banned " + Kind + L" (" + Key);
    return true;
}

void ReplaceSlap(const RemoteRequest& Request, const std::wstring& Text) {
    const auto Bar = Text.find(L'|');
    if (Bar == std::wstring::npos) Fail(ErrorNumber::SubscriptOutOfRange);
    const std::wstring Old = Text.substr(0, Bar);
    const std::wstring New = Text.substr(Bar + 1);
    if (!New.empty()) EditSlap(Request.Index, Old, New);
    WriteAdminLog(Request.Profile, L"Edit Slap Message (Old Message: " + Old + L", New Message: " + New);
}

} // namespace

std::wstring GetPlayersRem(const RemoteRequest& Request) noexcept {
    std::wstring Reply;
    Trapped(L"GetPlayersRem", Request.Index, [&] {
        if (!SetProfileData(Request.Index, Request.Profile)) return;
        if (ReadMapped(Request.Index, L"GameState") < 1)
            Reply = L"Failed";
        else
            BuildReply(Request.Index, Reply);
    });
    return Reply;
}

Long PuntPlayerRem(const RemoteRequest& Request) noexcept {
    return Member(L"PuntPlayerRem", Request, [&](const std::wstring& Text) { return Punt(Request, Text); });
}

Long ArmPlayerRem(const RemoteRequest& Request) noexcept {
    return Member(L"ArmPlayerRem", Request, [&](const std::wstring& Text) { return Arm(Request, Text); });
}

Long RemoveBannedRem(const RemoteRequest& Request) noexcept {
    return Member(L"RemoveBannedRem", Request,
                  [&](const std::wstring& Text) { return RemoveBanned(Request, Text); });
}

Long AddBannedRem(const RemoteRequest& Request) noexcept {
    return Member(L"AddBannedRem", Request,
                  [&](const std::wstring& Text) { return AddBanned(Request, Text); });
}

Long SlapPlayerRem(const RemoteRequest& Request) noexcept {
    return SilentMember(L"SlapPlayerRem", Request, [&](const std::wstring& Message) {
        SendServerMessage(Request.Index, Message, 1);
        WriteAdminLog(Request.Profile, L"Slap Player (Message: " + Message);
    });
}

Long AddSlapRem(const RemoteRequest& Request) noexcept {
    return SilentMember(L"AddSlapRem", Request, [&](const std::wstring& Message) {
        if (!Message.empty()) AddSlap(Request.Index, Message);
        WriteAdminLog(Request.Profile, L"Add Slap Message (Message: " + Message);
    });
}

Long DeleteSlapRem(const RemoteRequest& Request) noexcept {
    return SilentMember(L"DeleteSlapRem", Request, [&](const std::wstring& Message) {
        DeleteSlap(Request.Index, Message);
        WriteAdminLog(Request.Profile, L"Delete Slap Message (Message: " + Message);
    });
}

Long EditSlapRem(const RemoteRequest& Request) noexcept {
    return SilentMember(L"EditSlapRem", Request,
                        [&](const std::wstring& Text) { ReplaceSlap(Request, Text); });
}

// In the three settings the value is stored as it came; the line of the log wants a number, so that any other
// text is stored and then reported.

Long SetBanMethod(const RemoteRequest& Request) noexcept {
    return SilentMember(L"SetBanMethod", Request, [&](const std::wstring& Value) {
        WriteSetting(Request.Index, Setting::BanMethod, Value);
        const TextView Method = ToNumber(Value) != 0 ? L"Kernel Driver" : L"Game Command Line";
        WriteAdminLog(Request.Profile, L"Change Ban Method (New Method: " + std::wstring(Method));
    });
}

Long SetIdlePunt(const RemoteRequest& Request) noexcept {
    return SilentMember(L"SetIdlePunt", Request, [&](const std::wstring& Value) {
        WriteSetting(Request.Index, Setting::IdlePunt, Value);
        WriteAdminLog(Request.Profile, ToNumber(Value) != 0 ? L"Enable Idle Punt" : L"Disable Idle Punt",
                      L" from ");
    });
}

Long SetIdleMax(const RemoteRequest& Request) noexcept {
    return SilentMember(L"SetIdleMax", Request, [&](const std::wstring& Value) {
        WriteSetting(Request.Index, Setting::IdleMax, Value);
        ToNumber(Value);
        WriteAdminLog(Request.Profile, L"Set Idle Max Time (Minutes: " + Value);
    });
}
