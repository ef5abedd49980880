#include "plugin/remote.h"

#include <algorithm>

#include "game/game_state.h"
#include "game/mdlVNT.h"
#include "game/player_actions.h"
#include "game/settings.h"
#include "host/memory_helper.h"
#include "lists/ban_references.h"
#include "lists/slap_messages.h"
#include "plugin/admin_log.h"
#include "plugin/lifecycle.h"
#include "plugin/remote_bundle.h"

namespace {

// --- The frame of every acting member, and the fields of its request

// The request's text after the profile has been refreshed; absent when that failed, which is reported.
std::optional<std::wstring> BeginRequest(const RemoteRequest& Request) {
    if (!SetProfileData(Request.Profile, Request.HostData)) return std::nullopt;
    if (!Request.Data) Fail(ErrorNumber::ArgumentNotOptional);
    if (!Request.Data->Text) Fail(ErrorNumber::TypeMismatch);
    return Request.Data->Text;
}

// Act carries the request out and writes its log line. It returns false when it refused, or when an action on
// the way has reported a failure.
template <bool (*Act)(const RemoteRequest&, const std::wstring& Text)>
void Telling(const RemoteRequest& Request, Long& Result) {
    const std::optional<std::wstring> Text = BeginRequest(Request);
    Result = Text && Act(Request, *Text) ? 1 : 0;
}

// The same for the members whose result says nothing.
template <void (*Act)(const RemoteRequest&, const std::wstring& Text)>
void Silent(const RemoteRequest& Request, Long&) {
    const std::optional<std::wstring> Text = BeginRequest(Request);
    if (!Text) return;
    RefuseLineBreaks(*Text);
    Act(Request, *Text);
}

// Error 9 when there are fewer than Least.
Lines FieldsOf(const std::wstring& Text, std::size_t Least) {
    Lines Fields = Split(Text, L"|");
    if (Fields.size() < Least) Fail(ErrorNumber::SubscriptOutOfRange);
    return Fields;
}

const std::wstring& Plain(const std::wstring& Field) {
    RefuseLineBreaks(Field);
    return Field;
}

// Whether the index still stands for the server that the request was meant for: the host may have given it to
// another one, inside a call of ours.
bool IsMeantServer(const RemoteRequest& Request) {
    const ServerRef Present(Request.Profile);
    return Present.ProcessRef == PdatNumber(Request.HostData, PdatElement::ProcessRef) &&
           Present.MessageRef == PdatNumber(Request.HostData, PdatElement::MessageRef) &&
           Present.ProfileFolder == PdatText(Request.HostData, PdatElement::ProfileFolder);
}

// Error 5 when it does not.
void RequireMeantServer(const RemoteRequest& Request) {
    if (!IsMeantServer(Request)) Fail(ErrorNumber::InvalidCall, L"The profile has changed meanwhile.");
}

// Line ends inside a Base64 field are no part of its text; those of the text itself are refused.
std::wstring Decoded(const RemoteRequest& Request, std::wstring Field) {
    std::erase_if(Field, [](wchar_t C) { return C == L'\r' || C == L'\n'; });
    std::wstring Text = MemoryHelper::Dec64(Field);
    RequireMeantServer(Request);
    RefuseLineBreaks(Text);
    return Text;
}

// An empty key would be another one than the console meant.
std::wstring DecodedKey(const RemoteRequest& Request, const std::wstring& Field) {
    std::wstring Key = Decoded(Request, Field);
    if (Key.empty()) Fail(ErrorNumber::InvalidCall, L"The name or address is empty.");
    return Key;
}

// Error 13 for a text that is not a whole decimal number.
Long SlotOf(const std::wstring& Field) {
    const std::wstring Digits = Trim(Field);
    if (Digits.empty() || Digits.find_first_not_of(L"0123456789") != std::wstring::npos)
        Fail(ErrorNumber::TypeMismatch);
    return ToWhole(Digits);
}

// --- Players

void SendPlayers(const RemoteRequest& Request, std::wstring& Reply) {
    if (!SetProfileData(Request.Profile, Request.HostData)) return;
    if (ReadGameState(Request.Profile) == GameState::NoGame)
        Reply = L"Failed";
    else
        BuildReply(Request.Profile, Reply);
    // Nobody is sent the lists of a server that he may not administer.
    if (!IsMeantServer(Request)) Reply.clear();
    RequireMeantServer(Request);
}

bool Punt(const RemoteRequest& Request, const std::wstring& Text) {
    const Lines Fields = FieldsOf(Text, 3);
    const std::wstring Name = Decoded(Request, Fields[0]);
    const std::wstring& Address = Plain(Fields[1]);
    const std::wstring& Slot = Plain(Fields[2]);
    const bool Ban = Fields.size() > 3;
    // Six fields and more are no request that any console makes: logged, not carried out.
    if (Fields.size() <= 5) {
        const std::wstring Reason = Fields.size() == 5 ? Decoded(Request, Fields[4]) : std::wstring();
        const PuntRequest Wanted{.Profile = Request.Profile,
                                 .Name = Name,
                                 .Ip = Address,
                                 .Slot = SlotOf(Slot),
                                 .Ban = Ban,
                                 .Reason = Reason,
                                 .Quiet = true};
        if (!PuntPlayer(Wanted)) return false;
    }
    WriteAdminLog(Request.HostData, (Ban ? L"Ban Player #" : L"Punt Player #") + Slot + L" (Name: " + Name +
                                        L", IP: " + Address);
    return true;
}

struct ArmAction {
    TextView Keyword;
    TextView LogText;
    bool (*Act)(Long Profile, const std::wstring& Name);
};

constexpr ArmAction ArmActions[] = {
    {L"Kill", L"Kill Player",
     [](Long Profile, const std::wstring& Name) { return KillPlayer(Profile, Name, false); }},
    {L"Switch", L"Switch Player Team",
     [](Long Profile, const std::wstring& Name) { return SwitchTeam(Profile, Name); }},
    {L"KillPerm", L"Kill Player Permanently",
     [](Long Profile, const std::wstring& Name) {
         return mdlVNT::KillPermList(Profile).Add(Name, Name), true;
     }},
    {L"DisarmPerm", L"Disarm Player Permanently",
     [](Long Profile, const std::wstring& Name) {
         return mdlVNT::DisarmPermList(Profile).Add(Name, Name), true;
     }},
};

bool Arm(const RemoteRequest& Request, const std::wstring& Text) {
    const Lines Fields = FieldsOf(Text, 2);
    const std::wstring Name = Decoded(Request, Fields[0]);
    const std::wstring& Keyword = Plain(Fields[1]);
    const auto Row = std::find_if(std::begin(ArmActions), std::end(ArmActions),
                                  [&](const ArmAction& Action) { return Action.Keyword == Keyword; });
    const bool IsKnown = Row != std::end(ArmActions);
    const bool Done =
        IsKnown ? Row->Act(Request.Profile, Name) : ArmPlayer(Request.Profile, Name, Keyword, false);
    if (!Done) return false;
    WriteAdminLog(Request.HostData,
                  (IsKnown ? std::wstring(Row->LogText) : Keyword + L" Player") + L" (" + Name);
    return true;
}

// --- Ban lists

void RemoveName(Long Profile, const std::wstring& Name, bool WithLinks) {
    const BanFiles Files(Profile);
    RemoveBannedName(Files, BannedName::Whole(Name));
    RemoveBannedName(Files, BannedName::Part(Name));
    if (WithLinks)
        UnlinkName(Files, Name, [&](const std::wstring& Address) { RemoveBannedIp(Files, Address); });
}

void RemoveIp(Long Profile, const std::wstring& Address, bool WithLinks) {
    const BanFiles Files(Profile);
    RemoveBannedIp(Files, Address);
    if (WithLinks)
        UnlinkAddress(Files, Address,
                      [&](const std::wstring& Name) { RemoveBannedName(Files, BannedName::Whole(Name)); });
}

bool RemoveBanned(const RemoteRequest& Request, const std::wstring& Text) {
    const Lines Fields = FieldsOf(Text, 2);
    const std::wstring Key = DecodedKey(Request, Fields[0]);
    const std::wstring& Kind = Plain(Fields[1]);
    const bool WithLinks = Fields.size() > 2 && Fields[2] == L"1";
    (Kind == L"Name" ? RemoveName : RemoveIp)(Request.Profile, Key, WithLinks);
    WriteAdminLog(Request.HostData, L"Remove Banned " + Kind + L" (" + Key);
    return true;
}

// The key of a name carries its tag.
void AddName(Long Profile, const std::wstring& Key, const std::wstring& Reason) {
    if (!StoreBannedName(BanFiles(Profile), BannedName::OfKey(Key), TimeStamp(), Reason))
        Fail(ErrorNumber::InvalidCall, L"The name could not be stored in the ban list.");
}

bool AddBanned(const RemoteRequest& Request, const std::wstring& Text) {
    const Lines Fields = FieldsOf(Text, 3);
    const std::wstring Key = DecodedKey(Request, Fields[0]);
    const std::wstring Reason = Decoded(Request, Fields[1]);
    const std::wstring& Kind = Plain(Fields[2]);
    if (Kind == L"Name")
        AddName(Request.Profile, Key, Reason);
    else if (!IsValidIp(Key) || !StoreBannedIp(BanFiles(Request.Profile), Key, TimeStamp()))
        return false;
    WriteAdminLog(Request.HostData, L"Add Banned " + Kind + L" (" + Key);
    return true;
}

// --- Slap messages

void Slap(const RemoteRequest& Request, const std::wstring& Message) {
    SendServerMessage(Request.Profile, Message, 1);
    WriteAdminLog(Request.HostData, L"Slap Player (Message: " + Message);
}

void AppendSlap(const RemoteRequest& Request, const std::wstring& Message) {
    if (!Message.empty()) AddSlap(Request.Profile, Message);
    WriteAdminLog(Request.HostData, L"Add Slap Message (Message: " + Message);
}

void RemoveSlap(const RemoteRequest& Request, const std::wstring& Message) {
    DeleteSlap(Request.Profile, Message);
    WriteAdminLog(Request.HostData, L"Delete Slap Message (Message: " + Message);
}

void ReplaceSlap(const RemoteRequest& Request, const std::wstring& Text) {
    const auto Bar = Text.find(L'|');
    if (Bar == std::wstring::npos) Fail(ErrorNumber::SubscriptOutOfRange);
    const std::wstring Old = Text.substr(0, Bar);
    const std::wstring New = Text.substr(Bar + 1);
    if (!New.empty()) EditSlap(Request.Profile, Old, New);
    WriteAdminLog(Request.HostData, L"Edit Slap Message (Old Message: " + Old + L", New Message: " + New);
}

// --- Settings. The value is stored as it came; the line of the log wants a number, so that any other text is
// stored and then reported.

void StoreBanMethod(const RemoteRequest& Request, const std::wstring& Value) {
    WriteSetting(Request.Profile, Settings::BanMethod, Value);
    const TextView Method = ToNumber(Value) != 0 ? L"Kernel Driver" : L"Game Command Line";
    WriteAdminLog(Request.HostData, L"Change Ban Method (New Method: " + std::wstring(Method));
}

void StoreIdlePunt(const RemoteRequest& Request, const std::wstring& Value) {
    WriteSetting(Request.Profile, Settings::IdlePunt, Value);
    WriteAdminLog(Request.HostData, ToNumber(Value) != 0 ? L"Enable Idle Punt" : L"Disable Idle Punt",
                  L" from ");
}

void StoreIdleMax(const RemoteRequest& Request, const std::wstring& Value) {
    WriteSetting(Request.Profile, Settings::IdleMax, Value);
    ToNumber(Value);
    WriteAdminLog(Request.HostData, L"Set Idle Max Time (Minutes: " + Value);
}

} // namespace

