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

void Place(const Placed& Each) {
    const bool OnFrame = RowOf(Each.Id).Parent == 0;
    const int X = Each.Where.X - (OnFrame ? static_cast<int>(Offset.x) : 0);
    const int Y = Each.Where.Y - (OnFrame ? static_cast<int>(Offset.y) : 0);
    SetWindowPos(WindowOf(Each.Id), nullptr, X, Y, Each.Where.Width, Each.Where.Height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

int Asked(const SCROLLINFO& Now, WORD Request, int Step) noexcept {
    switch (Request) {
    case SB_LINEUP: return Now.nPos - Step;
    case SB_LINEDOWN: return Now.nPos + Step;
    case SB_PAGEUP: return Now.nPos - static_cast<int>(Now.nPage);
    case SB_PAGEDOWN: return Now.nPos + static_cast<int>(Now.nPage);
    case SB_THUMBTRACK: return Now.nTrackPos;
    case SB_TOP: return 0;
    case SB_BOTTOM: return Now.nMax;
    default: return Now.nPos;
    }
}

} // namespace

void ApplyLayout() noexcept {
    if (Placing || FrameWindow() == nullptr) return;
    Placing = true;
    Trapped(L"FormResize", mdlVNT::CurrentProfile, [] {
        const RECT Area = SetBars(SmallestLayout());
        for (const Placed& Each : LayOut(static_cast<int>(Area.right), static_cast<int>(Area.bottom)))
            Place(Each);
        ForgetPageBackground();
        FitGridColumns();
        RedrawWindow(FrameWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    });
    Placing = false;
}

void Scroll(int Bar, WPARAM Request) noexcept {
    SCROLLINFO Now{};
    Now.cbSize = sizeof Now;
    Now.fMask = SIF_ALL;
    GetScrollInfo(FrameWindow(), Bar, &Now);
    LONG& Position = Bar == SB_HORZ ? Offset.x : Offset.y;
    Position = Asked(Now, LOWORD(Request), Measure::LineHeight());
    ApplyLayout();
}

void ScrollTo(HWND Control) noexcept {
    RECT Area{};
    RECT Place{};
    GetClientRect(FrameWindow(), &Area);
    GetWindowRect(Control, &Place);
    MapWindowPoints(nullptr, FrameWindow(), reinterpret_cast<POINT*>(&Place), 2);
    const POINT Before = Offset;
    if (Place.right > Area.right) Offset.x += Place.right - Area.right;
    if (Place.left < 0) Offset.x += Place.left;
    if (Place.bottom > Area.bottom) Offset.y += Place.bottom - Area.bottom;
    if (Place.top < 0) Offset.y += Place.top;
    if (Before.x != Offset.x || Before.y != Offset.y) ApplyLayout();
}

void ForgetScrolling() noexcept { Offset = {}; }

} // namespace Native
