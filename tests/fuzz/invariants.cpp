#include "tests/fuzz/invariants.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "tests/fakes/server.h"

namespace {

bool EndsItsLines(const std::wstring& Text) {
    return Text.empty() || (Text.size() >= CrLf.size() && Text.ends_with(CrLf));
}

bool BreaksLine(wchar_t C) { return C == L'\0' || C == L'\r' || C == L'\n'; }

bool IsWholeLine(const std::wstring& Line) { return std::none_of(Line.begin(), Line.end(), BreaksLine); }

bool IsWhole(const std::wstring& Path) {
    const std::wstring Text = Outside::FileText(Path);
    const Lines All = Split(Text, CrLf);
    return EndsItsLines(Text) && std::all_of(All.begin(), All.end(), IsWholeLine);
}

} // namespace

namespace Invariants {

void Require(bool Holds, const char* What) {
    if (Holds) return;
    std::setlocale(LC_ALL, "C.UTF-8"); // or the first foreign letter ends a line
    std::fprintf(stderr, "broken: %s\n", What);
    for (const std::wstring& Text : Outside::Journal) std::fprintf(stderr, "  did %ls\n", Text.c_str());
    for (const std::wstring& Report : Outside::Reports) std::fprintf(stderr, "  said %ls\n", Report.c_str());
    std::abort();
}

void Begin() {
    Outside::Journal.clear();
    Outside::Reports.clear();
    Outside::Calls = 0;
}

void End(const char* Name, long MostCalls, std::size_t MostReports) {
    if (Outside::Calls > MostCalls) std::fprintf(stderr, "%s: %ld outside calls\n", Name, Outside::Calls);
    Require(Outside::Calls <= MostCalls, "the number of outside calls is bounded");
    Require(Outside::Reports.size() <= MostReports, "the number of reports is bounded");
    RequireWholeFiles();
}

void RequireWholeFiles() {
    for (const TextView Name : {L"BannedNames.ini", L"BannedIps.ini", L"BannedReference.ini", L"Slaps.ini"})
        Require(IsWhole(SettingsFile(Name)), "the list files are whole");
    Require(IsWhole(std::wstring(PlayersIni)), "the settings are whole");
    for (const TextView Folder : {L"C:\\Host\\profiles\\Server1\\adminlogs", L"C:\\Host\\adminlogs"})
        Require(IsWhole(std::wstring(Folder) + L"\\2024-05-06.txt"), "the log is whole");
}

} // namespace Invariants
