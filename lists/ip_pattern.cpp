#include "lists/ip_pattern.h"

#include "game/player_table.h"

namespace {

bool IsValidPart(TextView Part, bool Last) {
    if (Part == L"*") return Last;
    return IsNumeric(Part) && ToNumber(Part) <= 255;
}

} // namespace

bool IsValidIp(TextView Text) {
    for (int Count = 1; Count <= 4; ++Count) {
        const auto Point = Text.find(L'.');
        const bool Last = Point == TextView::npos;
        const TextView Part = Text.substr(0, Point);
        if (!IsValidPart(Part, Last)) return false;
        if (Last) return Count == 4 || Part == L"*";
        Text.remove_prefix(Point + 1);
    }
    return false; // more than four parts
}

bool IsKnownIp(TextView Address) {
    const std::wstring Text = Trim(Address);
    return Text != NoAddress && IsValidIp(Text);
}
