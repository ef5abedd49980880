// The player list: choosing a row, the automatic refresh.
#include "window/player_list.h"

#include "window/controls.h"
#include "window/player_rows.h"
#include "window/settings_tab.h"

void mfg_MouseDown(int Row) {
    if (Row >= 0)
        SelectPlayerRow(Row);
    else
        ShowSelectedRow(); // a click beside the rows took the highlight away
}

void tmrRefresh_Timer() {
    if (!chkRefresh.Checked()) return;
    StartRefreshTimer();
    RefreshGrid();
}
