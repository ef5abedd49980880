#include "tests/wine/support.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "sandbox/host/packets.h"

namespace fs = std::filesystem;

namespace Support {
namespace {

constexpr UINT WatchMilliseconds = 20;

// --- The folder

void RegisterDll(const fs::path& Dll) {
    const HMODULE Module = LoadLibraryW(Dll.c_str());
    const FARPROC Register = Module ? GetProcAddress(Module, "DllRegisterServer") : nullptr;
    if (!Register || reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(Register))() != S_OK)
        throw std::runtime_error("cannot register " + Dll.string());
    FreeLibrary(Module);
}

// Each process has its own, so that one test's files never reach another's.
class Folder {
public:
    Folder() : Base(fs::path(ProgramFolder()) / L"hosts" / std::to_wstring(GetCurrentProcessId())) {
        const fs::path From = ProgramFolder();
        // A process that was killed may have left a folder of the same number.
        std::error_code Ignored;
        fs::remove_all(Base, Ignored);
        fs::create_directories(Base / L"Plugins" / L"dlls" / L"Vantor");
        fs::create_directories(Base / L"helpers");
        fs::create_directories(Base / L"profiles");
        const std::pair<const wchar_t*, const wchar_t*> Copies[] = {{L"qrvMFM.dll", L"helpers"},
                                                                    {L"qrvGMF.dll", L"helpers"},
                                                                    {L"qrvVNT.dll", L"Plugins\\dlls\\Vantor"},
                                                                    {L"qrvudpfw.dll", L"."},
                                                                    {L"gameserver.exe", L"."},
                                                                    {L"host.exe", L"."},
                                                                    {L"console.exe", L"."}};
        for (const auto& [Name, Place] : Copies) {
            const fs::path Target = Base / Place / Name;
            if (!CopyFileW((From / Name).c_str(), Target.c_str(), FALSE))
                throw std::runtime_error("cannot copy to " + Target.string());
            const std::wstring File = Name;
            if (File.ends_with(L".dll") && File != L"qrvudpfw.dll") RegisterDll(Target);
        }
        std::ofstream(Base / L"DrvFltIp.sys") << "stands for the driver";
        Text = Base.wstring();
    }
    ~Folder() {
        std::error_code Ignored;
        fs::remove_all(Base, Ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    fs::path Base;
    std::wstring Text;
};

// --- Boxes

struct Watched {
    bool IsClosing = true;
    std::vector<HWND> Open;
    std::vector<std::wstring> Titles;
    const std::function<bool()>* Condition = nullptr;
    ULONGLONG Deadline = 0;
    bool IsMet = false;
} Watch;

BOOL CALLBACK AddBox(HWND Window, LPARAM Found) {
    wchar_t Class[16] = L"";
    GetClassNameW(Window, Class, 16);
    if (std::wstring(Class) == L"#32770" && IsWindowVisible(Window))
        reinterpret_cast<std::vector<HWND>*>(Found)->push_back(Window);
    return TRUE;
}

void LookForBoxes() {
    std::vector<HWND> Now;
    EnumThreadWindows(GetCurrentThreadId(), AddBox, reinterpret_cast<LPARAM>(&Now));
    for (const HWND Box : Now) {
        if (std::find(Watch.Open.begin(), Watch.Open.end(), Box) != Watch.Open.end()) continue;
        wchar_t Title[128] = L"";
        GetWindowTextW(Box, Title, 128);
        Watch.Titles.push_back(Title);
    }
    Watch.Open = Now;
}

bool IsOver() {
    if (Watch.Condition && !Watch.IsMet) Watch.IsMet = (*Watch.Condition)();
    return Watch.IsMet || GetTickCount64() > Watch.Deadline;
}

// Ticks behind a modal box, too, and ends the box when there is nothing left to wait for.
void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
    LookForBoxes();
    if (Watch.IsClosing || IsOver())
        for (const HWND Box : Watch.Open) PostMessageW(Box, WM_COMMAND, IDOK, 0);
}

} // namespace

std::wstring ProgramFolder() {
    wchar_t Path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, Path, MAX_PATH);
    return fs::path(Path).parent_path().wstring();
}

const std::wstring& BaseFolder() {
    static const Folder Made;
    return Made.Text;
}

void WriteText(const std::wstring& Path, const std::string& Content) {
    const fs::path File = fs::path(BaseFolder()) / Path;
    fs::create_directories(File.parent_path());
    std::ofstream(File, std::ios::binary) << Content;
}

std::string ReadText(const std::wstring& Path) {
    std::ifstream File(fs::path(BaseFolder()) / Path, std::ios::binary);
    return {std::istreambuf_iterator<char>(File), {}};
}

std::vector<std::string> ErrorLog() {
    std::istringstream Log(ReadText(L"logs\\errors.log"));
    std::vector<std::string> Found;
    for (std::string Line; std::getline(Log, Line);) Found.push_back(Line);
    return Found;
}

int ReportsOf(const std::string& Procedure) {
    const std::string Wanted = "Function/Sub: " + Procedure;
    int Found = 0;
    for (const std::string& Line : ErrorLog()) {
        const std::size_t At = Line.find(Wanted);
        if (At == std::string::npos) continue;
        const std::size_t End = At + Wanted.size();
        if (End == Line.size() || !isalnum(static_cast<unsigned char>(Line[End]))) ++Found;
    }
    return Found;
}

