// The rows of the player grid, as they are on the screen. Rows count from 0.
#pragma once

#include <optional>

#include "game/player_table.h"

// A row's player as read once, together with the profile whose players the grid shows.
struct ChosenPlayer {
    Long Profile;
    ListedPlayer Player;
};
// The player in the selected row; none if there is no such row.
std::optional<ChosenPlayer> SelectedPlayer();

bool HasPlayerRows();
// How many of the players have the text in their names, with regard to case.
Long PlayersWith(TextView Part);
// -1 selects none.
void SelectPlayerRow(int Row);
// Highlights the selected row again.
void ShowSelectedRow();

// Empties the grid and what is said of it, also while it is held: its rows are another profile's.
void ClearPlayerRows();
// Reads the current profile's players into the grid. While the grid is held (Work::Kind::GridHold) it keeps
// its rows, so that what the administrator points at stays what it is, and the refresh waits.
void RefreshGrid();
// Carries out a refresh that waited.
void CatchUpRefresh();

// Sorts by a column (from 0), in the other direction if it was the last one.
void SortByColumn(int Column);

// Gives a new grid its columns.
void LayOutGridHeader();
// Forgets rows and sort order, with the window.
void ForgetPlayerRows() noexcept;
