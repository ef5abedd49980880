// toolkit.h: what the layout measures.
#include <array>

#include "window/win32/native.h"

namespace {

// Kept, because to make one costs more than to measure a text.
HDC Surface = nullptr;
HGDIOBJ FontBefore = nullptr;
std::array<INT, 256> LetterWidths{}; // of the letters that names are made of: lists have tens of thousands

// A drawing surface of the screen's kind with our font.
HDC MeasuringSurface() noexcept {
    if (Surface == nullptr) {
        Surface = CreateCompatibleDC(nullptr);
        FontBefore = SelectObject(Surface, Native::Font());
        GetCharWidth32W(Surface, 0, LetterWidths.size() - 1, LetterWidths.data());
    }
    return Surface;
}

int WidthWithAnyLetter(TextView Text) noexcept {
    SIZE Needed{};
    GetTextExtentPoint32W(MeasuringSurface(), Text.data(), static_cast<int>(Text.size()), &Needed);
    return static_cast<int>(Needed.cx);
}

} // namespace

void Native::ForgetMeasures() noexcept {
    if (Surface == nullptr) return;
    SelectObject(Surface, FontBefore);
    DeleteDC(Surface);
    Surface = nullptr;
}

namespace Measure {

int Scaled(int Pixels96) { return MulDiv(Pixels96, Native::DotsPerInch(), 96); }

int LineHeight() {
    TEXTMETRICW Metrics{};
    GetTextMetricsW(MeasuringSurface(), &Metrics);
    return Metrics.tmHeight;
}

int TextWidth(TextView Text) {
    MeasuringSurface();
    int Width = Text.empty() ? 0 : 1;
    for (const wchar_t Letter : Text) {
        if (Letter >= LetterWidths.size()) return WidthWithAnyLetter(Text) + 1;
        Width += LetterWidths[Letter];
    }
    return Width;
}

int TextHeight(TextView Text, int Width) {
    RECT Box{0, 0, Width, 0};
    DrawTextW(MeasuringSurface(), Text.data(), static_cast<int>(Text.size()), &Box,
              DT_CALCRECT | DT_NOPREFIX | DT_WORDBREAK);
    return static_cast<int>(Box.bottom);
}

Rect TabInterior(const Rect& Outer) {
    RECT Inside{Outer.X, Outer.Y, Outer.X + Outer.Width, Outer.Y + Outer.Height};
    Native::Send(ID_stMain, TCM_ADJUSTRECT, FALSE, &Inside);
    return {static_cast<int>(Inside.left), static_cast<int>(Inside.top),
            static_cast<int>(Inside.right - Inside.left), static_cast<int>(Inside.bottom - Inside.top)};
}

} // namespace Measure
