// Places the controls, and scrolls where the host's area is smaller than the smallest layout.
#include <algorithm>

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "window/layout.h"
#include "window/win32/native.h"

namespace Native {

namespace {

POINT Offset{}; // how far the layout is scrolled
bool Placing = false;

int SetBar(int Bar, int Content, int Visible, int Position) noexcept {
    SCROLLINFO Info{};
    Info.cbSize = sizeof Info;
    Info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    Info.nMax = Content - 1;
    Info.nPage = static_cast<UINT>(std::max(Visible, 1));
    Info.nPos = Position;
    SetScrollInfo(FrameWindow(), Bar, &Info, TRUE);
    return std::clamp(Position, 0, std::max(0, Content - Visible));
}

// A bar that comes takes room from the other direction: the second pass sees that.
RECT SetBars(const Size& Smallest) noexcept {
    RECT Area{};
    for (int Pass = 0; Pass < 2; ++Pass) {
        GetClientRect(FrameWindow(), &Area);
        Offset.x = SetBar(SB_HORZ, Smallest.Width, static_cast<int>(Area.right), static_cast<int>(Offset.x));
        Offset.y =
            SetBar(SB_VERT, Smallest.Height, static_cast<int>(Area.bottom), static_cast<int>(Offset.y));
    }
    GetClientRect(FrameWindow(), &Area);
    return Area;
}

void MoveControl(const Placed& Control) {
    const bool OnFrame = RowOf(Control.Id).Parent == 0;
    const int X = Control.Area.X - (OnFrame ? static_cast<int>(Offset.x) : 0);
    const int Y = Control.Area.Y - (OnFrame ? static_cast<int>(Offset.y) : 0);
    SetWindowPos(WindowOf(Control.Id), nullptr, X, Y, Control.Area.Width, Control.Area.Height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

// How far to scroll so that a stretch of the layout comes into sight; of one that is too long its beginning,
// as the tabs are above their page.
LONG Hidden(LONG From, LONG To, LONG Visible) noexcept {
    return From < 0 ? From : std::clamp<LONG>(To - Visible, 0, From);
}

int Asked(const SCROLLINFO& Bar, WORD Request, int Step) noexcept {
    switch (Request) {
    case SB_LINEUP: return Bar.nPos - Step;
    case SB_LINEDOWN: return Bar.nPos + Step;
    case SB_PAGEUP: return Bar.nPos - static_cast<int>(Bar.nPage);
    case SB_PAGEDOWN: return Bar.nPos + static_cast<int>(Bar.nPage);
    case SB_THUMBTRACK: return Bar.nTrackPos;
    case SB_TOP: return 0;
    case SB_BOTTOM: return Bar.nMax;
    default: return Bar.nPos;
    }
}

} // namespace

void ApplyLayout() noexcept {
    if (Placing || FrameWindow() == nullptr) return;
    Placing = true;
    Trapped(L"FormResize", mdlVNT::CurrentProfile, [] {
        const RECT Area = SetBars(SmallestLayout());
        for (const Placed& Control : LayOut(static_cast<int>(Area.right), static_cast<int>(Area.bottom)))
            MoveControl(Control);
        CutPageHole();
        ForgetPageBackground();
        FitGridColumns(ID_mfg);
        RedrawWindow(FrameWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    });
    Placing = false;
}

void Scroll(int Bar, WPARAM Request) noexcept {
    SCROLLINFO Info{};
    Info.cbSize = sizeof Info;
    Info.fMask = SIF_ALL;
    GetScrollInfo(FrameWindow(), Bar, &Info);
    LONG& Position = Bar == SB_HORZ ? Offset.x : Offset.y;
    Position = Asked(Info, LOWORD(Request), Measure::LineHeight());
    ApplyLayout();
}

void ScrollByWheel(WPARAM Turn) noexcept {
    UINT Lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &Lines, 0);
    // A wheel that scrolls by pages asks for more lines than there are.
    const int Notch = static_cast<int>(std::min(Lines, 10u)) * Measure::LineHeight();
    Offset.y -= GET_WHEEL_DELTA_WPARAM(Turn) * Notch / WHEEL_DELTA;
    ApplyLayout();
}

void ScrollTo(HWND Control) noexcept {
    RECT Area{};
    RECT Box{};
    GetClientRect(FrameWindow(), &Area);
    GetWindowRect(Control, &Box);
    MapWindowPoints(nullptr, FrameWindow(), reinterpret_cast<POINT*>(&Box), 2);
    const POINT Before = Offset;
    Offset.x += Hidden(Box.left, Box.right, Area.right);
    Offset.y += Hidden(Box.top, Box.bottom, Area.bottom);
    if (Before.x != Offset.x || Before.y != Offset.y) ApplyLayout();
}

void ForgetScrolling() noexcept { Offset = {}; }

} // namespace Native
