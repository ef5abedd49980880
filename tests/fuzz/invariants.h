// What holds whatever the input was. A broken one ends the process, which is what a fuzzer looks for.
#pragma once

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "tests/fakes/server.h"

namespace Invariants {

inline constexpr TextView Breaks(L"\0\r\n", 3);

// Ends the process with What and what was done, unless it holds.
inline void Require(bool Holds, const char* What) {
    if (Holds) return;
    std::setlocale(LC_ALL, "C.UTF-8"); // or the first foreign letter ends a line
    std::fprintf(stderr, "broken: %s\n", What);
    for (const Lines* const Told : {&Outside::Journal, &Outside::Reports})
        for (const std::wstring& Text : *Told) std::fprintf(stderr, "  %ls\n", Text.c_str());
    std::abort();
}

// No list file, setting or line of the log has a line that is cut or holds what breaks lines.
inline void RequireWholeFiles() {
    Lines Paths{std::wstring(PlayersIni), L"C:\\Host\\profiles\\Server1\\adminlogs\\2024-05-06.txt",
                L"C:\\Host\\adminlogs\\2024-05-06.txt"};
    for (const TextView Name : {L"BannedNames.ini", L"BannedIps.ini", L"BannedReference.ini", L"Slaps.ini"})
        Paths.push_back(SettingsFile(Name));
    for (const std::wstring& Path : Paths) {
        const std::wstring Text = Outside::FileText(Path);
        Require(Text.empty() || Text.ends_with(CrLf), "the last line is whole");
        for (const std::wstring& Line : Split(Text, CrLf))
            Require(Line.find_first_of(Breaks) == Line.npos, "every line is whole");
    }
}

// Runs one call of the plug-in: it may make at most MostCalls outside calls and log at most MostReports
// errors, and leaves every file whole. Journal holds what this call did.
template <class F> void Run(const char* Name, long MostCalls, std::size_t MostReports, F&& Call) {
    Outside::Journal.clear();
    Outside::Reports.clear();
    Outside::Calls = 0;
    Call();
    if (Outside::Calls > MostCalls) std::fprintf(stderr, "%s: %ld outside calls\n", Name, Outside::Calls);
    Require(Outside::Calls <= MostCalls, "the number of outside calls is bounded");
    Require(Outside::Reports.size() <= MostReports, "the number of reports is bounded");
    RequireWholeFiles();
}

} // namespace Invariants
