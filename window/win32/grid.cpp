// toolkit.h: the grid, a list view in report mode.
#include <algorithm>

#include "window/win32/native.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "window/events.h"

using Native::Send;

namespace {

// Only while a screen reader runs, which cannot tell a row's colour.
constexpr GridColumn TeamColumn{L"Team", L"Blue Team", 0, Align::Left};

std::vector<GridColumn> Columns; // of the window's one grid
bool HasTeamColumn = false;      // the last one

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

bool ScreenReaderRuns() noexcept {
    BOOL Runs = FALSE;
    return SystemParametersInfoW(SPI_GETSCREENREADER, 0, &Runs, 0) && Runs;
}

HWND HeaderOf(int Id) noexcept { return reinterpret_cast<HWND>(Send(Id, LVM_GETHEADER)); }

int RowCount(int Id) noexcept { return static_cast<int>(Send(Id, LVM_GETITEMCOUNT)); }

int SelectedRow(int Id) noexcept {
    return static_cast<int>(Send(Id, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void InsertColumn(int Id, int Number, const GridColumn& Added) {
    std::wstring Caption(Added.Caption);
    LVCOLUMNW Column{};
    Column.mask = LVCF_TEXT | LVCF_SUBITEM | LVCF_FMT;
    Column.fmt = Added.Alignment == Align::Right ? LVCFMT_RIGHT : LVCFMT_LEFT;
    Column.pszText = Caption.data();
    Column.iSubItem = Number;
    Send(Id, LVM_INSERTCOLUMNW, static_cast<WPARAM>(Number), &Column);
}

int InnerWidth(int Id) noexcept {
    RECT Inside{};
    GetClientRect(Native::WindowOf(Id), &Inside);
    return static_cast<int>(Inside.right);
}

std::wstring CellText(int Id, int Row, int Column) {
    std::wstring Text(256, L'\0');
    LVITEMW Item{};
    Item.iSubItem = Column;
    Item.pszText = Text.data();
    Item.cchTextMax = static_cast<int>(Text.size());
    Text.resize(static_cast<std::size_t>(Send(Id, LVM_GETITEMTEXTW, static_cast<WPARAM>(Row), &Item)));
    return Text;
}

int WidthOf(TextView Text) { return Measure::TextWidth(Text) + Measure::Scaled(14); }

// With room for the sort mark.
int LeastWidth(const GridColumn& Column) {
    return std::max(WidthOf(Column.Longest), WidthOf(Column.Caption) + Measure::Scaled(16));
}

// What the cells of a column need beyond its least width.
int Wish(int Id, int Column) {
    int Widest = 0;
    for (int Row = RowCount(Id); Row > 0; --Row)
        Widest = std::max(Widest, WidthOf(CellText(Id, Row - 1, Column)));
    return std::max(0, Widest - LeastWidth(Columns[static_cast<std::size_t>(Column)]));
}

// Least widths; then every cell whole, as far as the room goes; then the shares, the rest to the first of
// them.
std::vector<int> ColumnWidths(int Id) {
    std::vector<int> Widths;
    int Spare = InnerWidth(Id);
    for (const GridColumn& Column : Columns) Spare -= Widths.emplace_back(LeastWidth(Column));
    for (std::size_t Number = 0; Number < Widths.size(); ++Number) {
        const int More = std::min(std::max(Spare, 0), Wish(Id, static_cast<int>(Number)));
        Widths[Number] += More;
        Spare -= More;
    }
    const int Left = std::max(Spare, 0);
    for (std::size_t Number = 0; Number < Widths.size(); ++Number) {
        Widths[Number] += Left * Columns[Number].Share / 100;
        Spare -= Left * Columns[Number].Share / 100;
    }
    if (Widths.size() > 1) Widths[1] += std::max(Spare, 0);
    return Widths;
}

// A column that keeps its width is not painted anew.
void SetColumnWidths(int Id, const std::vector<int>& Widths) noexcept {
    for (std::size_t Number = 0; Number < Widths.size(); ++Number)
        if (Send(Id, LVM_GETCOLUMNWIDTH, Number) != Widths[Number])
            Send(Id, LVM_SETCOLUMNWIDTH, Number, Widths[Number]);
}

LRESULT OnCustomDraw(const NMHDR* Header) noexcept {
    // The system hands out its own structure for us to write the colours into.
    auto* Draw = const_cast<NMLVCUSTOMDRAW*>(reinterpret_cast<const NMLVCUSTOMDRAW*>(Header));
    if (Draw->nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
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
    const int Sortable = static_cast<int>(Columns.size()) - (HasTeamColumn ? 1 : 0);
    if (GetKeyState(VK_CONTROL) < 0 && Column >= 0 && Column < Sortable)
        Raise(Id, Event::ColumnClick, Column);
}

} // namespace

void Grid::SetColumns(std::span<const GridColumn> Looks) const {
    Send(Id, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    Columns.assign(Looks.begin(), Looks.end());
    HasTeamColumn = ScreenReaderRuns();
    if (HasTeamColumn) Columns.push_back(TeamColumn);
    int Number = 0;
    for (const GridColumn& Column : Columns) InsertColumn(Id, Number++, Column);
    Native::FitGridColumns(Id);
}

void Grid::SetRowCount(int Count) const {
    const Native::Quiet WhileItChanges;
    for (int Row = RowCount(Id); Row > Count; --Row) Send(Id, LVM_DELETEITEM, static_cast<WPARAM>(Row - 1));
    for (int Row = RowCount(Id); Row < Count; ++Row) {
        LVITEMW Item{};
        Item.mask = LVIF_PARAM;
        Item.iItem = Row;
        Send(Id, LVM_INSERTITEMW, 0, &Item);
    }
}

void Grid::SetCell(int Row, int Column, TextView Text) const {
    std::wstring Copy(Text);
    LVITEMW Item{};
    Item.iSubItem = Column;
    Item.pszText = Copy.data();
    Send(Id, LVM_SETITEMTEXTW, static_cast<WPARAM>(Row), &Item);
}

void Grid::FitColumns() const { Native::FitGridColumns(Id); }

void Grid::SetTeam(int Row, int Team) const {
    const Native::Quiet WhileItChanges;
    LVITEMW Item{};
    Item.mask = LVIF_PARAM;
    Item.iItem = Row;
    Item.lParam = Team;
    Send(Id, LVM_SETITEMW, 0, &Item);
    if (HasTeamColumn) SetCell(Row, static_cast<int>(Columns.size()) - 1, TeamOf(Team).Name);
    Send(Id, LVM_REDRAWITEMS, static_cast<WPARAM>(Row), Row);
}

void Grid::Select(int Row) const {
    const Native::Quiet WhileItChanges;
    if (SelectedRow(Id) == Row) return;
    LVITEMW Item{};
    Item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    if (Row < 0) Item.stateMask = LVIS_SELECTED;
    Item.state = Row < 0 ? 0 : Item.stateMask;
    Send(Id, LVM_SETITEMSTATE, static_cast<WPARAM>(Row), &Item); // -1 means every row
}

void Grid::ShowSort(int Column, bool Ascending) const {
    for (int Number = 0; Number < static_cast<int>(Columns.size()); ++Number) {
        HDITEMW Item{};
        Item.mask = HDI_FORMAT;
        SendMessageW(HeaderOf(Id), HDM_GETITEMW, static_cast<WPARAM>(Number),
                     reinterpret_cast<LPARAM>(&Item));
        Item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (Number == Column) Item.fmt |= Ascending ? HDF_SORTUP : HDF_SORTDOWN;
        SendMessageW(HeaderOf(Id), HDM_SETITEMW, static_cast<WPARAM>(Number),
                     reinterpret_cast<LPARAM>(&Item));
    }
}

namespace Native {

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
    const int Row = SelectedRow(Id) >= 0 ? SelectedRow(Id) : std::min(RowCount(Id), 1) - 1;
    RECT Box{};
    Box.left = LVIR_BOUNDS;
    Send(Id, LVM_ENSUREVISIBLE, static_cast<WPARAM>(Row), FALSE); // the menu acts on a player who can be seen
    if (Row < 0 || !Send(Id, LVM_GETITEMRECT, static_cast<WPARAM>(Row), &Box))
        GetClientRect(WindowOf(Id), &Box);
    MapWindowPoints(WindowOf(Id), nullptr, reinterpret_cast<POINT*>(&Box), 2);
    SetMenuPointBelow(Box);
    Raise(Id, Event::RightClick, Row);
}

void FitGridColumns(int Id) noexcept {
    Trapped(L"mfg", mdlVNT::CurrentProfile, [&] {
        // A scroll bar that comes or goes with the columns changes the room: the second pass sees that.
        for (int Pass = 0; Pass < 2; ++Pass) SetColumnWidths(Id, ColumnWidths(Id));
    });
}

} // namespace Native
