// The messages of the frame and its pages become events.
#include "window/win32/native.h"

#include "window/events.h"

namespace Native {

namespace {

struct CodeRow {
    Kind What;
    WORD Code;
    Event Means;
};
constexpr CodeRow Codes[] = {
    {Kind::Push, BN_CLICKED, Event::Click},        {Kind::Option, BN_CLICKED, Event::Click},
    {Kind::OptionStart, BN_CLICKED, Event::Click}, {Kind::Check, BN_CLICKED, Event::Click},
    {Kind::Text, EN_CHANGE, Event::Change},        {Kind::List, LBN_SELCHANGE, Event::Click},
    {Kind::List, LBN_DBLCLK, Event::DblClick},     {Kind::Text, EN_KILLFOCUS, Event::Leave},
};

void OnControl(int Id, WORD Code) noexcept {
    if (Quiet::Now()) return;
    for (const CodeRow& Row : Codes)
        if (Row.What == KindOf(Id) && Row.Code == Code) Raise(Id, Row.Means);
}

} // namespace

void OnCommand(WPARAM W, LPARAM L) noexcept {
    const int Id = LOWORD(W);
    if (L != 0)
        OnControl(Id, HIWORD(W));
    else if (Id == IDOK)
        OnEnter(IdOf(GetFocus()));
    else
        Raise(Id, Event::Click);
}

// On a player it opens the menu.
void OnEnter(int Focused) noexcept {
    if (KindOf(Focused) == Kind::Grid)
        OnContextMenu(WindowOf(Focused), ByKeyboard);
    else
        Raise(Focused, Event::Enter);
}

LRESULT OnNotify(const NMHDR* Header) noexcept {
    if (Header->code == TTN_GETDISPINFOW) OnTooltip(Header);
    if (KindOf(static_cast<int>(Header->idFrom)) == Kind::Grid) return OnGridNotify(Header);
    if (Header->idFrom == ID_stMain && Header->code == TCN_SELCHANGE)
        ShowPage(static_cast<int>(Send(ID_stMain, TCM_GETCURSEL)));
    return 0;
}

void OnContextMenu(HWND Asked, LPARAM Position) noexcept {
    const POINT Mouse{static_cast<short>(LOWORD(Position)), static_cast<short>(HIWORD(Position))};
    RECT Box{};
    GetWindowRect(Asked, &Box);
    if (Position == ByKeyboard)
        SetMenuPointBelow(Box);
    else
        SetMenuPoint(Mouse);
    // A grid's header is a window of its own.
    const int Id = IdOf(Asked) != 0 ? IdOf(Asked) : IdOf(GetParent(Asked));
    if (KindOf(Id) == Kind::Grid)
        OnGridMenu(Id, Position == ByKeyboard ? nullptr : &Mouse);
    else
        Raise(Id, Event::RightClick);
}

} // namespace Native
