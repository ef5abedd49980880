#include "sandbox/game/game_memory.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace Simulation {

namespace {

// The bytes from Address to the end of its block; null with size 0 outside.
MemoryBlock RestOfBlock(const GameMemory& Memory, std::uint32_t Address) {
    for (const MemoryBlock* Block :
         {&Memory.Image, &Memory.Entries, &Memory.Statistics, &Memory.Clients, &Memory.Entities}) {
        if (Address < Block->Address || Address - Block->Address >= Block->Size) continue;
        const std::size_t Offset = Address - Block->Address;
        return {Address, Block->Size - Offset, Block->Bytes + Offset};
    }
    return {};
}

void Require(bool Done) {
    if (!Done) throw std::out_of_range("address outside the game's memory");
}

} // namespace

bool ReadGameMemory(const GameMemory& Memory, std::uint32_t Address, void* To, std::size_t Size) {
    const MemoryBlock Rest = RestOfBlock(Memory, Address);
    if (!Rest.Bytes || Size > Rest.Size) return false;
    std::memcpy(To, Rest.Bytes, Size);
    return true;
}

bool WriteGameMemory(const GameMemory& Memory, std::uint32_t Address, const void* From, std::size_t Size) {
    const MemoryBlock Rest = RestOfBlock(Memory, Address);
    if (!Rest.Bytes || Size > Rest.Size) return false;
    std::memcpy(Rest.Bytes, From, Size);
    return true;
}

std::int32_t ReadLong(const GameMemory& Memory, std::uint32_t Address) {
    std::int32_t Value = 0;
    Require(ReadGameMemory(Memory, Address, &Value, sizeof Value));
    return Value;
}

std::uint8_t ReadByte(const GameMemory& Memory, std::uint32_t Address) {
    std::uint8_t Value = 0;
    Require(ReadGameMemory(Memory, Address, &Value, sizeof Value));
    return Value;
}

std::string ReadText(const GameMemory& Memory, std::uint32_t Address, std::size_t Limit) {
    const MemoryBlock Rest = RestOfBlock(Memory, Address);
    Require(Rest.Bytes != nullptr);
    const std::size_t Most = std::min(Limit, Rest.Size);
    const auto* End = std::find(Rest.Bytes, Rest.Bytes + Most, std::uint8_t{0});
    return {reinterpret_cast<const char*>(Rest.Bytes), static_cast<std::size_t>(End - Rest.Bytes)};
}

void WriteLong(const GameMemory& Memory, std::uint32_t Address, std::int32_t Value) {
    Require(WriteGameMemory(Memory, Address, &Value, sizeof Value));
}

void WriteByte(const GameMemory& Memory, std::uint32_t Address, std::uint8_t Value) {
    Require(WriteGameMemory(Memory, Address, &Value, sizeof Value));
}

void WriteText(const GameMemory& Memory, std::uint32_t Address, std::string_view Text, std::size_t Size) {
    const MemoryBlock Rest = RestOfBlock(Memory, Address);
    Require(Rest.Bytes != nullptr && Size <= Rest.Size && Size > 0);
    const std::size_t Kept = std::min(Text.size(), Size - 1);
    std::memcpy(Rest.Bytes, Text.data(), Kept);
    std::memset(Rest.Bytes + Kept, 0, Size - Kept);
}

} // namespace Simulation
