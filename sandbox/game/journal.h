// The game server's journal: one event a line, six fields between tabs.
//
//   milliseconds <TAB> kind <TAB> slot <TAB> name <TAB> address <TAB> detail
//
// Fields that do not apply are empty. Lines are plain ASCII: in every field a byte below 0x20 or above 0x7E
// and the backslash stand as \xNN. sandbox/README.md lists the kinds.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Simulation {

struct JournalEntry {
    std::uint32_t Time = 0; // milliseconds since the game's start
    std::string Kind;
    int Slot = -1; // -1: no slot
    std::string Name = {}, Address = {}, Detail = {};
    bool operator==(const JournalEntry&) const = default;
};

// The line of an entry, without line end.
std::string FormatEntry(const JournalEntry& Entry);

// The entry of a line, with or without its line end; throws std::invalid_argument when it is none.
JournalEntry ParseEntry(std::string_view Line);

// "\xNN" for each byte that is not plain ASCII, and back; throws std::invalid_argument for a bad escape.
std::string Escaped(std::string_view Text);
std::string Unescaped(std::string_view Text);

} // namespace Simulation
