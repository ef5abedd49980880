// A remote administration console for the command line: sends one request to the stand-in host and prints the
// answer. Exit code 0 when it was carried out, 1 when not, 2 for wrong use.
#include <cstdio>

#include <windows.h>

#include <shellapi.h>

#include "sandbox/console/console_commands.h"
#include "sandbox/host/automation.h"
#include "sandbox/host/packets.h"

namespace {

constexpr DWORD PatienceMilliseconds = 10000;

struct Options {
    std::wstring Administrator = L"admin1", Profile = L"1", Pipe = L"sandbox-host";
    Lines Command;
};

Lines CommandLineWords() {
    int Count = 0;
    wchar_t** Words = CommandLineToArgvW(GetCommandLineW(), &Count);
    const Lines Taken(Words + 1, Words + Count);
    LocalFree(Words);
    return Taken;
}

Options ReadOptions(const Lines& Words) {
    Options Read;
    std::size_t At = 0;
    for (; At < Words.size() && Words[At].starts_with(L"--"); At += 2) {
        if (At + 1 == Words.size()) Fail(ErrorNumber::ArgumentNotOptional, Words[At] + L" needs a word");
        if (Words[At] == L"--admin")
            Read.Administrator = Words[At + 1];
        else if (Words[At] == L"--profile")
            Read.Profile = Words[At + 1];
        else if (Words[At] == L"--pipe")
            Read.Pipe = Words[At + 1];
        else
            Fail(ErrorNumber::InvalidCall, L"There is no option " + Words[At]);
    }
    Read.Command.assign(Words.begin() + static_cast<std::ptrdiff_t>(At), Words.end());
    if (Read.Command.empty()) Fail(ErrorNumber::ArgumentNotOptional, L"A command is needed");
    return Read;
}

// The host serves one console at a time; others wait their turn.
HANDLE OpenPipe(const std::wstring& Name) {
    const std::wstring Path = Packets::PipePath(Name);
    const ULONGLONG Deadline = GetTickCount64() + PatienceMilliseconds;
    do {
        const HANDLE Pipe =
            CreateFileW(Path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        if (Pipe != INVALID_HANDLE_VALUE) return Pipe;
        if (!WaitNamedPipeW(Path.c_str(), 500)) Sleep(50);
    } while (GetTickCount64() < Deadline);
    Fail(ErrorNumber::FileNotFound, L"No host answers under the name " + Name);
}

std::wstring Ask(const Options& Given, const Lines& Request) {
    const HANDLE Pipe = OpenPipe(Given.Pipe);
    Lines Answer;
    const bool IsAnswered =
        Packets::Write(Pipe, Request) && Packets::Read(Pipe, Answer) && Answer.size() == 2;
    CloseHandle(Pipe);
    if (!IsAnswered) Fail(ErrorNumber::InternalError, L"The host did not answer");
    if (Answer[0] != L"ok") Fail(ErrorNumber::InvalidCall, Answer[1]);
    return Answer[1];
}

std::wstring Carry(const Options& Given) {
    if (Given.Command.front() == L"host") {
        Lines Words(Given.Command.begin() + 1, Given.Command.end());
        return Ask(Given, {L"host", Join(Words, L" ")}) + L"\n";
    }
    return ConsoleCommands::Run(Given.Command, [&](const std::wstring& Member, const auto& Data) {
        Lines Request{L"request", Given.Administrator, Given.Profile, Member};
        if (Data) Request.push_back(*Data);
        return Ask(Given, Request);
    });
}

void Print(FILE* Target, const std::wstring& Text) {
    std::string Bytes(Text.size() * 3 + 1, '\0');
    WideCharToMultiByte(CP_UTF8, 0, Text.c_str(), -1, Bytes.data(), static_cast<int>(Bytes.size()), nullptr,
                        nullptr);
    std::fputs(Bytes.c_str(), Target);
}

int PrintUsage(const std::wstring& Why) {
    Print(stderr,
          Why + L"\nusage: console [--admin NAME] [--profile N] [--pipe NAME] COMMAND\n" +
              ConsoleCommands::Usage() +
              L"  host ACTION                            an action of the host itself, such as \"load 2\"\n");
    return 2;
}

} // namespace

int main() {
    const Automation::Apartment Com;
    Options Given;
    try {
        Given = ReadOptions(CommandLineWords());
    } catch (const Failure& Wrong) {
        return PrintUsage(Wrong.Description);
    }
    try {
        Print(stdout, Carry(Given));
        return 0;
    } catch (...) {
        Print(stderr, L"console: " + CurrentFailure().Description + L"\n");
        return 1;
    }
}
