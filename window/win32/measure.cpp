// toolkit.h: what the layout measures.
#include "window/win32/native.h"

namespace {

// A drawing surface of the screen's kind with our font.
class Surface {
public:
    Surface() noexcept
        : Context(CreateCompatibleDC(nullptr)), Before(SelectObject(Context, Native::Font())) {}
    ~Surface() {
        SelectObject(Context, Before);
        DeleteDC(Context);
    }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    SIZE Calculate(TextView Text, int Width, UINT Format) const noexcept {
        RECT Box{0, 0, Width, 0};
        DrawTextW(Context, Text.data(), static_cast<int>(Text.size()), &Box,
                  DT_CALCRECT | DT_NOPREFIX | Format);
        return {Box.right, Box.bottom};
    }
    int LineHeight() const noexcept {
        TEXTMETRICW Metrics{};
        GetTextMetricsW(Context, &Metrics);
        return Metrics.tmHeight;
    }

private:
    HDC Context;
    HGDIOBJ Before;
};

} // namespace

namespace Measure {

int Scaled(int Pixels96) { return MulDiv(Pixels96, Native::DotsPerInch(), 96); }

int LineHeight() { return Surface().LineHeight(); }

int TextWidth(TextView Text) {
    return Text.empty() ? 0 : static_cast<int>(Surface().Calculate(Text, 0, DT_SINGLELINE).cx) + 1;
}

int TextHeight(TextView Text, int Width) {
    return static_cast<int>(Surface().Calculate(Text, Width, DT_WORDBREAK).cy);
}

Rect TabInterior(const Rect& Outer) {
    RECT Inside{Outer.X, Outer.Y, Outer.X + Outer.Width, Outer.Y + Outer.Height};
    Native::Send(ID_stMain, TCM_ADJUSTRECT, FALSE, &Inside);
    return {static_cast<int>(Inside.left), static_cast<int>(Inside.top),
            static_cast<int>(Inside.right - Inside.left), static_cast<int>(Inside.bottom - Inside.top)};
}

} // namespace Measure
