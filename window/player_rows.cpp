#include "window/player_rows.h"

#include <algorithm>

#include "game/mdlVNT.h"
#include "game/player_grid.h"
#include "window/controls.h"
#include "window/row_order.h"

namespace {

using Rows = std::vector<ListedPlayer>;

struct Column {
    const wchar_t* Caption;
    std::wstring ListedPlayer::*Text;
    Order (*Compare)(TextView, TextView);
};
constexpr Column Columns[] = {
    {L"Slot", &ListedPlayer::Slot, CompareNumbers},
    {L"Player", &ListedPlayer::Name, CompareNames},
    {L"IP", &ListedPlayer::Ip, CompareAddresses},
    {L"Ping", &ListedPlayer::Ping, CompareNumbers},
};
constexpr int ColumnCount = std::size(Columns);

enum class Direction : unsigned char { None, Ascending, Descending };

Rows Incoming;        // what the reader has added so far
Rows Shown;           // what is on the screen, in its order
Long ShownProfile;    // whose players
int SelectedRow;      // as last chosen; 0 before the first choice
int SortColumn;       // of the last sort
Direction SortedBy;   // its direction
int Holds;            // how many hold the grid
bool RefreshIsWanted; // asked for while it was held

void SortRows(Rows& Players) {
    if (SortedBy == Direction::None) return;
    const Column& By = Columns[SortColumn];
    const bool Ascending = SortedBy == Direction::Ascending;
    std::stable_sort(Players.begin(), Players.end(), [&](const ListedPlayer& A, const ListedPlayer& B) {
        const Order Found = By.Compare(A.*By.Text, B.*By.Text);
        return Ascending ? Found < 0 : Found > 0;
    });
}

// Writes only what differs from the screen: a refresh with the same players touches nothing.
void ShowRow(int Row, const ListedPlayer& Player) {
    ListedPlayer& Old = Shown[static_cast<std::size_t>(Row)];
    for (int Number = 0; Number < ColumnCount; ++Number) {
        const auto Text = Columns[Number].Text;
        if (Old.*Text != Player.*Text) mfg.SetCell(Row, Number, Player.*Text);
    }
    if (Old.Team != Player.Team) mfg.SetTeam(Row, Player.Team);
    Old = Player;
}

void ShowRows(const Rows& Players) {
    const bool OtherCount = Players.size() != Shown.size();
    if (OtherCount) {
        mfg.SetRowCount(static_cast<int>(Players.size()));
        Shown.resize(Players.size());
    }
    int Row = 0;
    for (const ListedPlayer& Player : Players) ShowRow(Row++, Player);
    if (OtherCount) ShowSelectedRow();
}

} // namespace

void BeginPlayerGrid() { Incoming.clear(); }

void AddPlayerRow(const ListedPlayer& Player) { Incoming.push_back(Player); }

void EndPlayerGrid(TextView Summary) {
    SortRows(Incoming);
    ShowRows(Incoming);
    if (!Summary.empty() && lblTeams.Text() != Summary) lblTeams.SetText(Summary);
}

std::optional<ChosenPlayer> SelectedPlayer() {
    if (SelectedRow < 1 || static_cast<std::size_t>(SelectedRow) > Shown.size()) return std::nullopt;
    return ChosenPlayer{ShownProfile, Shown[static_cast<std::size_t>(SelectedRow) - 1]};
}

bool HasPlayerRows() { return !Shown.empty(); }

void SelectPlayerRow(int Row) {
    SelectedRow = Row;
    ShowSelectedRow();
}

void ShowSelectedRow() { mfg.Select(SelectedPlayer() ? SelectedRow - 1 : -1); }

int SelectedOrFirstRow() {
    if (SelectedPlayer()) return SelectedRow;
    return HasPlayerRows() ? 1 : 0;
}

void RefreshGrid() {
    RefreshIsWanted = Holds > 0;
    if (RefreshIsWanted) return;
    const GridHold WhileItIsRead;
    ShownProfile = mdlVNT::CurrentProfile;
    GetPlayerList(ShownProfile, L"LIST");
}

void CatchUpRefresh() {
    if (RefreshIsWanted) RefreshGrid();
}

GridHold::GridHold() noexcept { ++Holds; }
GridHold::~GridHold() { --Holds; }

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
    std::vector<const wchar_t*> Captions;
    for (const Column& Each : Columns) Captions.push_back(Each.Caption);
    mfg.SetColumns(Captions);
}

void ForgetPlayerRows() noexcept {
    Incoming.clear();
    Shown.clear();
    ShownProfile = 0;
    SelectedRow = 0;
    SortColumn = 0;
    SortedBy = Direction::None;
    RefreshIsWanted = false;
}

void ForgetSelectedRow() { SelectPlayerRow(0); }
