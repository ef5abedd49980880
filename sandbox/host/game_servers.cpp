#include "sandbox/host/game_servers.h"

#include <map>

#include <windows.h>

namespace GameServers {
namespace {

std::map<Long, HANDLE> Running;

// The job ends every server when the host goes, however it goes.
HANDLE Job() {
    static const HANDLE Made = [] {
        const HANDLE Job = CreateJobObjectW(nullptr, nullptr);
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION Limits{};
        Limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        SetInformationJobObject(Job, JobObjectExtendedLimitInformation, &Limits, sizeof Limits);
        return Job;
    }();
    return Made;
}

} // namespace

void Start(HostProfile& Profile, const std::wstring& BaseFolder) {
    if (Profile.Server.empty() || IsRunning(Profile.Index)) return;
    Stop(Profile.Index);
    STARTUPINFOW Startup{};
    Startup.cb = sizeof Startup;
    PROCESS_INFORMATION Process{};
    std::wstring Command = Profile.Server;
    if (!CreateProcessW(nullptr, Command.data(), nullptr, nullptr, FALSE, CREATE_SUSPENDED | CREATE_NO_WINDOW,
                        nullptr, BaseFolder.c_str(), &Startup, &Process))
        Fail(ErrorNumber::FileNotFound, L"Cannot start " + Profile.Server);
    AssignProcessToJobObject(Job(), Process.hProcess);
    ResumeThread(Process.hThread);
    CloseHandle(Process.hThread);
    Running[Profile.Index] = Process.hProcess;
    Profile.ProcessId = static_cast<Long>(Process.dwProcessId);
    Profile.MessageTarget = static_cast<Long>(Process.dwThreadId);
}

void Stop(Long Index) {
    const auto Found = Running.find(Index);
    if (Found == Running.end()) return;
    TerminateProcess(Found->second, 0);
    WaitForSingleObject(Found->second, 5000);
    CloseHandle(Found->second);
    Running.erase(Found);
}

void StopAll() {
    while (!Running.empty()) Stop(Running.begin()->first);
}

bool IsRunning(Long Index) {
    const auto Found = Running.find(Index);
    return Found != Running.end() && WaitForSingleObject(Found->second, 0) == WAIT_TIMEOUT;
}

} // namespace GameServers
