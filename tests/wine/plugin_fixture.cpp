// The game server process and the plug-in, as the tests use them.
#include "tests/wine/support.h"

#include <sstream>
#include <utility>

namespace Support {
namespace {

struct Search {
    int Id;
    HWND Found;
};
BOOL CALLBACK Match(HWND Window, LPARAM Wanted) {
    auto* Asked = reinterpret_cast<Search*>(Wanted);
    if (GetDlgCtrlID(Window) == Asked->Id) Asked->Found = Window;
    return Asked->Found == nullptr;
}

} // namespace

void SetControlWord(unsigned short Word) { asm volatile("fnclex\n\tfldcw %0" : : "m"(Word)); }

unsigned short ControlWord() {
    unsigned short Word = 0;
    asm volatile("fnstcw %0" : "=m"(Word));
    return Word;
}

HWND ControlOf(HWND Window, int Id) {
    Search Asked{Id, nullptr};
    EnumChildWindows(Window, Match, reinterpret_cast<LPARAM>(&Asked));
    return Asked.Found;
}

// --- The game server

GameServer::GameServer(const std::wstring& Name, const std::wstring& Options, const std::string& Scenario)
    : Journal(Name + L".journal") {
    WriteText(Name + L".txt", Scenario);
    WriteText(Journal, ""); // of a server of the same name
    Program = std::make_unique<Process>(L"\"" + BaseFolder() + L"\\gameserver.exe\" --scenario " + Name +
                                        L".txt --journal " + Journal + L" " + Options);
    if (!Await("start")) throw std::runtime_error("the game server does not start");
}

std::vector<Simulation::JournalEntry> GameServer::Entries() const {
    const std::string Text = ReadText(Journal);
    std::istringstream Whole(Text.substr(0, Text.find_last_of('\n') + 1));
    std::vector<Simulation::JournalEntry> Found;
    for (std::string Line; std::getline(Whole, Line);) Found.push_back(Simulation::ParseEntry(Line));
    return Found;
}

const Simulation::JournalEntry* GameServer::Find(const std::string& Kind, const std::string& Name) const {
    Read = Entries();
    for (const Simulation::JournalEntry& Item : Read)
        if (Item.Kind == Kind && (Name.empty() || Item.Name == Name)) return &Item;
    return nullptr;
}

int GameServer::Count(const std::string& Kind) const {
    int Found = 0;
    for (const Simulation::JournalEntry& Entry : Entries())
        if (Entry.Kind == Kind) ++Found;
    return Found;
}

bool GameServer::Await(const std::string& Kind, const std::string& Name, unsigned Milliseconds) const {
    return PumpUntil([&] { return Find(Kind, Name) != nullptr; }, Milliseconds);
}

// --- The plug-in

Automation::Values ProfileElements(const Profile& Given) {
    using namespace Automation;
    Values Elements;
    Elements.push_back(FromText(L"host text"));
    Elements.push_back(FromText(Given.GameId));
    const Long Process = Given.Server ? Given.Server->ProcessRef() : 0;
    Elements.push_back(FromWhole(Given.OtherProcess ? Given.OtherProcess : Process));
    for (int At = 3; At <= 5; ++At) Elements.push_back(FromText(L"host text"));
    Elements.push_back(FromWhole(Given.Server ? Given.Server->MessageRef() : 0));
    Elements.push_back(FromText(Given.Folder));
    Elements.push_back(FromText(L"host text"));
    Elements.push_back(Value());
    Elements.push_back(FromText(L"tester (192.0.2.1)"));
    Elements.push_back(FromBoolean(Given.HostWideLogs));
    Elements.push_back(FromWhole(600 * 15));
    Elements.push_back(FromWhole(700 * 15));
    return Elements;
}

Automation::Value ProfileData(const Profile& Given) { return Automation::FromList(ProfileElements(Given)); }

PluginTest::PluginTest() {
    WriteText(L"logs\\errors.log", "");
    BoxesSeen().clear();
    CloseBoxes(true);
    Area = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 720, 660, nullptr,
                           nullptr, nullptr, nullptr);
    CreatePlugin();
}

void PluginTest::CreatePlugin() {
    Late = Automation::Create(L"qrvVNT.clsPlugin");
    Late.Get()->QueryInterface(IID__clsPlugin, reinterpret_cast<void**>(&Early));
}

void PluginTest::LetGo() {
    Early->UnLoadInterface(nullptr);
    std::exchange(Early, nullptr)->Release();
    Late.Release();
    CoFreeUnusedLibrariesEx(0, 0);
}

PluginTest::~PluginTest() {
    if (Early) LetGo();
    DestroyWindow(Area);
    // The packet filter's own thread keeps its library, and writes to the engine's files, until it has ended.
    const std::wstring Filter = BaseFolder() + L"\\qrvudpfw.dll";
    EXPECT_TRUE(PumpUntil([&] { return GetModuleHandleW(Filter.c_str()) == nullptr; }));
    // What is still posted belongs to this test.
    PumpUntil([] { return GetQueueStatus(QS_POSTMESSAGE) == 0; }, 500);
}

void PluginTest::Load(Long Index, const Profile& Given) {
    Automation::Value Data = ProfileData(Given);
    EXPECT_EQ(Early->LoadInterface(Index, HandleToLong(Area), *Data, nullptr), S_OK);
}

Long PluginTest::Remote(const wchar_t* Member, Long Index, const Profile& Given, const std::wstring& Data) {
    Automation::Values Arguments;
    Arguments.push_back(Automation::FromWhole(Index));
    Arguments.push_back(ProfileData(Given));
    Arguments.push_back(Automation::FromText(Data));
    return Automation::AsWhole(*Late.Call(Member, std::move(Arguments)));
}

HWND PluginTest::Frame() const { return FindWindowExW(Area, nullptr, L"frmVNT", nullptr); }

HWND PluginTest::Control(int Id) const { return ControlOf(Frame(), Id); }

void PluginTest::Sweep(Long Index) const {
    SendMessageW(Frame(), WM_TIMER, static_cast<WPARAM>(ID_tmrVN + Index), 0);
}

} // namespace Support
