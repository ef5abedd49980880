// The lines of the group boxes, and how they are laid out.
#include "window/layout_frames.h"

#include <algorithm>

#include "window/controls.h"

namespace {

using Measure::LineHeight;
using Measure::Scaled;
using Measure::TextWidth;

enum class Fit : unsigned char {
    None,    // no cell
    Natural, // as wide as its caption
    Column,  // as wide as the widest such cell of its group box
    Digits,  // room for a number
    Clock,   // room for the time of the last answer
    Fill,    // what the others leave
};

struct LayoutCell {
    int Id;
    Fit Width;
};

constexpr int CellsInLine = 3;

enum class LineIs : unsigned char {
    Plain,
    Growing,  // takes the height that is left over
    Indented, // explains the option above it
};

struct LineRow {
    int Group;
    LayoutCell Cells[CellsInLine];
    LineIs What = LineIs::Plain;
};

constexpr LineRow LineRows[] = {
    {ID_Frame2, {{ID_mfg, Fit::Fill}}, LineIs::Growing},
    {ID_Frame2, {{ID_lblTeams, Fit::Fill}, {ID_lblAsOf, Fit::Clock}}},

    {ID_Frame8, {{ID_lblNameCaption, Fit::Column}, {ID_lblName, Fit::Fill}}},
    {ID_Frame8, {{ID_lblDateCaption, Fit::Column}, {ID_lblDate, Fit::Fill}}},
    {ID_Frame8, {{ID_lblReasonCaption, Fit::Column}, {ID_lblReason, Fit::Fill}}, LineIs::Growing},
    {ID_Frame3, {{ID_cmdRemoveName, Fit::Natural}}},
    {ID_Frame4, {{ID_txtSearch, Fit::Fill}, {ID_cmdSearchName, Fit::Natural}}},
    {ID_Frame1, {{ID_lblBannedName, Fit::Column}, {ID_txtBannedName, Fit::Fill}}},
    {ID_Frame1, {{ID_optBanned, Fit::Natural}}},
    {ID_Frame1, {{ID_optBanned + 1, Fit::Natural}}},
    {ID_Frame1, {{ID_lblBanReason, Fit::Column}, {ID_txtBanReason, Fit::Fill}}},
    {ID_Frame1, {{ID_cmdAddName, Fit::Natural}}},

    {ID_Frame9, {{ID_lblIpCaption, Fit::Column}, {ID_lblIp, Fit::Fill}}},
    {ID_Frame9, {{ID_lblIpDateCaption, Fit::Column}, {ID_lblIpDate, Fit::Fill}}},
    {ID_Frame6, {{ID_cmdRemoveIp, Fit::Natural}}},
    {ID_Frame7, {{ID_txtSearchIp, Fit::Fill}, {ID_cmdSearchIp, Fit::Natural}}},
    {ID_Frame10, {{ID_lblAddIp, Fit::Column}, {ID_txtAddIp, Fit::Fill}}},
    {ID_Frame10, {{ID_lblIpHint, Fit::Fill}}},
    {ID_Frame10, {{ID_cmdAddIp, Fit::Natural}}},

    {ID_Frame5, {{ID_optMethod, Fit::Natural}}},
    {ID_Frame5, {{ID_lblMethod, Fit::Fill}}, LineIs::Indented},
    {ID_Frame5, {{ID_optMethod + 1, Fit::Natural}}},
    {ID_Frame5, {{ID_lblMethod + 1, Fit::Fill}}, LineIs::Indented},
    {ID_Frame12, {{ID_chkIdlePunt, Fit::Natural}}},
    {ID_Frame12, {{ID_lblIdleMax, Fit::Natural}, {ID_txtIdleMax, Fit::Digits}, {ID_lblMins, Fit::Natural}}},
    {ID_Frame13,
     {{ID_chkRefresh, Fit::Natural}, {ID_txtRefreshInterval, Fit::Digits}, {ID_lblSecs, Fit::Natural}}},

    {ID_Frame11, {{ID_lstSlaps, Fit::Fill}}, LineIs::Growing},
    {ID_Frame11, {{ID_txtSlap, Fit::Fill}}},
    {ID_Frame11,
     {{ID_cmdSlapAdd, Fit::Natural}, {ID_cmdSlapEdit, Fit::Natural}, {ID_cmdSlapDelete, Fit::Natural}}},
};

int CellGap() { return Scaled(5); }
int Side() { return Scaled(7); }
int Bottom() { return Scaled(6); }
int Top(int Group) { return *RowOf(Group).Caption != 0 ? LineHeight() + Scaled(3) : Scaled(10); }

// Of an option button or check box, with the gap to its text.
int MarkWidth() { return Scaled(16); }

int NaturalWidth(const ControlRow& Row) {
    const int Text = TextWidth(Row.Caption);
    if (Row.What == Kind::Push) return std::max(Text + Scaled(18), Scaled(64));
    return Row.What == Kind::Caption ? Text : Text + MarkWidth() + Scaled(6);
}

int LeastFill(const ControlRow& Row) {
    if (Row.What == Kind::Value) return TextWidth(L"2004-07-09 19:05:03");
    return Row.What == Kind::Text ? Scaled(52) : Scaled(150);
}

int ColumnWidth(int Group) {
    int Widest = 0;
    for (const LineRow& Row : LineRows)
        for (const LayoutCell& Cell : Row.Cells)
            if (Row.Group == Group && Cell.Width == Fit::Column)
                Widest = std::max(Widest, NaturalWidth(RowOf(Cell.Id)));
    return Widest;
}

// The least width of a cell.
int CellWidth(const LayoutCell& Cell, int Group) {
    switch (Cell.Width) {
    case Fit::Natural: return NaturalWidth(RowOf(Cell.Id));
    case Fit::Column: return ColumnWidth(Group);
    case Fit::Digits: return TextWidth(L"0000") + Scaled(10);
    case Fit::Clock: return TextWidth(L"No answer since 00:00:00") + Scaled(2);
    case Fit::Fill: return LeastFill(RowOf(Cell.Id));
    case Fit::None: break;
    }
    return 0;
}

int Indent(const LineRow& Row) { return Row.What == LineIs::Indented ? MarkWidth() : 0; }

int LineWidth(const LineRow& Row) {
    int Width = Indent(Row) - CellGap();
    for (const LayoutCell& Cell : Row.Cells)
        if (Cell.Width != Fit::None) Width += CellWidth(Cell, Row.Group) + CellGap();
    return Width;
}

int CellHeight(const LayoutCell& Cell, int Width) {
    const ControlRow& Row = RowOf(Cell.Id);
    switch (Row.What) {
    // The system puts a box's text three pixels below its top at any scale: so it is level with its label.
    case Kind::Text: return LineHeight() + 6;
    case Kind::Push: return LineHeight() + Scaled(10);
    case Kind::Option:
    case Kind::OptionStart:
    case Kind::Check: return std::max(LineHeight(), Scaled(13)) + Scaled(2);
    case Kind::List:
    case Kind::Grid: return ListHeight();
    case Kind::Caption: return Measure::TextHeight(Row.Caption, Width);
    default: return LineHeight();
    }
}

// The cells' rectangles within a line of this width.
std::vector<Placed> CellsOf(const LineRow& Row, int Width) {
    std::vector<Placed> Cells;
    const int Spare = std::max(0, Width - LineWidth(Row));
    int X = Indent(Row);
    for (const LayoutCell& Cell : Row.Cells) {
        if (Cell.Width == Fit::None) continue;
        const int Wide = CellWidth(Cell, Row.Group) + (Cell.Width == Fit::Fill ? Spare : 0);
        Cells.push_back({Cell.Id, {X, 0, Wide, CellHeight(Cell, Wide)}});
        X += Wide + CellGap();
    }
    return Cells;
}

int LineHeightOf(const std::vector<Placed>& Cells) {
    int Tallest = 0;
    for (const Placed& Cell : Cells) Tallest = std::max(Tallest, Cell.Area.Height);
    return Tallest;
}

} // namespace