constinit const RemoteMember<std::wstring> GetPlayersRem{L"GetPlayersRem", SendPlayers};
constinit const RemoteMember<Long> PuntPlayerRem{L"PuntPlayerRem", Telling<Punt>};
constinit const RemoteMember<Long> ArmPlayerRem{L"ArmPlayerRem", Telling<Arm>};
constinit const RemoteMember<Long> RemoveBannedRem{L"RemoveBannedRem", Telling<RemoveBanned>};
constinit const RemoteMember<Long> AddBannedRem{L"AddBannedRem", Telling<AddBanned>};
constinit const RemoteMember<Long> SlapPlayerRem{L"SlapPlayerRem", Silent<Slap>};
constinit const RemoteMember<Long> AddSlapRem{L"AddSlapRem", Silent<AppendSlap>};
constinit const RemoteMember<Long> DeleteSlapRem{L"DeleteSlapRem", Silent<RemoveSlap>};
constinit const RemoteMember<Long> EditSlapRem{L"EditSlapRem", Silent<ReplaceSlap>};
constinit const RemoteMember<Long> SetBanMethod{L"SetBanMethod", Silent<StoreBanMethod>};
constinit const RemoteMember<Long> SetIdlePunt{L"SetIdlePunt", Silent<StoreIdlePunt>};
constinit const RemoteMember<Long> SetIdleMax{L"SetIdleMax", Silent<StoreIdleMax>};
