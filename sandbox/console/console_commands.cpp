#include "sandbox/console/console_commands.h"

#include <algorithm>

#include "sandbox/console/helper_objects.h"
#include "sandbox/console/player_report.h"

namespace ConsoleCommands {
namespace {

constexpr std::size_t AnyNumber = 99;
constexpr std::size_t UsageColumn = 40; // where what a command does begins

struct Command {
    const wchar_t* Name;
    const wchar_t* Member;
    const wchar_t* Words;
    std::size_t Least, Most; // words after the name
    std::wstring (*Data)(const Lines& Words, const Sender& Send);
    bool Answers; // whether the result says if anything was done
    const wchar_t* Does;
};

std::wstring Word(const Lines& Words, std::size_t At) { return At < Words.size() ? Words[At] : L""; }

std::wstring Rest(const Lines& Words, std::size_t From) {
    return Join(Lines(Words.begin() + static_cast<std::ptrdiff_t>(From), Words.end()), L" ");
}

std::wstring OneOf(const Lines& Words, std::size_t At, std::initializer_list<const wchar_t*> Allowed) {
    for (const wchar_t* Item : Allowed)
        if (Word(Words, At) == Item) return Item;
    Fail(ErrorNumber::InvalidCall, L"\"" + Word(Words, At) + L"\" is not one of the words for " + Words[0]);
}

// --- What goes into the request of each command. Names and reasons travel encoded.

// The player in the slot is looked up first: a request names slot, name and address.
std::wstring PlayerInSlot(const std::wstring& SlotText, const Sender& Send) {
    const Long Slot = ToWhole(SlotText);
    for (const ReportedPlayer& Player : ReadReport(Send(L"GetPlayersRem", {})).Players)
        if (Player.Slot == Slot)
            return Helpers::Enc64(Player.Name) + L"|" + Player.Address + L"|" + ToText(Slot);
    Fail(ErrorNumber::InvalidCall, L"There is no player in slot " + SlotText);
}

std::wstring PuntData(const Lines& Words, const Sender& Send) { return PlayerInSlot(Words[1], Send); }

std::wstring BanData(const Lines& Words, const Sender& Send) {
    const std::wstring Request = PlayerInSlot(Words[1], Send) + L"|1";
    return Words.size() > 2 ? Request + L"|" + Helpers::Enc64(Rest(Words, 2)) : Request;
}

std::wstring ArmData(const Lines& Words, const Sender&) {
    static constexpr std::pair<const wchar_t*, const wchar_t*> Actions[] = {
        {L"kill", L"Kill"},         {L"switch", L"Switch"},
        {L"killperm", L"KillPerm"}, {L"disarmperm", L"DisarmPerm"},
        {L"disarm", L"Disarm"},     {L"rearm", L"Rearm"}};
    for (const auto& [Name, Action] : Actions)
        if (Words[0] == Name) return Helpers::Enc64(Rest(Words, 1)) + L"|" + Action;
    Fail(ErrorNumber::InvalidCall);
}

std::wstring TextData(const Lines& Words, const Sender&) { return Rest(Words, 1); }

std::wstring EditData(const Lines& Words, const Sender&) { return Words[1] + L"|" + Words[2]; }

std::wstring AddNameData(const Lines& Words, const Sender&) {
    const std::wstring Tag = OneOf(Words, 2, {L"whole", L"part"}) == L"whole" ? L"[1]" : L"[2]";
    const std::wstring Reason = Words.size() > 3 ? Rest(Words, 3) : L"None";
    return Helpers::Enc64(Words[1] + Tag) + L"|" + Helpers::Enc64(Reason) + L"|Name";
}

std::wstring AddAddressData(const Lines& Words, const Sender&) {
    return Helpers::Enc64(Words[1]) + L"|" + Helpers::Enc64(L"None") + L"|IP Address";
}

std::wstring RemoveData(const Lines& Words, const Sender&) {
    const std::wstring Kind = Words[0] == L"removename" ? L"Name" : L"IP Address";
    const std::wstring Request = Helpers::Enc64(Words[1]) + L"|" + Kind;
    return Words.size() > 2 && OneOf(Words, 2, {L"links"}) == L"links" ? Request + L"|1" : Request;
}

std::wstring MethodData(const Lines& Words, const Sender&) { return OneOf(Words, 1, {L"0", L"1"}); }

std::wstring IdleData(const Lines& Words, const Sender&) {
    return OneOf(Words, 1, {L"on", L"off"}) == L"on" ? L"1" : L"0";
}

std::wstring RawData(const Lines& Words, const Sender&) { return Rest(Words, 2); }

constexpr Command Commands[] = {
    {L"players", L"GetPlayersRem", L"", 0, 0, nullptr, false,
     L"players, ban lists, slap messages and settings"},
    {L"punt", L"PuntPlayerRem", L"SLOT", 1, 1, PuntData, true,
     L"throws the player in the slot off the server"},
    {L"ban", L"PuntPlayerRem", L"SLOT [REASON]", 1, AnyNumber, BanData, true,
     L"bans name and address of the player in the slot"},
    {L"kill", L"ArmPlayerRem", L"NAME", 1, AnyNumber, ArmData, true,
     L"sends the player to the spawn select screen"},
    {L"killperm", L"ArmPlayerRem", L"NAME", 1, AnyNumber, ArmData, true,
     L"the same every five seconds until the player leaves"},
    {L"disarm", L"ArmPlayerRem", L"NAME", 1, AnyNumber, ArmData, true, L"takes the player's weapons"},
    {L"disarmperm", L"ArmPlayerRem", L"NAME", 1, AnyNumber, ArmData, true,
     L"the same every five seconds until the player leaves"},
    {L"rearm", L"ArmPlayerRem", L"NAME", 1, AnyNumber, ArmData, true, L"gives the weapons back"},
    {L"switch", L"ArmPlayerRem", L"NAME", 1, AnyNumber, ArmData, true, L"moves the player to the other team"},
    {L"slap", L"SlapPlayerRem", L"TEXT", 1, AnyNumber, TextData, false,
     L"a message to everybody on the server"},
    {L"addslap", L"AddSlapRem", L"TEXT", 1, AnyNumber, TextData, false, L"adds a slap message"},
    {L"editslap", L"EditSlapRem", L"OLD NEW", 2, 2, EditData, false, L"changes a slap message"},
    {L"delslap", L"DeleteSlapRem", L"TEXT", 1, AnyNumber, TextData, false, L"deletes a slap message"},
    {L"addname", L"AddBannedRem", L"NAME whole|part [REASON]", 2, AnyNumber, AddNameData, true,
     L"bans a name, or every name with that part"},
    {L"addip", L"AddBannedRem", L"PATTERN", 1, 1, AddAddressData, true,
     L"bans an address or a range such as 10.0.*"},
    {L"removename", L"RemoveBannedRem", L"NAME [links]", 1, 2, RemoveData, true,
     L"ends the ban; with \"links\" also of its addresses"},
    {L"removeip", L"RemoveBannedRem", L"PATTERN [links]", 1, 2, RemoveData, true,
     L"ends the ban; with \"links\" also of its names"},
    {L"method", L"SetBanMethod", L"0|1", 1, 1, MethodData, false,
     L"0 is Game Command Line, 1 is Kernel Driver"},
    {L"idle", L"SetIdlePunt", L"on|off", 1, 1, IdleData, false, L"whether idle players are punted"},
    {L"idlemax", L"SetIdleMax", L"MINUTES", 1, 1, TextData, false, L"after how long"},
};

const Command& Find(const Lines& Words) {
    for (const Command& Known : Commands)
        if (Words.front() == Known.Name) {
            const std::size_t Given = Words.size() - 1;
            if (Given >= Known.Least && Given <= Known.Most) return Known;
            Fail(ErrorNumber::InvalidCall, std::wstring(Known.Name) + L" takes: " + Known.Words);
        }
    Fail(ErrorNumber::InvalidCall, L"There is no command \"" + Words.front() + L"\"");
}

} // namespace

std::wstring Run(const Lines& Words, const Sender& Send) {
    if (Words.empty()) Fail(ErrorNumber::InvalidCall, L"There is no command");
    if (Words.front() == L"raw" && Words.size() > 1)
        return Send(Words[1], Words.size() > 2 ? std::optional(RawData(Words, Send)) : std::nullopt) + L"\n";
    const Command& Found = Find(Words);
    if (!Found.Data) return Printed(ReadReport(Send(Found.Member, {})));
    const std::wstring Result = Send(Found.Member, Found.Data(Words, Send));
    if (Found.Answers && Result != L"1") Fail(ErrorNumber::InvalidCall, L"The plug-in did not carry it out");
    return Join(Words, L" ") + (Found.Answers ? L": done\n" : L": sent\n");
}

std::wstring Usage() {
    std::wstring Text;
    for (const Command& Known : Commands) {
        std::wstring Line = L"  " + std::wstring(Known.Name) + L" " + Known.Words;
        Line.resize(std::max(Line.size(), UsageColumn), L' ');
        Text += Line + L" " + Known.Does + L"\n";
    }
    return Text +
           L"  raw MEMBER [DATA]                      the request as it is; MEMBER such as SlapPlayerRem\n";
}

} // namespace ConsoleCommands
