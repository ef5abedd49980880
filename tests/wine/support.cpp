#include "tests/wine/support.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "tests/wine/remove_folder.h"

namespace fs = std::filesystem;

namespace Support {
namespace {

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
        RemoveFolder(Base); // a process that was killed may have left one of the same number
        fs::create_directories(Base / L"Plugins" / L"dlls" / L"Vantor");
        fs::create_directories(Base / L"helpers");
        fs::create_directories(Base / L"profiles");
        const std::pair<const wchar_t*, const wchar_t*> Copies[] = {{L"qrvMFM.dll", L"helpers"},
                                                                    {L"qrvGMF.dll", L"helpers"},
                                                                    {L"qrvVNT.dll", L"Plugins\\dlls\\Vantor"},
                                                                    {L"qrvudpfw.dll", L"."},
                                                                    {L"sandbox_engine.dll", L"."},
                                                                    {L"gameserver.exe", L"."},
                                                                    {L"host.exe", L"."},
                                                                    {L"console.exe", L"."}};
        for (const auto& [Name, Place] : Copies) {
            const fs::path Target = Base / Place / Name;
            if (!CopyFileW((From / Name).c_str(), Target.c_str(), FALSE))
                throw std::runtime_error("cannot copy to " + Target.string());
            // Of the host's own folder nothing is registered.
            if (Target.extension() == L".dll" && Place != std::wstring(L".")) RegisterDll(Target);
        }
        Text = Base.wstring();
    }
    ~Folder() { RemoveFolder(Base); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    fs::path Base;
    std::wstring Text;
};

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

Process::Process(std::wstring CommandLine, HANDLE Output) {
    STARTUPINFOW Startup{};
    Startup.cb = sizeof Startup;
    Startup.dwFlags = Output ? STARTF_USESTDHANDLES : 0;
    Startup.hStdOutput = Startup.hStdError = Output;
    if (!CreateProcessW(nullptr, CommandLine.data(), nullptr, nullptr, Output != nullptr, CREATE_NO_WINDOW,
                        nullptr, BaseFolder().c_str(), &Startup, &Started))
        throw std::runtime_error("a program does not start");
}

Process::~Process() {
    Kill();
    CloseHandle(Started.hThread);
    CloseHandle(Started.hProcess);
}

void Process::Kill() const {
    TerminateProcess(Started.hProcess, 99);
    WaitForSingleObject(Started.hProcess, Patience);
}

bool Process::EndsWithin(DWORD Milliseconds) const {
    return WaitForSingleObject(Started.hProcess, Milliseconds) == WAIT_OBJECT_0;
}

Ended RunProgram(const std::wstring& CommandLine) {
    // A file for each: one that has just ended may still hold its own open.
    static int Programs = 0;
    const std::wstring Log = L"output" + std::to_wstring(++Programs) + L".txt";
    SECURITY_ATTRIBUTES Inherited{sizeof Inherited, nullptr, TRUE};
    const HANDLE Output = CreateFileW((BaseFolder() + L"\\" + Log).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                      &Inherited, CREATE_ALWAYS, 0, nullptr);
    const Process Running(CommandLine, Output);
    CloseHandle(Output);
    DWORD ExitCode = STILL_ACTIVE;
    if (!PumpUntil([&] { return Running.HasEnded(); }, 2 * Patience)) Running.Kill();
    GetExitCodeProcess(Running.Started.hProcess, &ExitCode);
    return {ExitCode, ReadText(Log)};
}

} // namespace Support
