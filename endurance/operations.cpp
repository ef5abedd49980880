#include "endurance/operations.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "endurance/driver.h"
#include "endurance/kill_child.h"
#include "window/ids.h"

namespace fs = std::filesystem;

namespace Kill {

namespace {

constexpr const char* SettingsFolder = "profiles/kill/settings";
constexpr const char* Paths[] = {"BannedNames.ini", "BannedIps.ini", "BannedReference.ini",
                                 "Slaps.ini",       "Players.ini",   ""};

fs::path PathOf(const fs::path& Base, File Which) {
    return Base / (Which == Settings ? "Plugins" : SettingsFolder) / Paths[Which];
}

// --- Reading

std::string ReadWhole(const fs::path& Path) {
    std::ifstream Stream(Path, std::ios::binary);
    return {std::istreambuf_iterator<char>(Stream), {}};
}

// A time stamp becomes "*"; what is none stays, and will not be what is expected.
std::string WithoutStamp(const std::string& Text) {
    const std::size_t End = Text.find_first_not_of("0123456789-: ");
    const std::string Stamp = Text.substr(0, End);
    const bool IsStamp = Stamp.size() >= 17 && std::count(Stamp.begin(), Stamp.end(), ':') == 2;
    return IsStamp ? "*" + Text.substr(Stamp.size()) : Text;
}

std::string EntryOf(File Which, const std::string& Section, const std::string& Key,
                    const std::string& Value) {
    switch (Which) {
    case Links: return Section + "=" + Value;
    case Slaps: return Value;
    case Settings: return Section + "=" + Value;
    default: return Key + "=" + WithoutStamp(Value);
    }
}

// "[9:05:03 AM][Vantor] What was done) from tester (192.0.2.1)".
bool ReadLogLine(const std::string& Line, std::multiset<std::string>& Found) {
    constexpr std::string_view Head = "][Vantor] ", Tail = ") from tester (192.0.2.1)";
    const std::size_t At = Line.find(Head);
    if (!Line.starts_with('[') || At == std::string::npos || !Line.ends_with(Tail)) return false;
    Found.insert(Line.substr(At + Head.size(), Line.size() - Tail.size() - At - Head.size()));
    return true;
}

bool ReadIniLine(File Which, const std::string& Line, std::string& Section,
                 std::multiset<std::string>& Found) {
    if (Line.empty()) return true;
    if (Line.starts_with('[') && Line.ends_with(']')) {
        Section = Line.substr(1, Line.size() - 2);
        return true;
    }
    const std::size_t Equals = Line.find('=');
    if (Equals == std::string::npos || Section.empty()) return false;
    Found.insert(EntryOf(Which, Section, Line.substr(0, Equals), Line.substr(Equals + 1)));
    return true;
}

void ReadFile(File Which, const fs::path& Path, State& Found, std::vector<std::string>& Damage) {
    const std::string Whole = ReadWhole(Path);
    std::string Section;
    for (std::size_t At = 0; At < Whole.size();) {
        const std::size_t End = Whole.find("\r\n", At);
        const std::string Line = Whole.substr(At, End - At);
        const bool IsGood =
            End != std::string::npos && Line.find('\n') == std::string::npos &&
            (Which == Log ? ReadLogLine(Line, Found[Log]) : ReadIniLine(Which, Line, Section, Found[Which]));
        if (!IsGood) Damage.push_back(std::string(NameOf(Which)) + ": no whole line: \"" + Line + '"');
        At = End == std::string::npos ? Whole.size() : End + 2;
    }
}

// --- Changes of what must stand

void Logged(State& Now, const std::string& What) { Now[Log].insert(What); }

void AddName(State& Now, const Operation& Op) { Now[Names].insert(Op.Entry + "[1]=*[-]a reason"); }
void AddIp(State& Now, const Operation& Op) { Now[Ips].insert(Op.Other + "=*"); }
void AddSlap(State& Now, const Operation& Op) { Now[Slaps].insert(Op.Entry); }
void DeleteSlap(State& Now, const Operation& Op) { Now[Slaps].erase(Op.Entry); }
void Unban(State& Now, const std::string& Name) { Now[Names].erase(Name + "[1]=*[-]a reason"); }

void AddAll(State& Now, const Operation& Op) {
    AddName(Now, Op);
    AddIp(Now, Op);
    Now[Links].insert(Op.Entry + "=" + Op.Other);
}

void RemoveName(State& Now, const Operation& Op) {
    Unban(Now, Op.Entry);
    std::erase_if(Now[Links], [&](const std::string& Link) {
        if (!Link.starts_with(Op.Entry + "=")) return false;
        Now[Ips].erase(Link.substr(Op.Entry.size() + 1) + "=*");
        return true;
    });
}

void RemoveIp(State& Now, const Operation& Op) {
    Now[Ips].erase(Op.Entry + "=*");
    std::erase_if(Now[Links], [&](const std::string& Link) {
        if (!Link.ends_with("=" + Op.Entry)) return false;
        Unban(Now, Link.substr(0, Link.size() - Op.Entry.size() - 1));
        return true;
    });
}

void EditSlap(State& Now, const Operation& Op) {
    Now[Slaps].erase(Op.Entry);
    Now[Slaps].insert(Op.Other);
}

void ChangeIdleMax(State& Now, const Operation& Op) {
    std::erase_if(Now[Settings], [](const std::string& Each) { return Each.starts_with("IdleMax="); });
    Now[Settings].insert("IdleMax=" + Op.Other.substr(5));
}

// --- Doing it

using Child::Encoded;
using Child::Remote;
using Child::Window;

std::wstring Wide(const std::string& Text) { return {Text.begin(), Text.end()}; }

void WriteImportFile(const Operation& Op) {
    std::string Line = Op.Other;
    Line.resize(19, ' ');
    Line += Op.Entry + ".";
    Line.resize(40, ' ');
    std::ofstream("import.txt", std::ios::binary) << Line << "a reason.\r\n";
    Driver::ChooseFile(fs::absolute("import.txt").wstring());
}

const Kind Kinds[] = {
    {"AddBannedRem, a name", 4, FileCount, false,
     [](State& Now, const Operation& Op) {
         AddName(Now, Op);
         Logged(Now, "Add Banned Name (" + Op.Entry + "[1]");
     },
     [](const Operation& Op) {
         Remote(L"AddBannedRem", Encoded(Op.Entry + "[1]") + L"|" + Encoded("a reason") + L"|Name");
     }},
    {"AddBannedRem, an address", 4, FileCount, false,
     [](State& Now, const Operation& Op) {
         AddIp(Now, Op);
         Logged(Now, "Add Banned Ip (" + Op.Other);
     },
     [](const Operation& Op) {
         Remote(L"AddBannedRem", Encoded(Op.Other) + L"|" + Encoded("a reason") + L"|Ip");
     }},
    {"PuntPlayerRem with a ban", 12, FileCount, false,
     [](State& Now, const Operation& Op) {
         AddAll(Now, Op);
         Logged(Now, "Ban Player #2 (Name: " + Op.Entry + ", IP: " + Op.Other);
     },
     [](const Operation& Op) {
         Remote(L"PuntPlayerRem",
                Encoded(Op.Entry) + L"|" + Wide(Op.Other) + L"|2|Ban|" + Encoded("a reason"));
     }},
    {"RemoveBannedRem, a name with links", 8, Names, false,
     [](State& Now, const Operation& Op) {
         RemoveName(Now, Op);
         Logged(Now, "Remove Banned Name (" + Op.Entry);
     },
     [](const Operation& Op) { Remote(L"RemoveBannedRem", Encoded(Op.Entry) + L"|Name|1"); }},
    {"RemoveBannedRem, an address with links", 8, Ips, false,
     [](State& Now, const Operation& Op) {
         RemoveIp(Now, Op);
         Logged(Now, "Remove Banned Ip (" + Op.Entry);
     },
     [](const Operation& Op) { Remote(L"RemoveBannedRem", Encoded(Op.Entry) + L"|Ip|1"); }},
    {"AddSlapRem", 4, FileCount, false,
     [](State& Now, const Operation& Op) {
         AddSlap(Now, Op);
         Logged(Now, "Add Slap Message (Message: " + Op.Entry);
     },
     [](const Operation& Op) { Remote(L"AddSlapRem", Wide(Op.Entry)); }},
    {"EditSlapRem", 4, Slaps, false,
     [](State& Now, const Operation& Op) {
         EditSlap(Now, Op);
         Logged(Now, "Edit Slap Message (Old Message: " + Op.Entry + ", New Message: " + Op.Other);
     },
     [](const Operation& Op) { Remote(L"EditSlapRem", Wide(Op.Entry + "|" + Op.Other)); }},
    {"DeleteSlapRem", 8, Slaps, false,
     [](State& Now, const Operation& Op) {
         DeleteSlap(Now, Op);
         Logged(Now, "Delete Slap Message (Message: " + Op.Entry);
     },
     [](const Operation& Op) { Remote(L"DeleteSlapRem", Wide(Op.Entry)); }},
    {"SetIdleMax", 4, FileCount, false,
     [](State& Now, const Operation& Op) {
         ChangeIdleMax(Now, Op);
         Logged(Now, "Set Idle Max Time (Minutes: " + Op.Other.substr(5));
     },
     [](const Operation& Op) { Remote(L"SetIdleMax", Wide(Op.Other.substr(5))); }},
    {"window: add a name", 60, FileCount, true, AddName,
     [](const Operation& Op) {
         Driver::Type(Window(), ID_txtBannedName, Wide(Op.Entry));
         Driver::Type(Window(), ID_txtBanReason, L"a reason");
         Driver::Click(Window(), ID_cmdAddName);
     }},
    {"window: remove a name with links", 100, Names, true, RemoveName,
     [](const Operation& Op) {
         Driver::Select(Window(), ID_lstBannedNames, L"[1] " + Wide(Op.Entry));
         Driver::Click(Window(), ID_cmdRemoveName);
     }},
    {"window: add an address", 60, FileCount, true, AddIp,
     [](const Operation& Op) {
         Driver::Type(Window(), ID_txtAddIp, Wide(Op.Other));
         Driver::Click(Window(), ID_cmdAddIp);
     }},
    {"window: remove an address with links", 100, Ips, true, RemoveIp,
     [](const Operation& Op) {
         Driver::Select(Window(), ID_lstBannedIps, Wide(Op.Entry));
         Driver::Click(Window(), ID_cmdRemoveIp);
     }},
    {"window: add a slap message", 20, FileCount, true, AddSlap,
     [](const Operation& Op) {
         Driver::Type(Window(), ID_txtSlap, Wide(Op.Entry));
         Driver::Click(Window(), ID_cmdSlapAdd);
     }},
    {"window: edit a slap message", 10, Slaps, true, EditSlap,
     [](const Operation& Op) {
         Driver::Select(Window(), ID_lstSlaps, Wide(Op.Entry));
         Driver::DoubleClick(Window(), ID_lstSlaps);
         Driver::Type(Window(), ID_txtSlap, Wide(Op.Other));
         Driver::Click(Window(), ID_cmdSlapEdit);
     }},
    {"window: delete a slap message", 10, Slaps, true, DeleteSlap,
     [](const Operation& Op) {
         Driver::Select(Window(), ID_lstSlaps, Wide(Op.Entry));
         Driver::Click(Window(), ID_cmdSlapDelete);
     }},
    {"window: import", 400, FileCount, true, AddAll,
     [](const Operation& Op) {
         WriteImportFile(Op);
         Driver::TakeMenuEntry(Window(), ID_mnuMerrow300);
     }},
};

// The part of an entry that names it: of "Bob[1]=*[-]a reason" and "10.0.0.1=*" what stands first.
std::string Subject(File Which, const std::string& Entry) {
    return Which == Slaps ? Entry : Entry.substr(0, Entry.find_first_of("[="));
}

} // namespace

const char* NameOf(File Which) { return Which == Log ? "log" : Paths[Which]; }

File FileAt(const fs::path& Path) {
    int Which = 0;
    while (Which < Log && Path.filename() != Paths[Which]) ++Which;
    return Which < Log ? static_cast<File>(Which) : FileCount;
}

void WriteFirstFiles(const fs::path& Base) {
    static constexpr const char* Texts[] = {
        "[Players]\r\nFirst[1]=2026-01-01 9:00:00[-]a reason\r\nSecond[1]=2026-01-01 9:00:00[-]a reason\r\n"
        "Third[1]=2026-01-01 9:00:00[-]a reason\r\n",
        "[IpAddresses]\r\n10.1.0.1=2026-01-01 9:00:00\r\n10.1.0.2=2026-01-01 9:00:00\r\n"
        "10.1.0.3=2026-01-01 9:00:00\r\n10.1.*=2026-01-01 9:00:00\r\n",
        "[First]\r\n0=10.1.0.1\r\n1=10.1.0.2\r\n2=10.1.0.3\r\n[Second]\r\n0=10.1.0.2\r\n1=10.1.0.3\r\n",
        "[Messages]\r\n0=Hello.\r\n1=Mind your language.\r\n2=Play fair.\r\n3=Calm down.\r\n4=Bye.\r\n",
        "[BanMethod]\r\nkill=0\r\n[IdlePunt]\r\nkill=0\r\n[IdleMax]\r\nkill=5\r\n[AutoRefresh]\r\nkill="
        "0\r\n"};
    fs::create_directories(Base / SettingsFolder);
    fs::remove_all(Base / "profiles/kill/adminlogs");
    for (int Which = 0; Which < Log; ++Which)
        std::ofstream(PathOf(Base, static_cast<File>(Which)), std::ios::binary) << Texts[Which];
}

State Read(const fs::path& Base, std::vector<std::string>& Damage) {
    State Found;
    for (int Which = 0; Which < Log; ++Which)
        ReadFile(static_cast<File>(Which), PathOf(Base, static_cast<File>(Which)), Found, Damage);
    std::error_code None; // no log was written yet
    for (const fs::directory_entry& Each : fs::directory_iterator(Base / "profiles/kill/adminlogs", None))
        ReadFile(Log, Each.path(), Found, Damage);
    return Found;
}

Operation Source::Next(const State& Now) {
    ++Number;
    for (;;) {
        const Kind& What = Kinds[Random() % std::size(Kinds)];
        Operation Op{&What, "Name" + std::to_string(1000 + Number),
                     "10.0." + std::to_string(100 + Number) + ".1"};
        if (What.PicksFrom == FileCount) return Op;
        const auto& Present = Now[What.PicksFrom];
        if (Present.empty()) continue;
        const auto Nth = static_cast<std::ptrdiff_t>(Random() % Present.size());
        Op.Entry = Subject(What.PicksFrom, *std::next(Present.begin(), Nth));
        return Op;
    }
}

} // namespace Kill
