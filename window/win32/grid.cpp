#include <algorithm>

#include "window/win32/native.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "window/handlers.h"

using Native::Send;

namespace {

constexpr int TeamColumn = 4; // only while a screen reader runs: it cannot tell the row's colour

// What a column must show, and its share (per cent) of the width that is left over.
struct ColumnWidth {
    const wchar_t* Longest;
    int Share;
};
constexpr ColumnWidth ColumnWidths[] = {
    {L"Slot", 0}, {L"Player", 65}, {L"255.255.255.255", 25}, {L"Ping", 10}, {L"Blue Team", 0}};

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

HWND Header() noexcept { return reinterpret_cast<HWND>(Send(ID_mfg, LVM_GETHEADER)); }

int ColumnCount() noexcept { return Header() != nullptr ? Header_GetItemCount(Header()) : 0; }

int Rows() noexcept { return static_cast<int>(Send(ID_mfg, LVM_GETITEMCOUNT)); }

void AddColumn(int Number, TextView Caption) {
    std::wstring Text(Caption);
    LVCOLUMNW Column{};
    Column.mask = LVCF_TEXT | LVCF_SUBITEM;
    Column.pszText = Text.data();
    Column.iSubItem = Number;
    Send(ID_mfg, LVM_INSERTCOLUMNW, static_cast<WPARAM>(Number), &Column);
}

bool IsSelected(int Row) noexcept {
    return Send(ID_mfg, LVM_GETITEMSTATE, static_cast<WPARAM>(Row), LVIS_SELECTED) != 0;
}

int InnerWidth() noexcept {
    RECT Inside{};
    GetClientRect(Native::WindowOf(ID_mfg), &Inside);
    return static_cast<int>(Inside.right);
}

LRESULT OnCustomDraw(const NMHDR* Header) noexcept {
    // The system hands out its own structure for us to write the colours into.
    auto* Draw = const_cast<NMLVCUSTOMDRAW*>(reinterpret_cast<const NMLVCUSTOMDRAW*>(Header));
    if (Draw->nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (Draw->nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
    const TeamRow& Team = TeamOf(Draw->nmcd.lItemlParam);
    if (Team.Colour == CLR_DEFAULT) return CDRF_DODEFAULT;
    const bool Selected = IsSelected(static_cast<int>(Draw->nmcd.dwItemSpec));
    Draw->clrTextBk = Selected ? Team.Selected : Team.Colour;
    Draw->clrText = Selected ? White : Black;
    Draw->nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED); // or the system's colours win
    return CDRF_NEWFONT;
}

void OnItemChanged(const NMLISTVIEW& Change) noexcept {
    const bool Chosen = (Change.uNewState & ~Change.uOldState & LVIS_SELECTED) != 0;
    if (Chosen && !Native::Quiet::Now()) mfg_MouseDown(MouseButton::Left, Change.iItem + 1);
}

// Ctrl and a digit sort by that column, as a click on its header does.
void OnKey(WORD Key) noexcept {
    if (GetKeyState(VK_CONTROL) < 0 && Key >= '1' && Key < '1' + TeamColumn) mfg_MouseUp(Key - '1');
}

} // namespace

void Grid::SetColumns(std::span<const wchar_t* const> Captions) const {
    Send(Id, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    int Number = 0;
    for (const wchar_t* Caption : Captions) AddColumn(Number++, Caption);
    if (ScreenReaderRuns()) AddColumn(TeamColumn, L"Team");
    Native::FitGridColumns();
}

void Grid::SetRowCount(int Count) const {
    const Native::Quiet Setting;
    const int Before = InnerWidth();
    for (int Row = Rows(); Row > Count; --Row) Send(Id, LVM_DELETEITEM, static_cast<WPARAM>(Row - 1));
    for (int Row = Rows(); Row < Count; ++Row) {
        LVITEMW Item{};
        Item.mask = LVIF_PARAM;
        Item.iItem = Row;
        Send(Id, LVM_INSERTITEMW, 0, &Item);
    }
    if (InnerWidth() != Before) Native::FitGridColumns(); // a scroll bar came or went
}

void Grid::SetCell(int Row, int Column, TextView Text) const {
    std::wstring Copy(Text);
    LVITEMW Item{};
    Item.iSubItem = Column;
    Item.pszText = Copy.data();
    Send(Id, LVM_SETITEMTEXTW, static_cast<WPARAM>(Row), &Item);
}

void Grid::SetTeam(int Row, int Team) const {
    const Native::Quiet Setting;
    LVITEMW Item{};
    Item.mask = LVIF_PARAM;
    Item.iItem = Row;
    Item.lParam = Team;
    Send(Id, LVM_SETITEMW, 0, &Item);
    if (ColumnCount() > TeamColumn) SetCell(Row, TeamColumn, TeamOf(Team).Name);
    Send(Id, LVM_REDRAWITEMS, static_cast<WPARAM>(Row), Row);
}

void Grid::Select(int Row) const {
    const Native::Quiet Setting;
    const LRESULT Now = Send(Id, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    if (Now == Row) return;
    LVITEMW Item{};
    Item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    if (Row < 0) Item.stateMask = LVIS_SELECTED;
    Item.state = Row < 0 ? 0 : Item.stateMask;
    Send(Id, LVM_SETITEMSTATE, static_cast<WPARAM>(Row), &Item); // -1 means every row
}

void Grid::ShowSort(int Column, bool Ascending) const {
    for (int Number = 0; Number < ColumnCount(); ++Number) {
        HDITEMW Item{};
        Item.mask = HDI_FORMAT;
        SendMessageW(Header(), HDM_GETITEMW, static_cast<WPARAM>(Number), reinterpret_cast<LPARAM>(&Item));
        Item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (Number == Column) Item.fmt |= Ascending ? HDF_SORTUP : HDF_SORTDOWN;
        SendMessageW(Header(), HDM_SETITEMW, static_cast<WPARAM>(Number), reinterpret_cast<LPARAM>(&Item));
    }
}

namespace Native {

LRESULT OnGridNotify(const NMHDR* Header) noexcept {
    switch (Header->code) {
    case NM_CUSTOMDRAW: return OnCustomDraw(Header);
    case LVN_ITEMCHANGED: OnItemChanged(*reinterpret_cast<const NMLISTVIEW*>(Header)); break;
    case LVN_COLUMNCLICK: mfg_MouseUp(reinterpret_cast<const NMLISTVIEW*>(Header)->iSubItem); break;
    case LVN_KEYDOWN: OnKey(reinterpret_cast<const NMLVKEYDOWN*>(Header)->wVKey); break;
    // A click beside the rows takes the highlight away, but the selected row stays what it is.
    case NM_CLICK:
    case NM_RCLICK:
        if (reinterpret_cast<const NMITEMACTIVATE*>(Header)->iItem < 0) mfg_MouseDown(MouseButton::Left, -1);
        break;
    default: break;
    }
    return 0;
}

int GridRowAt(POINT Screen) noexcept {
    if (Rows() == 0) return 0;
    RECT Captions{};
    GetWindowRect(::Header(), &Captions);
    if (PtInRect(&Captions, Screen)) return 0;
    LVHITTESTINFO Hit{};
    Hit.pt = Screen;
    ScreenToClient(WindowOf(ID_mfg), &Hit.pt);
    const LRESULT Row = Send(ID_mfg, LVM_SUBITEMHITTEST, 0, &Hit);
    return Row >= 0 ? static_cast<int>(Row) + 1 : -1;
}

RECT GridRowRect(int Row) noexcept {
    RECT Place{};
    Place.left = LVIR_BOUNDS;
    if (Row < 1 || !Send(ID_mfg, LVM_GETITEMRECT, static_cast<WPARAM>(Row - 1), &Place)) {
        GetClientRect(WindowOf(ID_mfg), &Place);
        Place.bottom = Place.top + Measure::Scaled(24);
    }
    MapWindowPoints(WindowOf(ID_mfg), nullptr, reinterpret_cast<POINT*>(&Place), 2);
    return Place;
}

void FitGridColumns() noexcept {
    Trapped(L"mfg", mdlVNT::CurrentProfile, [] {
        int Spare = InnerWidth();
        std::vector<int> Widths;
        for (const ColumnWidth& Each : ColumnWidths) {
            Widths.push_back(Measure::TextWidth(Each.Longest) +
                             Measure::Scaled(24)); // room for the sort mark
            if (static_cast<int>(Widths.size()) <= ColumnCount()) Spare -= Widths.back();
        }
        for (std::size_t Number = 0; Number < Widths.size(); ++Number)
            Widths[Number] += std::max(Spare, 0) * ColumnWidths[Number].Share / 100;
        for (int Number = 0; Number < ColumnCount(); ++Number)
            Send(ID_mfg, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(Number),
                 Widths[static_cast<std::size_t>(Number)]);
    });
}

} // namespace Native
