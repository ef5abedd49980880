// The game's memory: blocks of bytes, each standing for a range of the game process's addresses.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "sandbox/game/layout.h"

namespace Simulation {

struct MemoryBlock {
    std::uint32_t Address = 0; // in the game process
    std::size_t Size = 0;
    std::uint8_t* Bytes = nullptr; // here; zeroed, not owned
};

struct GameMemory {
    MemoryBlock Image;      // Layout::ImageStart to Layout::ImageEnd
    MemoryBlock Entries;    // the player list
    MemoryBlock Statistics; // 36 MB, of which little is touched
    MemoryBlock Clients;
    MemoryBlock Entities;
};

// The size that each block must have.
inline constexpr std::size_t ImageSize = Layout::ImageEnd - Layout::ImageStart;
inline constexpr std::size_t EntriesSize =
    Layout::Entry::First + std::size_t{Layout::SlotCount} * Layout::Entry::Stride;
inline constexpr std::size_t StatisticsSize = std::size_t{Layout::SlotCount} * Layout::Statistics::Stride;
inline constexpr std::size_t ClientsSize = std::size_t{Layout::SlotCount} * Layout::Client::Stride;
inline constexpr std::size_t EntitiesSize = std::size_t{Layout::SlotCount} * Layout::Entity::Stride;

// Both copy and return true only when the whole range lies inside one block.
bool ReadGameMemory(const GameMemory& Memory, std::uint32_t Address, void* To, std::size_t Size);
bool WriteGameMemory(const GameMemory& Memory, std::uint32_t Address, const void* From, std::size_t Size);

// A single value; throws std::out_of_range outside the blocks.
std::int32_t ReadLong(const GameMemory& Memory, std::uint32_t Address);
std::uint8_t ReadByte(const GameMemory& Memory, std::uint32_t Address);
// Stops at a zero, at Limit bytes and at the block's end.
std::string ReadText(const GameMemory& Memory, std::uint32_t Address, std::size_t Limit = 256);
void WriteLong(const GameMemory& Memory, std::uint32_t Address, std::int32_t Value);
void WriteByte(const GameMemory& Memory, std::uint32_t Address, std::uint8_t Value);
// Size bytes: the text, cut to Size - 1, and zeros.
void WriteText(const GameMemory& Memory, std::uint32_t Address, std::string_view Text, std::size_t Size);

} // namespace Simulation
