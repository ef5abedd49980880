// Runs a program, and ends it with all that it has started when it takes too long:
//
//   limit SECONDS PROGRAM ARGUMENTS...
//
// Ends with the program's own code, or with 124 when it was ended.
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>

namespace {

constexpr DWORD TookTooLong = 124, CannotRun = 125;

// What goes with the job when this program ends.
HANDLE MakeJob() {
    const HANDLE Job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION Limits{};
    Limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(Job, JobObjectExtendedLimitInformation, &Limits, sizeof Limits);
    return Job;
}

DWORD Run(DWORD Milliseconds, const std::wstring& CommandLine) {
    std::wstring Command = CommandLine;
    STARTUPINFOW Startup{};
    Startup.cb = sizeof Startup;
    PROCESS_INFORMATION Process{};
    if (!CreateProcessW(nullptr, Command.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr, nullptr,
                        &Startup, &Process))
        return CannotRun;
    AssignProcessToJobObject(MakeJob(), Process.hProcess);
    ResumeThread(Process.hThread);
    DWORD Code = TookTooLong;
    if (WaitForSingleObject(Process.hProcess, Milliseconds) == WAIT_OBJECT_0)
        GetExitCodeProcess(Process.hProcess, &Code);
    else
        TerminateProcess(Process.hProcess, TookTooLong);
    return Code;
}

} // namespace

int wmain(int Count, wchar_t** Words) {
    if (Count < 3) return static_cast<int>(CannotRun);
    std::wstring Command;
    for (int Word = 2; Word < Count; ++Word) {
        const std::wstring Given = Words[Word];
        Command += (Given.find(L' ') == std::wstring::npos ? Given : L'"' + Given + L'"') + L' ';
    }
    const DWORD Seconds = std::wcstoul(Words[1], nullptr, 10);
    const DWORD Code = Run(Seconds * 1000, Command);
    if (Code == TookTooLong) std::printf("%ls took more than %lu seconds and was ended\n", Words[2], Seconds);
    return static_cast<int>(Code);
}
