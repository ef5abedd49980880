// The player grid: its columns, its rows, their order and the selected one.
#include "window/player_rows.h"

#include <algorithm>

#include "game/mdlVNT.h"
#include "host/platform.h"
#include "host/work.h"
#include "window/controls.h"
#include "window/row_order.h"

namespace {

using Rows = std::vector<ListedPlayer>;

struct Column {
    GridColumn Look;
    std::wstring (*Text)(const ListedPlayer& Player);
    Order (*Compare)(TextView, TextView);
};
constexpr Column Columns[] = {
    {{L"Slot", L"Slot", 0, Align::Left},
     [](const ListedPlayer& Player) { return TwoDigits(Player.Slot); },
     CompareNumbers},
    {{L"Player", L"Player", 65, Align::Left},
     [](const ListedPlayer& Player) { return Player.Name; },
     CompareNames},
    {{L"IP", L"255.255.255.255", 25, Align::Left},
     [](const ListedPlayer& Player) { return Player.Ip; },
     CompareAddresses},
    {{L"Ping", L"Ping", 10, Align::Right},
     [](const ListedPlayer& Player) { return Player.Ping; },
     CompareNumbers},
};
constexpr int ColumnCount = std::size(Columns);

enum class Direction : unsigned char { None, Ascending, Descending };

Rows Shown;              // what is on the screen, in its order
Long ShownProfile;       // whose players
int SelectedRow = -1;    // of the chosen player; -1 for none
int SortColumn;          // of the last sort
Direction SortedBy;      // its direction
bool RefreshIsWanted;    // asked for while it was held
std::wstring LastAnswer; // of the server: the time of day, or of the first question when there was none

// Players that tie stand in the order of their slots, before and after a refresh.
void SortRows(Rows& Players) {
    if (SortedBy == Direction::None) return;
    const Column& By = Columns[SortColumn];
    const bool Ascending = SortedBy == Direction::Ascending;
    std::sort(Players.begin(), Players.end(), [&](const ListedPlayer& A, const ListedPlayer& B) {
        const Order Found = By.Compare(By.Text(A), By.Text(B));
        if (Found == 0) return A.Slot < B.Slot;
        return Ascending ? Found < 0 : Found > 0;
    });
}

// Writes only what differs from the screen: a refresh with the same players touches nothing. Returns whether
// a text differed.
bool ShowRow(int Row, const ListedPlayer& Player, bool IsNew) {
    ListedPlayer& Old = Shown[static_cast<std::size_t>(Row)];
    bool Differs = false;
    for (int Number = 0; Number < ColumnCount; ++Number) {
        const std::wstring Text = Columns[Number].Text(Player);
        if (!IsNew && Columns[Number].Text(Old) == Text) continue;
        mfg.SetCell(Row, Number, Text);
        Differs = true;
    }
    if (Old.Team != Player.Team) mfg.SetTeam(Row, Player.Team);
    Old = Player;
    return Differs;
}

// Where the chosen player stands among these; -1 once he is gone.
int RowOfChosen(const Rows& Players) {
    const std::optional<ChosenPlayer> Chosen = SelectedPlayer();
    for (std::size_t Row = 0; Chosen && Row < Players.size(); ++Row)
        if (Players[Row].Slot == Chosen->Player.Slot && Players[Row].Name == Chosen->Player.Name)
            return static_cast<int>(Row);
    return -1;
}

void ShowRows(const Rows& Players) {
    const GridUpdate PaintedOnce;
    const int Chosen = RowOfChosen(Players);
    const std::size_t Before = Shown.size();
    if (Players.size() != Before) {
        mfg.SetRowCount(static_cast<int>(Players.size()));
        Shown.resize(Players.size());
    }
    bool Differs = Players.size() != Before;
    for (std::size_t Row = 0; Row < Players.size(); ++Row)
        Differs |= ShowRow(static_cast<int>(Row), Players[Row], Row >= Before);
    if (Differs) mfg.FitColumns();
    SelectPlayerRow(Chosen);
}

// How old the rows are.
void ShowAge(bool HasAnswered) {
    const std::wstring Now = ListTimeText(Platform::Now());
    if (HasAnswered || LastAnswer.empty()) LastAnswer = Now;
    lblAsOf.SetText((HasAnswered ? L"As of " : L"No answer since ") + LastAnswer);
}

// A table whose read failed on the way shows the rows that came. When not even the game state could be read,
// the rows stay and the summary becomes empty.
void ShowTable(PlayerTable& Table) {
    if (Table.Begun) {
        SortRows(Table.Rows);
        ShowRows(Table.Rows);
    }
    ShowAge(Table.Begun);
    if ((Table.Complete || !Table.Begun) && lblTeams.Text() != Table.Summary) lblTeams.SetText(Table.Summary);
}

} // namespace

std::optional<ChosenPlayer> SelectedPlayer() {
    if (SelectedRow < 0 || static_cast<std::size_t>(SelectedRow) >= Shown.size()) return std::nullopt;
    return ChosenPlayer{ShownProfile, Shown[static_cast<std::size_t>(SelectedRow)]};
}

bool HasPlayerRows() { return !Shown.empty(); }

Long PlayersWith(TextView Part) {
    return static_cast<Long>(std::ranges::count_if(
        Shown, [&](const ListedPlayer& Player) { return Player.Name.find(Part) != std::wstring::npos; }));
}

void SelectPlayerRow(int Row) {
    SelectedRow = Row;
    ShowSelectedRow();
}

void ShowSelectedRow() { mfg.Select(SelectedPlayer() ? SelectedRow : -1); }

void RefreshGrid() {
    RefreshIsWanted = Work::Runs(Work::Kind::GridHold);
    if (RefreshIsWanted) return;
    const Work WhileItIsRead(Work::Kind::GridHold, 0);
    ShownProfile = mdlVNT::CurrentProfile;
    PlayerTable Table = GetPlayerList(ShownProfile, L"LIST");
    ShowTable(Table);
}

void CatchUpRefresh() {
    if (RefreshIsWanted) RefreshGrid();
}

void ClearPlayerRows() {
    ShowRows({});
    LastAnswer.clear();
    for (const Label& Said : {lblTeams, lblAsOf}) Said.SetText(L"");
}

void SortByColumn(int Number) {
    if (Number < 0 || Number >= ColumnCount) return;
    const bool Again = Number == SortColumn && SortedBy == Direction::Ascending;
    SortedBy = Again ? Direction::Descending : Direction::Ascending;
    SortColumn = Number;
    mfg.ShowSort(SortColumn, SortedBy == Direction::Ascending);
    Rows Sorted = Shown;
    SortRows(Sorted);
    ShowRows(Sorted);
}

void LayOutGridHeader() {
    std::vector<GridColumn> Looks;
    for (const Column& Row : Columns) Looks.push_back(Row.Look);
    mfg.SetColumns(Looks);
}

void ForgetPlayerRows() noexcept {
    Shown.clear();
    ShownProfile = 0;
    SelectedRow = -1;
    SortColumn = 0;
    SortedBy = Direction::None;
    RefreshIsWanted = false;
    LastAnswer.clear();
}
