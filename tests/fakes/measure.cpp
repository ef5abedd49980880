// What the layout measures without a screen: a usual message font of nine points, at a scale of the test's
// choice.
#include "tests/fakes/fake_toolkit.h"

namespace Measure {
namespace {
int LetterWidth(wchar_t Letter) {
    if (TextView(L"ijl.,:;!|' ").find(Letter) != TextView::npos) return 3;
    if (TextView(L"frt-()").find(Letter) != TextView::npos) return 4;
    if (TextView(L"mwMW").find(Letter) != TextView::npos) return 10;
    return Letter >= L'A' && Letter <= L'Z' ? 7 : 6;
}
} // namespace
int Scaled(int Pixels96) { return Pixels96 * FakeWindow::PixelsPerInch / 96; }
int LineHeight() { return Scaled(15); }
int TextWidth(TextView Text) {
    int Width = 0;
    for (const wchar_t Letter : Text) Width += LetterWidth(Letter);
    return Scaled(Width);
}
int TextHeight(TextView Text, int Width) {
    int Lines = 1;
    int Used = 0;
    for (const std::wstring& Word : Split(Text, L" ")) {
        const int Wide = TextWidth(Word);
        if (Used > 0 && Used + TextWidth(L" ") + Wide > Width) {
            ++Lines;
            Used = 0;
        }
        Used += (Used > 0 ? TextWidth(L" ") : 0) + Wide;
    }
    return Lines * LineHeight();
}
Rect TabInterior(const Rect& Outer) {
    const int Border = Scaled(4);
    const int Top = Scaled(23);
    return {Outer.X + Border, Outer.Y + Top, Outer.Width - 2 * Border, Outer.Height - Top - Border};
}
} // namespace Measure
