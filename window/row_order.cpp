#include "window/row_order.h"

#include <algorithm>

namespace {

wchar_t Folded(wchar_t Letter) {
    const bool Ascii = Letter >= L'A' && Letter <= L'Z';
    const bool Latin =
        Letter >= 0xC0 && Letter <= 0xDE && Letter != 0xD7; // the multiplication sign is no letter
    return Ascii || Latin ? static_cast<wchar_t>(Letter + 0x20) : Letter;
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
        [](wchar_t X, wchar_t Y) -> Order { return Folded(X) <=> Folded(Y); });
}

Order CompareAddresses(TextView A, TextView B) {
    const Lines X = Split(A, L".");
    const Lines Y = Split(B, L".");
    return std::lexicographical_compare_three_way(X.begin(), X.end(), Y.begin(), Y.end(), CompareNumbers);
}
