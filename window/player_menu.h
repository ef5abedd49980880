// What the grid's pop-up menu does with the player in the selected row. Without one, nothing happens.
#pragma once

void PuntSelected();
void BanSelectedWithReason(); // asks for the reason; an empty one bans nobody
void BanSelected();
void SwitchSelected();
void KillSelected();
void DisarmSelected();
void RearmSelected();
// Error 457 if the player is in the permanent list already.
void KillSelectedPermanently();
void DisarmSelectedPermanently();
void SlapSelected(int Message); // from 0; error 9 if there is no such message
void RefreshByMenu();
