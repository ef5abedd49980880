// The rows of the player grid, as they are on the screen.
#pragma once

#include <optional>

#include "game/player_table.h"

// A row's player as read once, together with the profile whose players the grid shows.
struct ChosenPlayer {
    Long Index;
    ListedPlayer Player;
};
// The player in the selected row; none when there is no such row.
std::optional<ChosenPlayer> SelectedPlayer();

bool HasPlayerRows();
// Row 1 is the first player; other rows are not selected.
void SelectPlayerRow(int Row);
// Highlights the selected row again.
void ShowSelectedRow();
// The selected row when a player is in it, else the first player's; 0 when the grid is empty.
int SelectedOrFirstRow();

// Reads the current profile's players into the grid. While the grid is held the reading waits.
void RefreshGrid();
// What was asked for while the grid was held.
void CatchUpRefresh();

// While one lives the grid keeps its rows: what the administrator points at stays what it is.
class GridHold {
public:
    GridHold() noexcept;
    ~GridHold();
    GridHold(const GridHold&) = delete;
    GridHold& operator=(const GridHold&) = delete;
};

// Sorts by a column, the other way round when it was the last one; "slot" is column 0.
void SortByColumn(int Column);

// The grid of a window that was just made, or of none.
void LayOutGridHeader();
void ForgetPlayerRows() noexcept;
// For another profile: no row is selected.
void ForgetSelectedRow();
