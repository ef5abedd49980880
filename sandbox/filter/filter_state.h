// What the filter driver holds: services, whether it filters, and its rules; kept in a small text file.
#pragma once

#include <map>
#include <string>
#include <vector>

struct FilterState {
    std::map<std::string, bool> Services; // installed ones: true when running
    bool IsFiltering = false;
    std::vector<std::string> Rules; // "10.0.0.7 32768"
};

// The state of a missing file is the empty one.
FilterState ReadFilterState(const std::wstring& Path);

// Replaces the file in one step: others read it at any moment. False when that was not possible.
bool WriteFilterState(const std::wstring& Path, const FilterState& State);
