#include "plugin/remote.h"

#include <algorithm>

#include "game/game_state.h"
#include "game/ini_key.h"
#include "game/mdlVNT.h"
#include "game/player_actions.h"
#include "game/settings.h"
#include "host/memory_helper.h"
#include "lists/ban_references.h"
#include "lists/slap_messages.h"
#include "plugin/admin_log.h"
#include "plugin/remote_bundle.h"

namespace {

// --- The frame of every acting member, and the fields of its request

constexpr std::size_t LongestRequest = 16000; // characters

std::wstring TextOf(const RemoteRequest& Request) {
    if (!Request.Data) Fail(ErrorNumber::ArgumentNotOptional);
    if (!Request.Data->Text) Fail(ErrorNumber::TypeMismatch);
    if (Request.Data->Text->size() > LongestRequest)
        Fail(ErrorNumber::InvalidCall, L"The request is too long.");
    return *Request.Data->Text;
}

// Act carries the request out and writes its log line. It returns false when it refused, or when an action on
// the way has reported a failure.
template <bool (*Act)(const RemoteRequest&, const std::wstring& Text)>
void WithResult(const RemoteRequest& Request, Long& Result) {
    Result = Act(Request, TextOf(Request)) ? 1 : 0;
}

// The same for the members whose result says nothing.
template <void (*Act)(const RemoteRequest&, const std::wstring& Text)>
void WithoutResult(const RemoteRequest& Request, Long&) {
    Act(Request, TextOf(Request));
}

// Error 9 when there are fewer than Least.
Lines FieldsOf(const std::wstring& Text, std::size_t Least) {
    Lines Fields = Split(Text, L"|");
    if (Fields.size() < Least) Fail(ErrorNumber::SubscriptOutOfRange);
    return Fields;
}

// Error 5 for a text that no file and no log may get.
const std::wstring& Checked(const std::wstring& Field) {
    RefuseControls(Field);
    if (Field.size() > LongestText) Fail(ErrorNumber::InvalidCall, L"The text is too long.");
    return Field;
}

// The same for an empty one, which would be another key than the console meant, or no message.
const std::wstring& CheckedName(const std::wstring& Field, const wchar_t* WhenEmpty) {
    if (Field.empty()) Fail(ErrorNumber::InvalidCall, WhenEmpty);
    return Checked(Field);
}

// Line ends inside a Base64 field are no part of its text; those of the text itself are refused.
std::wstring Decoded(std::wstring Field) {
    std::erase_if(Field, [](wchar_t C) { return C == L'\r' || C == L'\n'; });
    return Checked(MemoryHelper::Dec64(Field));
}

std::wstring DecodedKey(const std::wstring& Field) {
    return CheckedName(Decoded(Field), L"The name or address is empty.");
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
    if (ReadGameState(Request.Profile) == GameState::NoGame)
        Reply = L"Failed";
    else
        BuildReply(Request.Profile, Reply);
}

bool Punt(const RemoteRequest& Request, const std::wstring& Text) {
    const Lines Fields = FieldsOf(Text, 3);
    const std::wstring Name = Decoded(Fields[0]);
    const std::wstring& Address = Checked(Fields[1]);
    const std::wstring& Slot = Checked(Fields[2]);
    const bool Ban = Fields.size() > 3;
    // Six fields and more are no request that any console makes: logged, not carried out.
    if (Fields.size() <= 5) {
        const std::wstring Reason = Fields.size() == 5 ? Decoded(Fields[4]) : std::wstring();
        const PuntRequest Punt{.Profile = Request.Profile,
                               .Name = Name,
                               .Ip = Address,
                               .Slot = SlotOf(Slot),
                               .Ban = Ban,
                               .Reason = Reason,
                               .Quiet = true};
        if (!PuntPlayer(Punt).Done) return false;
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

bool AddForGood(PerProfile<NameList>& List, Long Profile, const std::wstring& Name) {
    CheckedName(Name, L"The name is empty.");
    Naming(Name, [&] { List(Profile).Add(Name, Name); });
    return true;
}

constexpr ArmAction ArmActions[] = {
    {L"Kill", L"Kill Player",
     [](Long Profile, const std::wstring& Name) { return KillPlayer(Profile, Name, false); }},
    {L"Switch", L"Switch Player Team",
     [](Long Profile, const std::wstring& Name) { return SwitchTeam(Profile, Name); }},
    {L"KillPerm", L"Kill Player Permanently",
     [](Long Profile, const std::wstring& Name) { return AddForGood(mdlVNT::KillPermList, Profile, Name); }},
    {L"DisarmPerm", L"Disarm Player Permanently",
     [](Long Profile, const std::wstring& Name) {
         return AddForGood(mdlVNT::DisarmPermList, Profile, Name);
     }},
};

bool Arm(const RemoteRequest& Request, const std::wstring& Text) {
    const Lines Fields = FieldsOf(Text, 2);
    const std::wstring Name = Decoded(Fields[0]);
    const std::wstring& Keyword = Checked(Fields[1]);
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
    const std::wstring Key = DecodedKey(Fields[0]);
    const std::wstring& Kind = Checked(Fields[1]);
    const bool WithLinks = Fields.size() > 2 && Fields[2] == L"1";
    (Kind == L"Name" ? RemoveName : RemoveIp)(Request.Profile, Key, WithLinks);
    WriteAdminLog(Request.HostData, L"Remove Banned " + Kind + L" (" + Key);
    return true;
}

void AddName(Long Profile, const std::wstring& Key, const std::wstring& Reason) {
    if (!EndsInTag(Key)) Fail(ErrorNumber::InvalidCall, L"The name does not end in [1] or [2].");
    if (!StoreBannedName(BanFiles(Profile), BannedName::OfKey(Key), TimeStamp(), Reason))
        Fail(ErrorNumber::InvalidCall, std::wstring(NameNotStored));
}

void AddIp(Long Profile, const std::wstring& Pattern) {
    if (!StoreBannedIp(BanFiles(Profile), Pattern, TimeStamp()))
        Fail(ErrorNumber::InvalidCall, std::wstring(IpNotStored));
}

bool AddBanned(const RemoteRequest& Request, const std::wstring& Text) {
    const Lines Fields = FieldsOf(Text, 3);
    const std::wstring Key = DecodedKey(Fields[0]);
    const std::wstring Reason = Decoded(Fields[1]);
    const std::wstring& Kind = Checked(Fields[2]);
    if (Kind == L"Name")
        AddName(Request.Profile, Key, Reason);
    else if (IsValidIp(Key))
        AddIp(Request.Profile, Key);
    else
        return false;
    WriteAdminLog(Request.HostData, L"Add Banned " + Kind + L" (" + Key);
    return true;
}

// --- Slap messages

void Slap(const RemoteRequest& Request, const std::wstring& Message) {
    SendServerMessage(Request.Profile, Checked(Message), 1);
    WriteAdminLog(Request.HostData, L"Slap Player (Message: " + Message);
}

void AppendSlap(const RemoteRequest& Request, const std::wstring& Message) {
    AddSlap(Request.Profile, CheckedName(Message, L"The message is empty."));
    WriteAdminLog(Request.HostData, L"Add Slap Message (Message: " + Message);
}

void RemoveSlap(const RemoteRequest& Request, const std::wstring& Message) {
    DeleteSlap(Request.Profile, Checked(Message));
    WriteAdminLog(Request.HostData, L"Delete Slap Message (Message: " + Message);
}

void ReplaceSlap(const RemoteRequest& Request, const std::wstring& Text) {
    const auto Bar = Text.find(L'|');
    if (Bar == std::wstring::npos) Fail(ErrorNumber::SubscriptOutOfRange);
    const std::wstring Old = Text.substr(0, Bar);
    const std::wstring New = Text.substr(Bar + 1);
    EditSlap(Request.Profile, Checked(Old), CheckedName(New, L"The message is empty."));
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
constinit const RemoteMember<Long> PuntPlayerRem{L"PuntPlayerRem", WithResult<Punt>};
constinit const RemoteMember<Long> ArmPlayerRem{L"ArmPlayerRem", WithResult<Arm>};
constinit const RemoteMember<Long> RemoveBannedRem{L"RemoveBannedRem", WithResult<RemoveBanned>};
constinit const RemoteMember<Long> AddBannedRem{L"AddBannedRem", WithResult<AddBanned>};
constinit const RemoteMember<Long> SlapPlayerRem{L"SlapPlayerRem", WithoutResult<Slap>};
constinit const RemoteMember<Long> AddSlapRem{L"AddSlapRem", WithoutResult<AppendSlap>};
constinit const RemoteMember<Long> DeleteSlapRem{L"DeleteSlapRem", WithoutResult<RemoveSlap>};
constinit const RemoteMember<Long> EditSlapRem{L"EditSlapRem", WithoutResult<ReplaceSlap>};
constinit const RemoteMember<Long> SetBanMethod{L"SetBanMethod", WithoutResult<StoreBanMethod>};
constinit const RemoteMember<Long> SetIdlePunt{L"SetIdlePunt", WithoutResult<StoreIdlePunt>};
constinit const RemoteMember<Long> SetIdleMax{L"SetIdleMax", WithoutResult<StoreIdleMax>};
