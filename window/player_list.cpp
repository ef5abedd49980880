// The player list: choosing a row, sorting, the automatic refresh.
#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "window/controls.h"
#include "window/handlers.h"
#include "window/menus.h"
#include "window/player_rows.h"
#include "window/refresh_interval.h"

void mfg_MouseDown(MouseButton Button, int Row) noexcept {
    Trapped(L"mfg_MouseDown", mdlVNT::CurrentProfile, [&] {
        ShowPlayerEntries(HasPlayerRows());
        if (Row > 0)
            SelectPlayerRow(Row);
        else
            ShowSelectedRow();
        const bool HasMenu = Row > 0 || (Row == 0 && !HasPlayerRows());
        if (Button == MouseButton::Right && HasMenu) PopUp(ID_mnuMain);
    });
}

void mfg_MouseUp(int Column) noexcept {
    Trapped(L"mfg_MouseUp", mdlVNT::CurrentProfile, [&] { SortByColumn(Column); });
}

void tmrRefresh_Timer() noexcept {
    Trapped(L"tmrRefresh", mdlVNT::CurrentProfile, [] {
        if (!chkRefresh.Checked()) return;
        StartRefreshTimer();
        RefreshGrid();
    });
}
