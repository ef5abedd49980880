// toolkit.h: the columns of the grid and their widths.
#include <algorithm>

#include "window/win32/native.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"

using Native::Send;

namespace {

constexpr GridColumn TeamColumn{L"Team", L"Blue Team", 0, Align::Left};

std::vector<GridColumn> Columns; // of the window's one grid
bool LastIsTeam = false;         // added here

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

int WidthOf(TextView Text) { return Measure::TextWidth(Text) + Measure::Scaled(14); }

// With room for the sort mark.
int LeastWidth(const GridColumn& Column) {
    return std::max(WidthOf(Column.Longest), WidthOf(Column.Caption) + Measure::Scaled(16));
}

// What the cells of a column need beyond its least width.
int Wish(int Id, std::size_t Column) {
    int Widest = 0;
    for (int Row = static_cast<int>(Send(Id, LVM_GETITEMCOUNT)); Row > 0; --Row)
        Widest = std::max(Widest, WidthOf(Native::CellText(Id, Row - 1, static_cast<int>(Column))));
    return std::max(0, Widest - LeastWidth(Columns[Column]));
}

std::vector<int> Wishes(int Id) {
    std::vector<int> Found;
    for (std::size_t Number = 0; Number < Columns.size(); ++Number) Found.push_back(Wish(Id, Number));
    return Found;
}

// Least widths; then every cell whole, as far as the room goes; then the shares, and what rounding leaves to
// the column with the largest.
std::vector<int> ColumnWidths(int Id, const std::vector<int>& Wished) {
    std::vector<int> Widths;
    int Spare = InnerWidth(Id);
    for (const GridColumn& Column : Columns) Spare -= Widths.emplace_back(LeastWidth(Column));
    const auto Widen = [&](std::size_t Number, int Wanted) {
        const int More = std::clamp(Wanted, 0, std::max(Spare, 0));
        Widths[Number] += More;
        Spare -= More;
    };
    for (std::size_t Number = 0; Number < Widths.size(); ++Number) Widen(Number, Wished[Number]);
    const int Left = Spare;
    std::size_t Largest = 0;
    for (std::size_t Number = 0; Number < Widths.size(); ++Number) {
        Widen(Number, Left * Columns[Number].Share / 100);
        if (Columns[Number].Share > Columns[Largest].Share) Largest = Number;
    }
    if (!Widths.empty()) Widen(Largest, Spare);
    return Widths;
}

// A column that keeps its width is not painted anew.
void SetColumnWidths(int Id, const std::vector<int>& Widths) noexcept {
    for (std::size_t Number = 0; Number < Widths.size(); ++Number)
        if (Send(Id, LVM_GETCOLUMNWIDTH, Number) != Widths[Number])
            Send(Id, LVM_SETCOLUMNWIDTH, Number, Widths[Number]);
}

} // namespace

void Grid::SetColumns(std::span<const GridColumn> Looks) const {
    Send(Id, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    Columns.assign(Looks.begin(), Looks.end());
    LastIsTeam = false;
    int Number = 0;
    for (const GridColumn& Column : Columns) InsertColumn(Id, Number++, Column);
    Native::FitTeamColumn(Id);
    Native::FitGridColumns(Id);
}

void Grid::FitColumns() const {
    Native::FitTeamColumn(Id);
    Native::ResumePainting(); // the bars change the room
    Native::FitGridColumns(Id);
}

void Grid::ShowSort(int Column, bool Ascending) const {
    for (int Number = 0; Number < static_cast<int>(Columns.size()); ++Number) {
        HDITEMW Item{};
        Item.mask = HDI_FORMAT;
        SendMessageW(Native::HeaderOf(Id), HDM_GETITEMW, static_cast<WPARAM>(Number),
                     reinterpret_cast<LPARAM>(&Item));
        Item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (Number == Column) Item.fmt |= Ascending ? HDF_SORTUP : HDF_SORTDOWN;
        SendMessageW(Native::HeaderOf(Id), HDM_SETITEMW, static_cast<WPARAM>(Number),
                     reinterpret_cast<LPARAM>(&Item));
    }
}

namespace Native {

HWND HeaderOf(int Id) noexcept { return reinterpret_cast<HWND>(Send(Id, LVM_GETHEADER)); }

bool HasTeamColumn() noexcept { return LastIsTeam; }

int SortableColumns() noexcept { return static_cast<int>(Columns.size()) - (LastIsTeam ? 1 : 0); }

std::wstring CellText(int Id, int Row, int Column) {
    std::wstring Text(256, L'\0');
    LVITEMW Item{};
    Item.iSubItem = Column;
    Item.pszText = Text.data();
    Item.cchTextMax = static_cast<int>(Text.size());
    Text.resize(static_cast<std::size_t>(Send(Id, LVM_GETITEMTEXTW, static_cast<WPARAM>(Row), &Item)));
    return Text;
}

void FitTeamColumn(int Id) {
    if (Columns.empty() || LastIsTeam == NeedsWords()) return;
    LastIsTeam = !LastIsTeam;
    if (LastIsTeam) {
        Columns.push_back(TeamColumn);
        InsertColumn(Id, SortableColumns(), TeamColumn);
    } else {
        Columns.pop_back();
        Send(Id, LVM_DELETECOLUMN, Columns.size());
    }
    for (int Row = static_cast<int>(Send(Id, LVM_GETITEMCOUNT)); Row > 0; --Row) ShowTeamName(Id, Row - 1);
}

void FitGridColumns(int Id) noexcept {
    Trapped(L"mfg", mdlVNT::CurrentProfile, [&] {
        // A scroll bar that comes or goes with the columns changes the room: the second pass sees that.
        const std::vector<int> Wished = Wishes(Id);
        for (int Pass = 0; Pass < 2; ++Pass) SetColumnWidths(Id, ColumnWidths(Id, Wished));
    });
}

} // namespace Native
