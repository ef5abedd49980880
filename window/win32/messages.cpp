#include <algorithm>

#include "window/win32/native.h"

#include "window/events.h"
#include "window/handlers.h"
#include "window/player_rows.h"

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
    {Kind::List, LBN_DBLCLK, Event::DblClick},
};

void OnControl(int Id, WORD Code) noexcept {
    if (Quiet::Now()) return;
    for (const ControlRow& Control : Controls()) {
        if (Control.Id != Id) continue;
        for (const CodeRow& Row : Codes)
            if (Row.What == Control.What && Row.Code == Code) Raise(Id, Row.Means);
    }
}

// Below a row or control, where the menu key was pressed.
void MenuBelow(const RECT& Place) noexcept {
    SetMenuPoint({Place.left + Measure::Scaled(16), std::min(Place.bottom, Place.top + Measure::Scaled(24))});
}

void OnGridMenu(bool FromKeyboard, POINT Screen) noexcept {
    const int Row = FromKeyboard ? SelectedOrFirstRow() : GridRowAt(Screen);
    if (FromKeyboard) MenuBelow(GridRowRect(Row));
    mfg_MouseDown(MouseButton::Right, Row);
}

} // namespace

void OnCommand(WPARAM W, LPARAM L) noexcept {
    const int Id = LOWORD(W);
    if (L != 0)
        OnControl(Id, HIWORD(W));
    else if (Id == IDOK)
        Raise(IdOf(GetFocus()), Event::Enter);
    else
        Raise(Id, Event::Click);
}

LRESULT OnNotify(const NMHDR* Header) noexcept {
    if (Header->code == TTN_GETDISPINFOW) OnTooltip(Header);
    if (Header->idFrom == ID_mfg) return OnGridNotify(Header);
    if (Header->idFrom == ID_stMain && Header->code == TCN_SELCHANGE)
        ShowPage(static_cast<int>(Send(ID_stMain, TCM_GETCURSEL)));
    return 0;
}

void OnContextMenu(HWND Asked, LPARAM Position) noexcept {
    const bool FromKeyboard = Position == -1;
    const POINT Screen{static_cast<short>(LOWORD(Position)), static_cast<short>(HIWORD(Position))};
    SetMenuPoint(Screen);
    const HWND Grid = WindowOf(ID_mfg);
    if (Asked == Grid || IsChild(Grid, Asked)) return OnGridMenu(FromKeyboard, Screen);
    if (FromKeyboard) {
        RECT Place{};
        GetWindowRect(Asked, &Place);
        MenuBelow(Place);
    }
    Raise(IdOf(Asked), Event::RightClick);
}

} // namespace Native
