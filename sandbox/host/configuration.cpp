#include "sandbox/host/configuration.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include <windows.h>

namespace {

std::wstring FullPath(TextView Path) {
    wchar_t Full[MAX_PATH] = L"";
    GetFullPathNameW(std::wstring(Path).c_str(), MAX_PATH, Full, nullptr);
    if (GetFileAttributesW(Full) == INVALID_FILE_ATTRIBUTES)
        Fail(ErrorNumber::FileNotFound, L"No file " + std::wstring(Path));
    return Full;
}

std::wstring Entry(const std::wstring& File, const std::wstring& Section, const wchar_t* Key,
                   const wchar_t* Default = L"") {
    wchar_t Buffer[2048] = L"";
    GetPrivateProfileStringW(Section.c_str(), Key, Default, Buffer, 2048, File.c_str());
    return Buffer;
}

HostProfile ReadProfile(const std::wstring& File, const std::wstring& Section, Long Index) {
    HostProfile Profile;
    Profile.Index = Index;
    Profile.Name = Entry(File, Section, L"Name");
    Profile.Folder = Entry(File, Section, L"Folder");
    Profile.GameId = Entry(File, Section, L"GameId");
    Profile.Server = Entry(File, Section, L"Server");
    Profile.ProcessId = ToWhole(Entry(File, Section, L"ProcessId", L"0"));
    Profile.MessageTarget = ToWhole(Entry(File, Section, L"MessageTarget", L"0"));
    return Profile;
}

Administrator ReadAdministrator(const std::wstring& File, const std::wstring& Section) {
    Administrator Admin;
    Admin.Name = Entry(File, Section, L"Name");
    Admin.Description = Entry(File, Section, L"Description", Admin.Name.c_str());
    for (const std::wstring& Privilege : Split(Entry(File, Section, L"Privileges"), L","))
        Admin.Privileges.push_back(Trim(Privilege));
    return Admin;
}

} // namespace

HostConfiguration ReadConfiguration(TextView Path) {
    const std::wstring File = FullPath(Path);
    HostConfiguration Read;
    Read.BaseFolder = File.substr(0, File.find_last_of(L'\\'));
    Read.Title = Entry(File, L"Host", L"Title", L"Sandbox host");
    Read.Pipe = Entry(File, L"Host", L"Pipe", L"sandbox-host");
    Read.HostWideLogs = Entry(File, L"Host", L"HostWideLogs") == L"1";
    for (Long Index = 1;; ++Index) {
        const std::wstring Section = L"Profile" + ToText(Index);
        if (Entry(File, Section, L"Name").empty()) break;
        Read.Profiles.push_back(ReadProfile(File, Section, Index));
    }
    for (Long Number = 1;; ++Number) {
        const std::wstring Section = L"Admin" + ToText(Number);
        if (Entry(File, Section, L"Name").empty()) break;
        Read.Administrators.push_back(ReadAdministrator(File, Section));
    }
    return Read;
}

std::vector<TimedAction> ReadScript(TextView Path) {
    std::ifstream File(FullPath(Path).c_str());
    std::vector<TimedAction> Script;
    for (std::string Read; std::getline(File, Read);) {
        const std::wstring Line = Trim(Split(std::wstring(Read.begin(), Read.end()), L"\r").front());
        if (Line.empty() || Line.front() == L'#') continue;
        const std::size_t Blank = std::min(Line.find(L' '), Line.size());
        const Long Milliseconds = ToWhole(Line.substr(0, Blank));
        Script.push_back({static_cast<unsigned>(Milliseconds), Trim(Line.substr(Blank))});
    }
    std::stable_sort(Script.begin(), Script.end(), [](const TimedAction& Left, const TimedAction& Right) {
        return Left.Milliseconds < Right.Milliseconds;
    });
    return Script;
}
