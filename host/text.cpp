// Text and number rules.
#include "host/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

namespace {

bool IsDigit(wchar_t C) { return C >= L'0' && C <= L'9'; }

TextView TrimmedView(TextView Text) {
    const auto First = Text.find_first_not_of(L' ');
    return First == TextView::npos ? TextView() : Text.substr(First, Text.find_last_not_of(L' ') - First + 1);
}

// A double holds what 32 bits can, and more digits than it keeps only make a number larger than all that are
// used.
struct Parsed {
    bool Valid = false;
    double Value = 0;
};

// Digits past the precision of a double change nothing, and must not overflow: a host may have had that
// raised.
constexpr double EnoughDigits = 1e17;

Parsed ParseNumber(TextView Text) {
    const TextView Trimmed = TrimmedView(Text);
    std::size_t At = 0;
    const bool Negative = At < Trimmed.size() && Trimmed[At] == L'-';
    if (At < Trimmed.size() && (Trimmed[At] == L'-' || Trimmed[At] == L'+')) ++At;
    double Value = 0;
    bool AnyDigit = false;
    for (; At < Trimmed.size() && IsDigit(Trimmed[At]); ++At, AnyDigit = true)
        if (Value < EnoughDigits) Value = Value * 10 + (Trimmed[At] - L'0');
    if (At < Trimmed.size() && Trimmed[At] == L'.') {
        double Scale = 1;
        double Fraction = 0;
        for (++At; At < Trimmed.size() && IsDigit(Trimmed[At]); ++At, AnyDigit = true) {
            if (Scale >= EnoughDigits) continue;
            Scale *= 10;
            Fraction = Fraction * 10 + (Trimmed[At] - L'0');
        }
        Value += Fraction / Scale;
    }
    return {AnyDigit && At == Trimmed.size(), Negative ? -Value : Value};
}

double RoundHalfToEven(double Value) {
    const double Floor = std::floor(Value);
    const double Rest = Value - Floor;
    if (Rest < 0.5) return Floor;
    if (Rest > 0.5) return Floor + 1;
    return std::fmod(Floor, 2) == 0 ? Floor : Floor + 1;
}

int HexDigit(wchar_t C) {
    if (IsDigit(C)) return C - L'0';
    if (C >= L'a' && C <= L'f') return C - L'a' + 10;
    if (C >= L'A' && C <= L'F') return C - L'A' + 10;
    return -1;
}

} // namespace

bool IsControl(wchar_t C) { return C < 0x20 || C == 0x7F; }

std::wstring Trim(TextView Text) { return std::wstring(TrimmedView(Text)); }

Lines Split(TextView Text, TextView Separator) {
    Lines Fields;
    for (;;) {
        const auto Found = Text.find(Separator);
        Fields.emplace_back(Text.substr(0, Found));
        if (Found == TextView::npos) return Fields;
        Text.remove_prefix(Found + Separator.size());
    }
}

std::wstring Join(const Lines& Elements, TextView Separator) {
    std::wstring Text;
    for (std::size_t I = 0; I < Elements.size(); ++I) {
        if (I != 0) Text += Separator;
        Text += Elements[I];
    }
    return Text;
}

bool IsNumeric(TextView Text) { return ParseNumber(Text).Valid; }

double ToNumber(TextView Text, Place Where) {
    const Parsed Number = ParseNumber(Text);
    if (!Number.Valid) Fail(ErrorNumber::TypeMismatch, {}, Where);
    return Number.Value;
}

Long ToWhole(TextView Text, Place Where) {
    const double Value = RoundHalfToEven(ToNumber(Text, Where));
    if (!(Value >= std::numeric_limits<Long>::min() && Value <= std::numeric_limits<Long>::max()))
        Fail(ErrorNumber::Overflow, {}, Where);
    return static_cast<Long>(Value);
}

Long HexToByte(TextView Text, Place Where) {
    if (Text.empty() || Text.size() > 2) Fail(ErrorNumber::TypeMismatch, {}, Where);
    Long Value = 0;
    for (const wchar_t C : Text) {
        const int Digit = HexDigit(C);
        if (Digit < 0) Fail(ErrorNumber::TypeMismatch, {}, Where);
        Value = Value * 16 + Digit;
    }
    return Value;
}

std::wstring ToText(Long Number) {
    // Not std::to_wstring: it goes through the formatted output of the C library, for every slot of every
    // tick.
    char Digits[12];
    const auto End = std::to_chars(std::begin(Digits), std::end(Digits), Number).ptr;
    return std::wstring(Digits, End);
}

std::wstring TwoDigits(Long Number) { return (Number < 10 ? L"0" : L"") + ToText(Number); }

std::wstring WithoutControls(TextView Text) {
    std::wstring Clean(Text);
    std::replace_if(Clean.begin(), Clean.end(), IsControl, L'?');
    return Clean;
}

std::wstring HostBaseOf(std::wstring PluginFolder) {
    // Exactly these three, in this order, every occurrence, with regard to case.
    for (const TextView Removed : {L"\\Plugins", L"\\plugins", L"\\dlls\\Vantor"})
        PluginFolder = Join(Split(PluginFolder, Removed), L"");
    return PluginFolder;
}

void RefuseControls(TextView Text, Place Where) {
    if (std::any_of(Text.begin(), Text.end(), IsControl))
        Fail(ErrorNumber::InvalidCall, L"The text holds a line break or another control character.", Where);
}
