#include "endurance/operations.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "window/ids.h"

namespace fs = std::filesystem;

namespace Kill {

namespace {

struct FileRow {
    const char* Folder;
    const char* Name;
    const char* First; // what it holds at the beginning of a round
};
constexpr FileRow Files[] = {
    {"profiles/kill/settings", "BannedNames.ini",
     "[Players]\r\nFirst[1]=2026-01-01 9:00:00[-]a reason\r\nSecond[1]=2026-01-01 9:00:00[-]a reason\r\n"
     "Third[1]=2026-01-01 9:00:00[-]a reason\r\n"},
    {"profiles/kill/settings", "BannedIps.ini",
     "[IpAddresses]\r\n10.1.0.1=2026-01-01 9:00:00\r\n10.1.0.2=2026-01-01 9:00:00\r\n"
     "10.1.0.3=2026-01-01 9:00:00\r\n10.1.*=2026-01-01 9:00:00\r\n"},
    {"profiles/kill/settings", "BannedReference.ini",
     "[First]\r\n0=10.1.0.1\r\n1=10.1.0.2\r\n2=10.1.0.3\r\n[Second]\r\n0=10.1.0.2\r\n1=10.1.0.3\r\n"},
    {"profiles/kill/settings", "Slaps.ini",
     "[Messages]\r\n0=Hello.\r\n1=Mind your language.\r\n2=Play fair.\r\n3=Calm down.\r\n4=Bye.\r\n"},
    {"Plugins", "Players.ini",
     "[BanMethod]\r\nkill=0\r\n[IdlePunt]\r\nkill=0\r\n[IdleMax]\r\nkill=5\r\n[AutoRefresh]\r\nkill=0\r\n"},
    {"profiles/kill/adminlogs", "log", nullptr}};

// --- Reading

// A time stamp becomes "*"; what is none stays, and will not be what is expected.
std::string WithoutStamp(const std::string& Text) {
    const std::string Stamp = Text.substr(0, Text.find_first_not_of("0123456789-: "));
    const bool IsStamp = Stamp.size() >= 17 && std::count(Stamp.begin(), Stamp.end(), ':') == 2;
    return IsStamp ? "*" + Text.substr(Stamp.size()) : Text;
}

// "[9:05:03][Vantor] What was done) from tester (192.0.2.1)".
bool ReadLogLine(const std::string& Line, std::multiset<std::string>& Found) {
    constexpr std::string_view Head = "][Vantor] ", Tail = ") from tester (192.0.2.1)";
    const std::size_t At = Line.find(Head);
    if (!Line.starts_with('[') || At == std::string::npos || !Line.ends_with(Tail)) return false;
    Found.insert(Line.substr(At + Head.size(), Line.size() - Tail.size() - At - Head.size()));
    return true;
}

bool ReadIniLine(File Which, const std::string& Line, std::string& Section,
                 std::multiset<std::string>& Found) {
    const std::size_t Equals = Line.find('=');
    if (Line.starts_with('[') && Line.ends_with(']')) {
        Section = Line.substr(1, Line.size() - 2);
    } else if (!Line.empty()) {
        if (Equals == std::string::npos || Section.empty()) return false;
        const std::string Value = Line.substr(Equals + 1);
        Found.insert(Which == Slaps ? Value
                     : Which == Links || Which == Settings
                         ? Section + "=" + Value
                         : Line.substr(0, Equals) + "=" + WithoutStamp(Value));
    }
    return true;
}

void ReadFile(File Which, const fs::path& Path, State& Found, std::vector<std::string>& Damage) {
    std::ifstream Stream(Path, std::ios::binary);
    const std::string Whole{std::istreambuf_iterator<char>(Stream), {}};
    std::string Section;
    for (std::size_t At = 0; At < Whole.size();) {
        const std::size_t End = Whole.find("\r\n", At);
        const std::string Line = Whole.substr(At, End - At);
        const bool IsGood =
            End != std::string::npos && Line.find_first_of("\r\n") == std::string::npos &&
            (Which == Log ? ReadLogLine(Line, Found[Log]) : ReadIniLine(Which, Line, Section, Found[Which]));
        if (!IsGood) Damage.push_back(std::string(NameOf(Which)) + ": no whole line: \"" + Line + '"');
        At = End == std::string::npos ? Whole.size() : End + 2;
    }
}

// --- Changes of what must stand

std::string NameEntry(const std::string& Name) { return Name + "[1]=*[-]a reason"; }

void AddName(State& Lists, const Operation& Op) { Lists[Names].insert(NameEntry(Op.Entry)); }
void AddIp(State& Lists, const Operation& Op) { Lists[Ips].insert(Op.Other + "=*"); }
void AddSlap(State& Lists, const Operation& Op) { Lists[Slaps].insert(Op.Entry); }
void DeleteSlap(State& Lists, const Operation& Op) { Lists[Slaps].erase(Op.Entry); }

void AddAll(State& Lists, const Operation& Op) {
    AddName(Lists, Op);
    AddIp(Lists, Op);
    Lists[Links].insert(Op.Entry + "=" + Op.Other);
}

void RemoveName(State& Lists, const Operation& Op) {
    Lists[Names].erase(NameEntry(Op.Entry));
    std::erase_if(Lists[Links], [&](const std::string& Link) {
        const bool IsLinked = Link.starts_with(Op.Entry + "=");
        if (IsLinked) Lists[Ips].erase(Link.substr(Op.Entry.size() + 1) + "=*");
        return IsLinked;
    });
}

void RemoveIp(State& Lists, const Operation& Op) {
    Lists[Ips].erase(Op.Entry + "=*");
    std::erase_if(Lists[Links], [&](const std::string& Link) {
        const bool IsLinked = Link.ends_with("=" + Op.Entry);
        if (IsLinked) Lists[Names].erase(NameEntry(Link.substr(0, Link.size() - Op.Entry.size() - 1)));
        return IsLinked;
    });
}

void EditSlap(State& Lists, const Operation& Op) {
    Lists[Slaps].erase(Op.Entry);
    Lists[Slaps].insert(Op.Other);
}

void ChangeIdleMax(State& Lists, const Operation& Op) {
    std::erase_if(Lists[Settings], [](const std::string& Text) { return Text.starts_with("IdleMax="); });
    Lists[Settings].insert("IdleMax=" + Op.Other);
}

using Driver::Step;

const Kind Kinds[] = {
    {"AddBannedRem", 4, FileCount, AddName, "{$E[1]}|{a reason}|Name", "Add Banned Name ($E[1]", {}},
    {"AddBannedRem", 4, FileCount, AddIp, "{$O}|{a reason}|Ip", "Add Banned Ip ($O", {}},
    {"PuntPlayerRem",
     12,
     FileCount,
     AddAll,
     "{$E}|$O|2|Ban|{a reason}",
     "Ban Player #2 (Name: $E, IP: $O",
     {}},
    {"RemoveBannedRem", 8, Names, RemoveName, "{$E}|Name|1", "Remove Banned Name ($E", {}},
    {"RemoveBannedRem", 8, Ips, RemoveIp, "{$E}|Ip|1", "Remove Banned Ip ($E", {}},
    {"AddSlapRem", 4, FileCount, AddSlap, "$E", "Add Slap Message (Message: $E", {}},
    {"EditSlapRem", 4, Slaps, EditSlap, "$E|$O", "Edit Slap Message (Old Message: $E, New Message: $O", {}},
    {"DeleteSlapRem", 8, Slaps, DeleteSlap, "$E", "Delete Slap Message (Message: $E", {}},
    {"SetIdleMax", 4, Settings, ChangeIdleMax, "$O", "Set Idle Max Time (Minutes: $O", {}},
    {"add a name",
     60,
     FileCount,
     AddName,
     nullptr,
     nullptr,
     {{Driver::Type, ID_txtBannedName, L"$E"},
      {Driver::Type, ID_txtBanReason, L"a reason"},
      {Driver::Click, ID_cmdAddName, L""}}},
    {"remove a name",
     100,
     Names,
     RemoveName,
     nullptr,
     nullptr,
     {{Driver::Select, ID_lstBannedNames, L"[1] $E"}, {Driver::Click, ID_cmdRemoveName, L""}}},
    {"add an address",
     60,
     FileCount,
     AddIp,
     nullptr,
     nullptr,
     {{Driver::Type, ID_txtAddIp, L"$O"}, {Driver::Click, ID_cmdAddIp, L""}}},
    {"remove an address",
     100,
     Ips,
     RemoveIp,
     nullptr,
     nullptr,
     {{Driver::Select, ID_lstBannedIps, L"$E"}, {Driver::Click, ID_cmdRemoveIp, L""}}},
    {"add a slap message",
     20,
     FileCount,
     AddSlap,
     nullptr,
     nullptr,
     {{Driver::Type, ID_txtSlap, L"$E"}, {Driver::Click, ID_cmdSlapAdd, L""}}},
    {"edit a slap message",
     10,
     Slaps,
     EditSlap,
     nullptr,
     nullptr,
     {{Driver::Select, ID_lstSlaps, L"$E"},
      {Driver::DoubleClick, ID_lstSlaps, L""},
      {Driver::Type, ID_txtSlap, L"$O"},
      {Driver::Click, ID_cmdSlapEdit, L""}}},
    {"delete a slap message",
     10,
     Slaps,
     DeleteSlap,
     nullptr,
     nullptr,
     {{Driver::Select, ID_lstSlaps, L"$E"}, {Driver::Click, ID_cmdSlapDelete, L""}}},
    {"import",
     400,
     FileCount,
     AddAll,
     nullptr,
     nullptr,
     {{Driver::WriteImportFile, 0, L"$O          $E.               a reason."},
      {Driver::TakeMenuEntry, ID_mnuMerrow300, L""}}},
};

} // namespace

const char* NameOf(File Which) { return Files[Which].Name; }

void WriteFirstFiles(const fs::path& Base) {
    fs::remove_all(Base / Files[Log].Folder);
    for (const FileRow& File : Files) {
        fs::create_directories(Base / File.Folder);
        if (File.First != nullptr)
            std::ofstream(Base / File.Folder / File.Name, std::ios::binary) << File.First;
    }
}

State Read(const fs::path& Base, std::vector<std::string>& Damage) {
    State Found;
    for (int Which = 0; Which < Log; ++Which)
        ReadFile(static_cast<File>(Which), Base / Files[Which].Folder / Files[Which].Name, Found, Damage);
    for (const fs::directory_entry& Day : fs::directory_iterator(Base / Files[Log].Folder))
        ReadFile(Log, Day.path(), Found, Damage);
    return Found;
}

std::string Filled(std::string Text, const Operation& Op) {
    for (const auto& [Mark, Content] : {std::pair("$E", &Op.Entry), std::pair("$O", &Op.Other)})
        for (std::size_t At = 0; (At = Text.find(Mark, At)) != std::string::npos; At += Content->size())
            Text.replace(At, 2, *Content);
    return Text;
}

void Apply(State& Lists, const Operation& Op) {
    Op.What->Change(Lists, Op);
    if (Op.What->LogLine != nullptr) Lists[Log].insert(Filled(Op.What->LogLine, Op));
}

Operation Source::Next(const State& Lists) {
    ++Number;
    for (;;) {
        const Kind& What = Kinds[Random() % std::size(Kinds)];
        const std::string Digits = std::to_string(Number);
        Operation Op{&What, "Name" + Digits, "10.0." + Digits.substr(2) + ".11"};
        if (What.PicksFrom == Settings) Op.Other = Digits;
        if (What.PicksFrom == FileCount || What.PicksFrom == Settings) return Op;
        const auto& Present = Lists[What.PicksFrom];
        if (Present.empty()) continue;
        const auto Nth = static_cast<std::ptrdiff_t>(Random() % Present.size());
        const std::string& Whole = *std::next(Present.begin(), Nth);
        // Of "Bob[1]=*[-]a reason" and "10.0.0.1=*" what stands first.
        Op.Entry = What.PicksFrom == Slaps ? Whole : Whole.substr(0, Whole.find_first_of("[="));
        return Op;
    }
}

} // namespace Kill
