// One rule of the packet filter: packets from an IPv4 address to a local port are dropped.
#pragma once

#include <compare>
#include <cstdint>

struct Rule {
    std::uint32_t Address = 0; // 1.2.3.4 is 0x01020304, as the filtering engine wants it
    std::uint16_t Port = 0;
    auto operator<=>(const Rule&) const = default;
};

// The rule that a call of SetFilters means: the first part of the dotted address is the lowest byte, and
// ports above 32767 arrive as negative numbers.
constexpr Rule RuleOfCall(std::int32_t Address, std::int16_t Port) {
    const auto Bits = static_cast<std::uint32_t>(Address);
    return {Bits << 24 | (Bits & 0xFF00) << 8 | (Bits >> 8 & 0xFF00) | Bits >> 24,
            static_cast<std::uint16_t>(Port)};
}
