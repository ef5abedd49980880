// Order of numbers, names and addresses as texts.
#include "window/row_order.h"

#include <algorithm>

namespace {

// The letters from U+00C0 on, without their accents and in small; the two signs among them stay.
constexpr TextView BaseLetters =
    L"aaaaaaaceeeeiiiidnooooo\u00D7ouuuuytsaaaaaaaceeeeiiiidnooooo\u00F7ouuuuyty";
constexpr wchar_t FirstAccented = 0xC0;

wchar_t BaseLetter(wchar_t Letter) {
    if (Letter >= L'A' && Letter <= L'Z') return static_cast<wchar_t>(Letter + 0x20);
    const std::size_t Offset = static_cast<std::size_t>(Letter) - FirstAccented;
    return Letter >= FirstAccented && Offset < BaseLetters.size() ? BaseLetters[Offset] : Letter;
}

Order OrderOf(int Compared) { return Compared <=> 0; }

} // namespace

Order CompareNumbers(TextView A, TextView B) {
    const bool IsNumber = IsNumeric(A);
    if (IsNumber != IsNumeric(B)) return IsNumber ? Order::less : Order::greater;
    if (!IsNumber) return OrderOf(A.compare(B));
    const double X = ToNumber(A);
    const double Y = ToNumber(B);
    return X < Y ? Order::less : X > Y ? Order::greater : Order::equivalent;
}

Order CompareNames(TextView A, TextView B) {
    return std::lexicographical_compare_three_way(
        A.begin(), A.end(), B.begin(), B.end(),
        [](wchar_t X, wchar_t Y) -> Order { return BaseLetter(X) <=> BaseLetter(Y); });
}

Order CompareAddresses(TextView A, TextView B) {
    const Lines X = Split(A, L".");
    const Lines Y = Split(B, L".");
    return std::lexicographical_compare_three_way(X.begin(), X.end(), Y.begin(), Y.end(), CompareNumbers);
}
