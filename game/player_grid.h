// The grid that a "LIST" read fills. The reader only says what is in it; the window defines these.
#pragma once

#include "game/player_table.h"

// Starts a new content. What is on the screen stays until the end.
void BeginPlayerGrid();
void AddPlayerRow(const ListedPlayer& Player);
// Shows the content as far as it came. Summary is the text of the team label; empty leaves the label as it
// is.
void EndPlayerGrid(TextView Summary);
