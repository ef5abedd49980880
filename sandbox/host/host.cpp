// The stand-in host: host.exe [--config FILE] [--script FILE] [--journal FILE]
//
// Without a configuration it takes host.ini beside itself. Exit code 0 when its window was closed, 2 when it
// could not begin (the reason goes to the standard output).
#include <windows.h>

#include <shellapi.h>

#include "sandbox/host/automation.h"
#include "sandbox/host/host_window.h"
#include "sandbox/host/journal.h"

namespace {

std::wstring Option(const wchar_t* Name) {
    int Count = 0;
    wchar_t** Words = CommandLineToArgvW(GetCommandLineW(), &Count);
    std::wstring Found;
    for (int At = 1; At + 1 < Count; ++At)
        if (std::wstring(Words[At]) == Name) Found = Words[At + 1];
    LocalFree(Words);
    return Found;
}

std::wstring BesideProgram(const wchar_t* Name) {
    wchar_t Path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, Path, MAX_PATH);
    const std::wstring Program = Path;
    return Program.substr(0, Program.find_last_of(L'\\') + 1) + Name;
}

int Host() {
    std::wstring Config = Option(L"--config");
    if (Config.empty()) Config = BesideProgram(L"host.ini");
    const HostConfiguration Read = ReadConfiguration(Config);
    const std::wstring Script = Option(L"--script");
    std::wstring JournalFile = Option(L"--journal");
    if (JournalFile.empty()) JournalFile = Read.BaseFolder + L"\\host.journal";
    Journal::Open(JournalFile);
    const HWND Window =
        HostWindow::Open(Read, Script.empty() ? std::vector<TimedAction>() : ReadScript(Script));
    if (!Window) Fail(ErrorNumber::InternalError, L"The window cannot be made");
    HostWindow::Run(Window);
    return 0;
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    const Automation::Apartment Com;
    try {
        return Host();
    } catch (...) {
        Journal::Write(L"host: " + CurrentFailure().Description);
        return 2;
    }
}
