#include "sandbox/helpers/base64.h"

#include <cstdint>

#include "sandbox/helpers/automation.h"

namespace {

constexpr std::string_view Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

[[noreturn]] void Refuse() { throw Automation::Error{Automation::InvalidCall, "The text is no Base64"}; }

} // namespace

std::string EncodeBase64(std::string_view Bytes) {
    std::string Result;
    for (std::size_t At = 0; At < Bytes.size(); At += 3) {
        const std::size_t Present = Bytes.size() - At < 3 ? Bytes.size() - At : 3;
        std::uint32_t Group = 0;
        for (std::size_t Next = 0; Next < 3; ++Next)
            Group = Group << 8 | (Next < Present ? static_cast<unsigned char>(Bytes[At + Next]) : 0U);
        for (std::size_t Digit = 0; Digit < 4; ++Digit)
            Result += Digit <= Present ? Alphabet[Group >> (18 - 6 * Digit) & 63] : '=';
    }
    return Result;
}

std::string DecodeBase64(std::string_view Text) {
    if (Text.size() % 4 != 0) Refuse();
    std::size_t Padding = 0;
    while (Padding < 2 && Text.ends_with('=')) {
        Text.remove_suffix(1);
        ++Padding;
    }
    std::string Result;
    std::uint32_t Bits = 0;
    unsigned Held = 0;
    for (const char Digit : Text) {
        const auto Value = Alphabet.find(Digit);
        if (Value == std::string_view::npos) Refuse();
        Bits = Bits << 6 | static_cast<std::uint32_t>(Value);
        Held += 6;
        if (Held < 8) continue;
        Held -= 8;
        Result += static_cast<char>(Bits >> Held & 0xFF);
    }
    if ((Bits & ((1U << Held) - 1)) != 0) Refuse();
    return Result;
}
