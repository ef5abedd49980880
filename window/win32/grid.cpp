// toolkit.h: the rows of the grid, a list view in report mode.
#include <algorithm>
#include <utility>

#include "window/win32/native.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "window/events.h"

using Native::Send;

namespace {

// The selected row is a darker shade of its team's colour, so that it does not hide the team.
struct TeamRow {
    const wchar_t* Name;
    COLORREF Colour;
    COLORREF Selected;
};
constexpr TeamRow Teams[] = {
    {L"", CLR_DEFAULT, CLR_DEFAULT}, {L"Blue Team", 0xFF8080, 0xA03030}, {L"Red Team", 0x8080FF, 0x3030A0}};
constexpr COLORREF Black = 0x000000, White = 0xFFFFFF;

const TeamRow& TeamOf(LPARAM Team) noexcept { return Teams[Team == 1 || Team == 2 ? Team : 0]; }

int Updates = 0;            // how many live
bool PaintingIsOff = false; // since the first change in them
int LastSelected = -1;      // the row that was selected last, whether a player is in it still or not

// Before each change of a row.
void HoldPainting(int Id) noexcept {
    if (Updates > 0 && !std::exchange(PaintingIsOff, true)) Send(Id, WM_SETREDRAW, FALSE);
}

int RowCount(int Id) noexcept { return static_cast<int>(Send(Id, LVM_GETITEMCOUNT)); }

int SelectedRow(int Id) noexcept {
    return static_cast<int>(Send(Id, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

LRESULT OnCustomDraw(const NMHDR* Header) noexcept {
    // The system hands out its own structure for us to write the colours into.
    auto* Draw = const_cast<NMLVCUSTOMDRAW*>(reinterpret_cast<const NMLVCUSTOMDRAW*>(Header));
    if (Draw->nmcd.dwDrawStage == CDDS_PREPAINT)
        return Native::IsHighContrast() ? CDRF_DODEFAULT : CDRF_NOTIFYITEMDRAW;
    if (Draw->nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
    const TeamRow& Team = TeamOf(Draw->nmcd.lItemlParam);
    if (Team.Colour == CLR_DEFAULT) return CDRF_DODEFAULT;
    const int Id = static_cast<int>(Header->idFrom);
    const bool Selected = static_cast<int>(Draw->nmcd.dwItemSpec) == SelectedRow(Id);
    Draw->clrTextBk = Selected ? Team.Selected : Team.Colour;
    Draw->clrText = Selected ? White : Black;
    Draw->nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED); // or the system's colours win
    return CDRF_NEWFONT;
}

void OnItemChanged(int Id, const NMLISTVIEW& Change) noexcept {
    const bool Chosen = (Change.uNewState & ~Change.uOldState & LVIS_SELECTED) != 0;
    if (Chosen && !Native::Quiet::Now()) Raise(Id, Event::Click, Change.iItem);
}

// Ctrl and a digit sort by that column, as a click on its heading does.
void SortByDigit(int Id, WORD Key) noexcept {
    const int Column = Key - '1';
    if (GetKeyState(VK_CONTROL) < 0 && Column >= 0 && Column < Native::SortableColumns())
        Raise(Id, Event::ColumnClick, Column);
}

} // namespace

GridUpdate::GridUpdate() noexcept { ++Updates; }

GridUpdate::~GridUpdate() {
    if (--Updates == 0) Native::ResumePainting();
}

void Grid::SetRowCount(int Count) const {
    const Native::Quiet WhileItChanges;
    HoldPainting(Id);
    if (Count == 0) Send(Id, LVM_DELETEALLITEMS);
    if (RowCount(Id) == 0) LastSelected = -1;
    for (int Row = RowCount(Id); Row > Count; --Row) Send(Id, LVM_DELETEITEM, static_cast<WPARAM>(Row - 1));
    for (int Row = RowCount(Id); Row < Count; ++Row) {
        LVITEMW Item{};
        Item.mask = LVIF_PARAM;
        Item.iItem = Row;
        Send(Id, LVM_INSERTITEMW, 0, &Item);
    }
}

void Grid::SetCell(int Row, int Column, TextView Text) const {
    HoldPainting(Id);
    std::wstring Copy(Text);
    LVITEMW Item{};
    Item.iSubItem = Column;
    Item.pszText = Copy.data();
    Send(Id, LVM_SETITEMTEXTW, static_cast<WPARAM>(Row), &Item);
}

void Grid::SetTeam(int Row, int Team) const {
    const Native::Quiet WhileItChanges;
    HoldPainting(Id);
    LVITEMW Item{};
    Item.mask = LVIF_PARAM;
    Item.iItem = Row;
    Item.lParam = Team;
    Send(Id, LVM_SETITEMW, 0, &Item);
    Native::ShowTeamName(Id, Row);
    Send(Id, LVM_REDRAWITEMS, static_cast<WPARAM>(Row), Row);
}

void Grid::Select(int Row) const {
    const Native::Quiet WhileItChanges;
    if (Row >= 0) LastSelected = Row;
    if (SelectedRow(Id) == Row) return;
    LVITEMW Item{};
    Item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    if (Row < 0) Item.stateMask = LVIS_SELECTED;
    Item.state = Row < 0 ? 0 : Item.stateMask;
    Send(Id, LVM_SETITEMSTATE, static_cast<WPARAM>(Row), &Item); // -1 means every row
}

namespace Native {

void ResumePainting() noexcept {
    if (!std::exchange(PaintingIsOff, false)) return;
    Send(ID_mfg, WM_SETREDRAW, TRUE);
    InvalidateRect(WindowOf(ID_mfg), nullptr, TRUE);
}

void ShowTeamName(int Id, int Row) {
    if (!HasTeamColumn()) return;
    LVITEMW Item{};
    Item.mask = LVIF_PARAM;
    Item.iItem = Row;
    Send(Id, LVM_GETITEMW, 0, &Item);
    Grid{Id}.SetCell(Row, SortableColumns(), TeamOf(Item.lParam).Name);
}

LRESULT OnGridNotify(const NMHDR* Header) noexcept {
    const int Id = static_cast<int>(Header->idFrom);
    switch (Header->code) {
    case NM_CUSTOMDRAW: return OnCustomDraw(Header);
    case LVN_ITEMCHANGED: OnItemChanged(Id, *reinterpret_cast<const NMLISTVIEW*>(Header)); break;
    case LVN_COLUMNCLICK:
        Raise(Id, Event::ColumnClick, reinterpret_cast<const NMLISTVIEW*>(Header)->iSubItem);
        break;
    case LVN_KEYDOWN: SortByDigit(Id, reinterpret_cast<const NMLVKEYDOWN*>(Header)->wVKey); break;
    // A click beside the rows takes the highlight away, but the selected row stays what it is.
    case NM_CLICK:
    case NM_RCLICK:
        if (reinterpret_cast<const NMITEMACTIVATE*>(Header)->iItem < 0) Raise(Id, Event::Click, -1);
        break;
    default: break;
    }
    return 0;
}

void OnGridMenu(int Id, const POINT* Mouse) noexcept {
    if (Mouse != nullptr) {
        LVHITTESTINFO Hit{};
        Hit.pt = *Mouse;
        ScreenToClient(WindowOf(Id), &Hit.pt);
        RECT Captions{};
        GetWindowRect(HeaderOf(Id), &Captions); // lies over a row that is scrolled half out of sight
        const bool OnHeader = PtInRect(&Captions, *Mouse) != FALSE;
        const int Row = OnHeader ? -1 : static_cast<int>(Send(Id, LVM_SUBITEMHITTEST, 0, &Hit));
        return Raise(Id, Event::RightClick, Row);
    }
    // Without a selected player, where the selection stood: he may have just been punted.
    const int Row =
        std::min(SelectedRow(Id) >= 0 ? SelectedRow(Id) : std::max(LastSelected, 0), RowCount(Id) - 1);
    RECT Box{};
    Box.left = LVIR_BOUNDS;
    Send(Id, LVM_ENSUREVISIBLE, static_cast<WPARAM>(Row), FALSE); // the menu acts on a player who can be seen
    if (Row < 0 || !Send(Id, LVM_GETITEMRECT, static_cast<WPARAM>(Row), &Box))
        GetClientRect(WindowOf(Id), &Box);
    MapWindowPoints(WindowOf(Id), nullptr, reinterpret_cast<POINT*>(&Box), 2);
    SetMenuPointBelow(Box);
    Raise(Id, Event::RightClick, Row);
}

} // namespace Native