int LayoutGap() { return Scaled(4); }

int ListHeight() { return 4 * (LineHeight() + Scaled(4)); }

int GroupWidth(int Group) {
    int Widest = TextWidth(RowOf(Group).Caption) + Scaled(8);
    for (const LineRow& Row : LineRows)
        if (Row.Group == Group) Widest = std::max(Widest, LineWidth(Row));
    return Widest + 2 * Side();
}

int GroupHeight(int Group, int Width) {
    int Height = Top(Group) + Bottom() - Scaled(4);
    for (const LineRow& Row : LineRows)
        if (Row.Group == Group) Height += LineHeightOf(CellsOf(Row, Width - 2 * Side())) + Scaled(4);
    return Height;
}

void PlaceGroup(std::vector<Placed>& Out, int Group, const Rect& Area) {
    Out.push_back({Group, Area});
    const int Spare = std::max(0, Area.Height - GroupHeight(Group, Area.Width));
    int Y = Area.Y + Top(Group);
    for (const LineRow& Row : LineRows) {
        if (Row.Group != Group) continue;
        const std::vector<Placed> Cells = CellsOf(Row, Area.Width - 2 * Side());
        const int Tall = LineHeightOf(Cells);
        for (Placed Cell : Cells) {
            Cell.Area.X += Area.X + Side();
            Cell.Area.Y = Y + (Tall - Cell.Area.Height) / 2;
            if (Row.What == LineIs::Growing) Cell.Area.Height += Spare;
            Out.push_back(Cell);
        }
        Y += Tall + Scaled(4) + (Row.What == LineIs::Growing ? Spare : 0);
    }
}
