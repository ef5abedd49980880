// Hostile text: what remote consoles send, what stands in the list files and the settings, a ban file to
// import, and the rules for addresses and numbers.
#include <algorithm>

#include "enforcement/kernel_method.h"
#include "enforcement/sweep.h"
#include "game/mdlVNT.h"
#include "game/player_table.h"
#include "game/settings.h"
#include "host/memory_helper.h"
#include "lists/ban_import.h"
#include "lists/ban_lists.h"
#include "lists/ban_references.h"
#include "lists/slap_messages.h"
#include "plugin/lifecycle.h"
#include "plugin/remote.h"
#include "tests/fakes/server.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/invariants.h"

namespace {

using Invariants::Require;
using Invariants::Run;

bool HoldsBreak(TextView Text) { return Text.find_first_of(Invariants::Breaks) != TextView::npos; }

// As the system's private profiles see a file: a line feed ends a line.
std::wstring AsFile(const std::wstring& Text) {
    std::wstring File;
    for (const wchar_t C : Text) {
        if (C == L'\n')
            File += CrLf;
        else if (C != L'\r' && C != L'\0')
            File += C;
    }
    return File + std::wstring(CrLf);
}

// --- Remote members.

const RemoteMember<Long>* const Members[] = {&PuntPlayerRem, &ArmPlayerRem, &RemoveBannedRem, &AddBannedRem,
                                             &SlapPlayerRem, &AddSlapRem,   &DeleteSlapRem,   &EditSlapRem,
                                             &SetBanMethod,  &SetIdlePunt,  &SetIdleMax};

std::size_t LogLines() {
    std::size_t Count = 0;
    for (const TextView Folder : {L"C:\\Host\\profiles\\Server1\\adminlogs", L"C:\\Host\\adminlogs"})
        Count += Split(Outside::FileText(std::wstring(Folder) + L"\\2024-05-06.txt"), CrLf).size();
    return Count;
}

// The first and the fifth field as a console sends them, so that the text behind the encoding is reached.
std::wstring Encoded(const std::wstring& Text) {
    Lines Fields = Split(Text, L"|");
    for (const std::size_t Field : {0u, 1u, 4u})
        if (Field < Fields.size() && (Field != 1 || Fields.size() == 3))
            Fields[Field] = MemoryHelper::Enc64(Fields[Field]);
    return Join(Fields, L"|");
}

// One element of the host's data becomes text of the input, or is missing.
void ChangeHostData(Pdat& Data, Input& From) {
    const std::uint8_t Element = From.Byte();
    if (Element >= 128) return;
    if (Element >= 64) Data.resize(Element - 64u);
    if (Element >= Data.size()) return;
    HostValue& Changed = Data[Element];
    const std::string Bytes = From.Bytes(From.Below(24));
    Changed = {};
    Changed.Text = std::wstring(Bytes.begin(), Bytes.end());
    if (From.Byte() & 1) Changed.Number = From.Long();
}

void RemoteMembers(Input& From) {
    RemoteRequest Sent = Request({});
    const std::uint8_t Flags = From.Byte();
    const RemoteMember<Long>& Called = *Members[From.Below(std::size(Members))];
    if (Flags & 1) ChangeHostData(Sent.HostData, From);
    if (Flags & 2) Sent.HostData[PdatElement::HostWideLogs].Flag = true;
    const std::wstring Text = From.Text();
    Sent.Data->Text = Flags & 4 ? Encoded(Text) : Text;
    const std::size_t Before = LogLines();
    Run("remote member", 400, 3, [&] {
        const Long Result = Call(Called, Sent);
        const std::size_t Written = LogLines() - Before;
        Require(Result == 0 || Result == 1, "the result is 0 or 1");
        Require(Result == 0 || Written > 0, "what is done is logged");
        Require(Written <= 2, "one line is logged"); // two when the file was missing
        if (HoldsBreak(*Sent.Data->Text) && Result == 0)
            Require(Written == 0, "what is refused is not logged");
    });
    Run("reply", 2000, 30, [&] { CallGetPlayersRem(Sent); });
}

// --- Files that somebody has edited by hand.

void HandEditedFiles(Input& From) {
    constexpr TextView Names[] = {L"BannedNames.ini", L"BannedIps.ini", L"BannedReference.ini", L"Slaps.ini"};
    const std::uint32_t Which = From.Below(6);
    const std::uint8_t Flags = From.Byte();
    const std::wstring Text = AsFile(From.Text());
    Outside::PutFile(Which < 4 ? SettingsFile(Names[Which]) : std::wstring(PlayersIni), Text);
    if (Flags & 1) Outside::PutIni(PlayersIni, L"BanMethod", L"Server1", L"1");
    if (Flags & 2) Outside::PutIni(PlayersIni, L"IdlePunt", L"Server1", L"1");
    const long MostCalls = 2000 + 40 * static_cast<long>(Text.size());
    const std::size_t MostReports = 5;
    Run("tick", MostCalls, MostReports, [] { tmrVN_Timer(TestProfile); });
    Run("load", MostCalls, MostReports, [] { Load(TestProfile, HostWindow, HostData()); });
    Run("lists", MostCalls, MostReports, [] {
        for (const std::wstring& Item : GetBannedNames(TestProfile).value_or(Lines()))
            Require(BannedName::OfItem(Item).Item() == Item, "an item and its key name each other");
        GetBannedIps(TestProfile);
    });
    Run("slaps", MostCalls, MostReports, [] {
        try {
            AddSlap(TestProfile, L"one more");
            DeleteSlap(TestProfile, L"one more");
        } catch (const Failure&) { // a file with two sections of that name may give back another message
        }
        const Lines Messages = ReadSlaps(TestProfile).value_or(Lines());
        if (Messages.size() > 1) DeleteSlap(TestProfile, Messages.front());
        const Lines Left = ReadSlaps(TestProfile).value_or(Lines());
        // A second section of the same name, unseen before, may come to light.
        for (std::size_t Each = 1; Each < Messages.size(); ++Each)
            Require(std::find(Left.begin(), Left.end(), Messages[Each]) != Left.end(), "no message is lost");
    });
    Run("links", MostCalls, MostReports, [] {
        const BanFiles Files(TestProfile);
        AddBanReference(Files, L"Bob", L"1.2.3.4");
        UnlinkAddress(Files, L"1.2.3.4", [](const std::wstring&) {});
        UnlinkName(Files, L"Bob", [](const std::wstring&) {});
    });
    Run("second tick", MostCalls, MostReports, [] { tmrVN_Timer(TestProfile); });
}

// --- A ban file of another manager.

void ImportedFile(Input& From) {
    const std::wstring Text = From.Text();
    Outside::PutFile(L"C:\\bans.txt", Text);
    const long MostCalls = 100 + 40 * static_cast<long>(Text.size());
    std::vector<ImportedEntry> Added;
    Run("import", MostCalls, 0, [&] {
        try {
            const ImportCounts Counts = ImportBanFile(BanFiles(TestProfile), L"C:\\bans.txt", Added);
            Require(Counts.Found == Counts.Added + Counts.Skipped, "what is found is added or skipped");
            Require(static_cast<std::size_t>(Counts.Added) == Added.size(), "what is added is shown");
        } catch (const Failure&) { // a line that is none of a ban file ends the import
        }
    });
    for (const ImportedEntry& Entry : Added)
        if (Entry.IsName)
            Require(BannedName::OfItem(Entry.Item).Key().find(L'=') == std::wstring::npos,
                    "a key is one key");
    Run("tick", MostCalls + 2000, 5, [] { tmrVN_Timer(TestProfile); });
}

// --- The rules for addresses and numbers.

// The error number of a call that may fail; 0 when it does not.
template <class F> Long ErrorOf(F&& Call) {
    try {
        Call();
        return 0;
    } catch (const Failure& Caught) {
        return Caught.Number;
    }
}

void Rules(Input& From) {
    const std::wstring Text = From.Text();
    Require(IsNumeric(Text) == (ErrorOf([&] { ToNumber(Text); }) == 0), "numeric is what has a number");
    Long Whole = 0;
    const Long Error = ErrorOf([&] { Whole = ToWhole(Text); });
    Require(IsNumeric(Text) ? Error == 0 || Error == ErrorNumber::Overflow
                            : Error == ErrorNumber::TypeMismatch,
            "a whole number fails in two ways only");
    Require(ToWhole(ToText(Whole)) == Whole, "a number's text is its number");
    Require(Join(Split(Text, L"|"), L"|") == Text, "what is split is joined again");
    Require(!HoldsBreak(WithoutControls(Text)), "line breaks are taken out");

    std::wstring Dotted;
    Long Packed = 0;
    const bool IsAddress = ErrorOf([&] { Dotted = ConvertIP(Text); }) == 0;
    Require(!IsAddress || ErrorOf([&] { Packed = IpToLong(Dotted); }) == 0,
            "an address of the game is an address");
    Require(!IsAddress || IsValidIp(Dotted), "an address of the game is valid");
    const Long Refusal = ErrorOf([&] { Packed = IpToLong(Text); });
    // An address without a pattern is left to fail only by a part below 0, which matches nobody.
    const bool Exact = IsValidIp(Text) && Text.find(L'*') == std::wstring::npos;
    Require(!Exact || Refusal == 0 ||
                (Refusal == ErrorNumber::Overflow && Text.find(L'-') != std::wstring::npos),
            "a valid address has a number");
    Require(!Settings::IsPeriod(Text) || ToNumber(Text) > 0, "a period is a number above 0");
}

void WithServer(void (*Area)(Input&), Input& From) {
    Server Game({.MaxPlayers = 4}); // a small table: the text is what counts here
    Game.Join(1, "Alice", "10.0.0.1");
    Game.Join(3, "Bob");
    BanName(L"Alice[1]");
    BanIp(L"9.9.9.9");
    Outside::PutFile(SettingsFile(L"BannedReference.ini"), L"[Bob]\r\n0=10.0.0.7\r\n");
    Outside::PutFile(SettingsFile(L"Slaps.ini"), L"[Messages]\r\n0=one\r\n1=two\r\n");
    Area(From);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    constexpr void (*Areas[])(Input&) = {RemoteMembers, HandEditedFiles, ImportedFile};
    Input From(Data, Size);
    const std::uint32_t Area = From.Below(std::size(Areas) + 1);
    Outside::Reports.clear();
    if (Area < std::size(Areas))
        WithServer(Areas[Area], From);
    else
        Rules(From); // needs no server, and is many times as quick without
    return 0;
}
