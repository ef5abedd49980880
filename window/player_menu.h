// What the grid's pop-up menu does with the player in the selected row. Without one, nothing happens.
#pragma once

#include <vector>

// The entries that still have an effect on the selected player: the permanent ones, and a switch that waits.
std::vector<int> LastingEntries();

void mnuPunt_Click();
void mnuBan1_Click(); // asks for the reason; an empty one bans nobody
void mnuBan2_Click();
void mnuSwitch_Click();
void mnuKill_Click();
void mnuDisarm_Click();
void mnuRearm_Click();
// Error 457 if the player is in the permanent list already.
void mnuKillPerm_Click();
void mnuDisarmPerm_Click();
void mnuSlapItem_Click(int Message); // from 0; error 9 if there is no such message
void mnuRefresh_Click();
