// What the filter driver holds: services, whether it filters, and its rules; kept in a small text file, which
// the packet filter writes and the game server reads.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// Packets that come from an address, dotted, to a port.
struct FilterRule {
    std::string Address;
    std::int32_t Port = 0; // 0 to 65535
};

struct FilterState {
    std::map<std::string, bool> Services; // installed ones: true when running
    bool IsFiltering = false;
    std::vector<FilterRule> Rules;
};

// The state of a missing file is the empty one.
FilterState ReadFilterState(const std::wstring& Path);

// Replaces the file in one step: others read it at any moment. False when that was not possible.
bool WriteFilterState(const std::wstring& Path, const FilterState& State);
