// The game's per-player records: offsets that the reader, the actions and the sweep share.
#pragma once

#include "host/failure.h"
#include "host/memory_helper.h"

// An entry of the player list. Entries start FirstOffset behind the address that PlayerList holds.
namespace PlayerEntry {
inline constexpr Long FirstOffset = 0xC8;
inline constexpr Long Stride = 0x29C;
inline constexpr Long Name = 0x00;
inline constexpr Long Team = 0x2E;
inline constexpr Long ActivityA = 0x38;
inline constexpr Long Slot = 0x5C; // byte; the idle check calls the same byte the player's id
inline constexpr Long ActivityB = 0x9C;
inline constexpr Long ActivityC = 0xD6;
inline constexpr Long ActivityD = 0xD7;
} // namespace PlayerEntry

// A statistics record. PlyrStats holds the address of the first.
namespace StatsRecord {
inline constexpr Long Stride = 0xAF33C;
inline constexpr Long Slot = 0x2C;
inline constexpr Long ClientIndex = 0x30;
inline constexpr Long Entity = 0x38;
inline constexpr Long Name = 0x3C;
inline constexpr Long Team = 0xB0;
inline constexpr Long Ping = 0xADB60;
inline constexpr Long Armed = 0xADE28;
} // namespace StatsRecord

// The live entity that a statistics record points to: 1 on the spawn select screen, above 1 alive.
inline constexpr Long EntityLifeState = 0xE0;

// The client address table: IpList holds its address.
namespace ClientAddress {
inline constexpr Long FirstOffset = 0x88;
inline constexpr Long Stride = 0xBC;
} // namespace ClientAddress

// The text of a player's name; a damaged memory may hold one without end, of which the first characters
// count.
inline constexpr std::size_t LongestName = 256;
inline std::wstring ReadName(Long Process, Long Address) {
    return MemoryHelper::ReadStr(Process, Address).substr(0, LongestName);
}

// Address arithmetic on what a damaged memory may hold: wraps round instead of overflowing.
inline Long OffsetBy(Long Address, Long Offset) {
    return static_cast<Long>(static_cast<std::uint32_t>(Address) + static_cast<std::uint32_t>(Offset));
}
inline Long RecordAddress(Long Base, Long Number, Long Stride, Long Offset = 0) {
    const auto Bytes = static_cast<std::uint32_t>(Number) * static_cast<std::uint32_t>(Stride);
    return OffsetBy(OffsetBy(Base, static_cast<Long>(Bytes)), Offset);
}
