#include "sandbox/filter/filter_state.h"

#include <windows.h>

#include <filesystem>
#include <fstream>

FilterState ReadFilterState(const std::wstring& Path) {
    FilterState State;
    std::ifstream File{std::filesystem::path(Path)};
    for (std::string Word; File >> Word;) {
        std::string First, Second;
        File >> First;
        if (Word != "filtering") File >> Second;
        if (Word == "filtering") State.IsFiltering = First == "on";
        if (Word == "service") State.Services[First] = Second == "running";
        if (Word == "rule") State.Rules.push_back(First + ' ' + Second);
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
        for (const auto& Rule : State.Rules) File << "rule " << Rule << '\n';
        if (!File.flush()) return false;
    }
    // A file that somebody reads just now cannot be replaced; reading takes no time worth mentioning.
    for (int Attempt = 0; Attempt < 20; ++Attempt) {
        if (MoveFileExW(New.c_str(), Path.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
        Sleep(5);
    }
    return false;
}