Ended RunProgram(const std::wstring& CommandLine) {
    const fs::path Log = fs::path(BaseFolder()) / L"output.txt";
    SECURITY_ATTRIBUTES Inherited{sizeof Inherited, nullptr, TRUE};
    const HANDLE Output =
        CreateFileW(Log.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &Inherited, CREATE_ALWAYS, 0, nullptr);
    STARTUPINFOW Startup{};
    Startup.cb = sizeof Startup;
    Startup.dwFlags = STARTF_USESTDHANDLES;
    Startup.hStdOutput = Startup.hStdError = Output;
    PROCESS_INFORMATION Process{};
    std::wstring Command = CommandLine;
    const BOOL IsStarted = CreateProcessW(nullptr, Command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                          nullptr, BaseFolder().c_str(), &Startup, &Process);
    CloseHandle(Output);
    if (!IsStarted) throw std::runtime_error("cannot start a program");
    DWORD ExitCode = STILL_ACTIVE;
    const bool IsEnded =
        PumpUntil([&] { return WaitForSingleObject(Process.hProcess, 0) == WAIT_OBJECT_0; }, 2 * Patience);
    if (!IsEnded) TerminateProcess(Process.hProcess, 99);
    GetExitCodeProcess(Process.hProcess, &ExitCode);
    CloseHandle(Process.hThread);
    CloseHandle(Process.hProcess);
    return {ExitCode, ReadText(L"output.txt")};
}

bool PumpUntil(const std::function<bool()>& Condition, unsigned Milliseconds) {
    Watch.Condition = &Condition;
    Watch.Deadline = GetTickCount64() + Milliseconds;
    Watch.IsMet = false;
    const UINT_PTR Timer = SetTimer(nullptr, 0, WatchMilliseconds, Tick);
    while (!IsOver()) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, WatchMilliseconds, QS_ALLINPUT);
        for (MSG Message; PeekMessageW(&Message, nullptr, 0, 0, PM_REMOVE);) {
            TranslateMessage(&Message);
            DispatchMessageW(&Message);
        }
    }
    KillTimer(nullptr, Timer);
    Watch.Condition = nullptr;
    return Watch.IsMet;
}

void CloseBoxes(bool AtOnce) { Watch.IsClosing = AtOnce; }

std::vector<std::wstring>& BoxesSeen() { return Watch.Titles; }

// --- The game server

GameServer::GameServer(const std::wstring& Name, const std::wstring& Options, const std::string& Scenario)
    : Journal(Name + L".journal") {
    WriteText(Name + L".txt", Scenario);
    std::wstring Command =
        L"gameserver.exe --scenario " + Name + L".txt --journal " + Journal + L" " + Options;
    STARTUPINFOW Startup{};
    Startup.cb = sizeof Startup;
    if (!CreateProcessW((BaseFolder() + L"\\gameserver.exe").c_str(), Command.data(), nullptr, nullptr, FALSE,
                        CREATE_NO_WINDOW, nullptr, BaseFolder().c_str(), &Startup, &Process) ||
        !Await("start"))
        throw std::runtime_error("the game server does not start");
}

GameServer::~GameServer() {
    TerminateProcess(Process.hProcess, 0);
    WaitForSingleObject(Process.hProcess, Patience);
    CloseHandle(Process.hThread);
    CloseHandle(Process.hProcess);
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
    for (const Simulation::JournalEntry& Each : Read)
        if (Each.Kind == Kind && (Name.empty() || Each.Name == Name)) return &Each;
    return nullptr;
}

int GameServer::Count(const std::string& Kind) const {
    int Found = 0;
    for (const Simulation::JournalEntry& Each : Entries())
        if (Each.Kind == Kind) ++Found;
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
    Elements.push_back(FromWhole(Given.Server ? Given.Server->ProcessRef() : 0));
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
    BaseFolder();
    BoxesSeen().clear();
    CloseBoxes(true);
    Area = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 720, 660, nullptr,
                           nullptr, nullptr, nullptr);
    Late = Automation::Create(L"qrvVNT.clsPlugin");
    Late.Get()->QueryInterface(IID__clsPlugin, reinterpret_cast<void**>(&Early));
}

PluginTest::~PluginTest() {
    if (Early) {
        BSTR Nothing = SysAllocString(L"");
        Early->UnLoadInterface(Nothing);
        SysFreeString(Nothing);
        Early->Release();
    }
    Late.Release();
    DestroyWindow(Area);
    // What is still posted belongs to this test.
    PumpUntil([] { return GetQueueStatus(QS_POSTMESSAGE) == 0; }, 500);
}

void PluginTest::Load(Long Index, const Profile& Given) {
    Automation::Value Data = ProfileData(Given);
    BSTR Nothing = SysAllocString(L"");
    EXPECT_EQ(Early->LoadInterface(Index, HandleToLong(Area), *Data, Nothing), S_OK);
    SysFreeString(Nothing);
}

Long PluginTest::Remote(const wchar_t* Member, Long Index, const Profile& Given, const std::wstring& Data) {
    Automation::Values Arguments;
    Arguments.push_back(Automation::FromWhole(Index));
    Arguments.push_back(ProfileData(Given));
    Arguments.push_back(Automation::FromText(Data));
    return Automation::AsWhole(*Late.Call(Member, std::move(Arguments)));
}

HWND PluginTest::Frame() const { return FindWindowExW(Area, nullptr, L"frmVNT", nullptr); }

void PluginTest::Sweep(Long Index) const {
    SendMessageW(Frame(), WM_TIMER, static_cast<WPARAM>(ID_tmrVN + Index), 0);
}

} // namespace Support
