// The player list: choosing a row, the automatic refresh.
#pragma once

// A row from 0; -1 (the header, or the space below the rows) leaves the choice as it is.
void mfg_MouseDown(int Row);
// Refreshes the grid if that is wanted, and gives the timer the interval that the box asks for now.
void tmrRefresh_Timer();
