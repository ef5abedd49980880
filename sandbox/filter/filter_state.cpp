#include "sandbox/filter/filter_state.h"

#include <windows.h>

#include <filesystem>
#include <fstream>

FilterState ReadFilterState(const std::wstring& Path) {
    FilterState State;
    std::ifstream File{std::filesystem::path(Path)};
    for (std::string Kind, Name, Value; File >> Kind >> Name;) {
        if (Kind == "filtering") {
            State.IsFiltering = Name == "on";
        } else if (Kind == "service" && File >> Value) {
            State.Services[Name] = Value == "running";
        } else if (FilterRule Rule{Name}; Kind == "rule" && File >> Rule.Port) {
            State.Rules.push_back(Rule);
        }
    }
    return State;
}

bool WriteFilterState(const std::wstring& Path, const FilterState& State) {
    const std::wstring New = Path + L".new";
    {
        std::ofstream File{std::filesystem::path(New), std::ios::binary};
        for (const auto& [Name, IsRunning] : State.Services)
            File << "service " << Name << (IsRunning ? " running\n" : " stopped\n");
        File << "filtering " << (State.IsFiltering ? "on\n" : "off\n");
        for (const FilterRule& Rule : State.Rules)
            File << "rule " << Rule.Address << ' ' << Rule.Port << '\n';
        if (!File.flush()) return false;
    }
    // A file that somebody reads just now cannot be replaced; reading takes no time worth mentioning.
    for (int Attempt = 0; Attempt < 20; ++Attempt) {
        if (MoveFileExW(New.c_str(), Path.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
        Sleep(5);
    }
    return false;
}
