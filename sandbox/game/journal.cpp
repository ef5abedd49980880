#include "sandbox/game/journal.h"

#include <charconv>
#include <stdexcept>
#include <vector>

namespace Simulation {

namespace {

constexpr std::string_view HexDigits = "0123456789ABCDEF";

int HexValue(char Digit) {
    const char Upper = Digit >= 'a' && Digit <= 'f' ? static_cast<char>(Digit - 'a' + 'A') : Digit;
    const auto At = HexDigits.find(Upper);
    if (At == std::string_view::npos) throw std::invalid_argument("bad \\x escape");
    return static_cast<int>(At);
}

std::vector<std::string_view> Fields(std::string_view Line) {
    std::vector<std::string_view> Result;
    while (true) {
        const auto Tab = Line.find('\t');
        Result.push_back(Line.substr(0, Tab));
        if (Tab == std::string_view::npos) return Result;
        Line.remove_prefix(Tab + 1);
    }
}

template <class Number> Number ToNumber(std::string_view Text) {
    Number Value{};
    const auto [End, Error] = std::from_chars(Text.data(), Text.data() + Text.size(), Value);
    if (Error != std::errc{} || End != Text.data() + Text.size())
        throw std::invalid_argument("not a journal line: bad number");
    return Value;
}

} // namespace

std::string Escaped(std::string_view Text) {
    std::string Result;
    for (const char Byte : Text) {
        const auto Code = static_cast<unsigned char>(Byte);
        if (Code < 0x20 || Code > 0x7E || Byte == '\\') {
            Result += {'\\', 'x', HexDigits[Code >> 4], HexDigits[Code & 15]};
        } else {
            Result += Byte;
        }
    }
    return Result;
}

std::string Unescaped(std::string_view Text) {
    std::string Result;
    for (std::size_t At = 0; At < Text.size(); ++At) {
        if (Text[At] != '\\') {
            Result += Text[At];
            continue;
        }
        if (At + 3 >= Text.size() || Text[At + 1] != 'x') throw std::invalid_argument("bad \\x escape");
        Result += static_cast<char>(HexValue(Text[At + 2]) << 4 | HexValue(Text[At + 3]));
        At += 3;
    }
    return Result;
}

std::string FormatEntry(const JournalEntry& Entry) {
    return std::to_string(Entry.Time) + '\t' + Escaped(Entry.Kind) + '\t' +
           (Entry.Slot < 0 ? std::string() : std::to_string(Entry.Slot)) + '\t' + Escaped(Entry.Name) + '\t' +
           Escaped(Entry.Address) + '\t' + Escaped(Entry.Detail);
}

JournalEntry ParseEntry(std::string_view Line) {
    while (!Line.empty() && (Line.back() == '\n' || Line.back() == '\r')) Line.remove_suffix(1);
    const auto Field = Fields(Line);
    if (Field.size() != 6) throw std::invalid_argument("not a journal line: six fields wanted");
    return {.Time = ToNumber<std::uint32_t>(Field[0]),
            .Kind = Unescaped(Field[1]),
            .Slot = Field[2].empty() ? -1 : ToNumber<int>(Field[2]),
            .Name = Unescaped(Field[3]),
            .Address = Unescaped(Field[4]),
            .Detail = Unescaped(Field[5])};
}

} // namespace Simulation
