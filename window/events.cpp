// The event table: what each control, menu entry and timer runs, and the one trap around it.
#include "window/events.h"

#include "enforcement/sweep.h"
#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/work.h"
#include "window/ban_import_menu.h"
#include "window/ban_list_boxes.h"
#include "window/banned_ips.h"
#include "window/banned_names.h"
#include "window/frmVNT.h"
#include "window/menus.h"
#include "window/player_list.h"
#include "window/player_menu.h"
#include "window/player_rows.h"
#include "window/settings_tab.h"
#include "window/slaps.h"

namespace {

int ChooseFrom(int Menu) {
    // The administrator has a player under the pointer: no refresh may put another one there.
    const Work WhileItIsOpen(Work::Kind::GridHold, 0);
    return ChooseFromMenu(Menu, HasPlayerRows(), LastingEntries());
}

void PopUp(int Menu) {
    if (const int Chosen = ChooseFrom(Menu)) Raise(Chosen, Event::Click);
    CatchUpRefresh();
}

void PopUpListMenu() { PopUp(ID_mnuBannned); }

// With players only their rows have a menu.
void PopUpGridMenu(int Row) {
    mfg_MouseDown(Row);
    if (Row >= 0 || !HasPlayerRows()) PopUp(ID_mnuMain);
}

// A procedure that needs no detail.
template <void (*Procedure)()> void Plain(int) { Procedure(); }

struct EventRow {
    int Id;
    Event What;
    const wchar_t* Name; // in error reports
    void (*Run)(int Detail);
    int Count = 1; // elements of a control array; Detail is the element
    Work::Kind Kind = Work::Kind::Click;
};
constexpr auto Edit = Work::Kind::Edit;

constexpr EventRow EventRows[] = {
    {ID_mfg, Event::Click, L"mfg_MouseDown", mfg_MouseDown},
    {ID_mfg, Event::RightClick, L"mfg_MouseDown", PopUpGridMenu},
    {ID_mfg, Event::ColumnClick, L"mfg_MouseUp", SortByColumn},
    {ID_tmrRefresh, Event::Tick, L"tmrRefresh", Plain<tmrRefresh_Timer>, 1, Work::Kind::Refresh},
    {ID_tmrVN, Event::Tick, L"tmrVN", tmrVN_Timer, ID_tmrVNCount},

    {ID_cmdAddName, Event::Click, L"cmdAddName", Plain<cmdAddName_MouseUp>, 1, Edit},
    {ID_cmdRemoveName, Event::Click, L"cmdRemoveName", Plain<cmdRemoveName_MouseUp>, 1, Edit},
    {ID_cmdSearchName, Event::Click, L"cmdSearchName", Plain<cmdSearchName_MouseUp>},
    {ID_lstBannedNames, Event::Click, L"lstBannedNames", Plain<lstBannedNames_Click>},
    {ID_lstBannedNames, Event::RightClick, L"lstBannedNames", Plain<PopUpListMenu>},
    {ID_cmdAddIp, Event::Click, L"cmdAddIp", Plain<cmdAddIp_MouseUp>},
    {ID_cmdRemoveIp, Event::Click, L"cmdRemoveIp", Plain<cmdRemoveIp_MouseUp>, 1, Edit},
    {ID_cmdSearchIp, Event::Click, L"cmdSearchIp", Plain<cmdSearchIp_MouseUp>},
    {ID_lstBannedIps, Event::Click, L"lstBannedIps", Plain<lstBannedIps_Click>},
    {ID_lstBannedIps, Event::RightClick, L"lstBannedIps", Plain<PopUpListMenu>},
    {ID_optMethod, Event::Click, L"optMethod", optMethod_Click, 2},
    {ID_chkIdlePunt, Event::Click, L"chkIdlePunt", Plain<chkIdlePunt_Click>},
    {ID_txtIdleMax, Event::Change, L"txtIdleMax", Plain<txtIdleMax_Change>},
    {ID_txtIdleMax, Event::Leave, L"txtIdleMax", Plain<txtIdleMax_LostFocus>},
    {ID_chkRefresh, Event::Click, L"chkRefresh", Plain<chkRefresh_Click>},
    {ID_txtRefreshInterval, Event::Change, L"txtRefreshInterval", Plain<txtRefreshInterval_Change>},
    {ID_txtRefreshInterval, Event::Leave, L"txtRefreshInterval", Plain<txtRefreshInterval_LostFocus>},
    {ID_lstSlaps, Event::Click, L"lstSlaps", Plain<lstSlaps_Click>},
    {ID_lstSlaps, Event::DblClick, L"lstSlaps", Plain<lstSlaps_DblClick>},
    {ID_cmdSlapAdd, Event::Click, L"cmdSlapAdd", Plain<cmdSlapAdd_MouseUp>},
    {ID_cmdSlapEdit, Event::Click, L"cmdSlapEdit", Plain<cmdSlapEdit_MouseUp>},
    {ID_cmdSlapDelete, Event::Click, L"cmdSlapDelete", Plain<cmdSlapDelete_MouseUp>},

    {ID_mnuPunt, Event::Click, L"mnuPunt", Plain<mnuPunt_Click>},
    {ID_mnuBan1, Event::Click, L"mnuBan1", Plain<mnuBan1_Click>},
    {ID_mnuBan2, Event::Click, L"mnuBan2", Plain<mnuBan2_Click>},
    {ID_mnuSwitch, Event::Click, L"mnuSwitch", Plain<mnuSwitch_Click>},
    {ID_mnuKill, Event::Click, L"mnuKill", Plain<mnuKill_Click>},
    {ID_mnuDisarm, Event::Click, L"mnuDisarm", Plain<mnuDisarm_Click>},
    {ID_mnuKillPerm, Event::Click, L"mnuKillPerm", Plain<mnuKillPerm_Click>},
    {ID_mnuDisarmPerm, Event::Click, L"mnuDisarmPerm", Plain<mnuDisarmPerm_Click>},
    {ID_mnuRearm, Event::Click, L"mnuRearm", Plain<mnuRearm_Click>},
    {ID_mnuRefresh, Event::Click, L"mnuRefresh", Plain<mnuRefresh_Click>},
    {ID_mnuSlapItem, Event::Click, L"mnuSlapItemClick", mnuSlapItem_Click, ID_mnuSlapItemCount},
    {ID_mnuMerrow300, Event::Click, L"mnuMerrow300", Plain<mnuMerrow300_Click>, 1, Edit},
};

// What Enter and Delete stand for. On a push button Enter stands for a click.
struct KeyRow {
    int Id;
    Event Key;
    int Target;
    Event What;
};
constexpr KeyRow KeyRows[] = {
    {ID_txtSearch, Event::Enter, ID_cmdSearchName, Event::Click},
    {ID_txtSearchIp, Event::Enter, ID_cmdSearchIp, Event::Click},
    {ID_txtBannedName, Event::Enter, ID_cmdAddName, Event::Click},
    {ID_txtBanReason, Event::Enter, ID_cmdAddName, Event::Click},
    {ID_txtAddIp, Event::Enter, ID_cmdAddIp, Event::Click},
    {ID_txtSlap, Event::Enter, ID_cmdSlapAdd, Event::Click},
    {ID_lstSlaps, Event::Enter, ID_lstSlaps, Event::DblClick},
    {ID_lstBannedNames, Event::Delete, ID_cmdRemoveName, Event::Click},
    {ID_lstBannedIps, Event::Delete, ID_cmdRemoveIp, Event::Click},
    {ID_lstSlaps, Event::Delete, ID_cmdSlapDelete, Event::Click},
};

void RaiseKey(int Id, Event Key) noexcept {
    // A slap message that is being edited is changed, not added once more.
    if (Id == ID_txtSlap && cmdSlapEdit.Enabled()) return Raise(ID_cmdSlapEdit, Event::Click);
    for (const KeyRow& Row : KeyRows)
        if (Row.Id == Id && Row.Key == Key) return Raise(Row.Target, Row.What);
    for (const ControlRow& Row : Controls())
        if (Row.Id == Id && Row.What == Kind::Push && Key == Event::Enter) Raise(Id, Event::Click);
}

// A click on what is not the current profile's is refused: it would go to the other one's files.
void RunRow(const EventRow& Row, int Argument) noexcept {
    if (Work::Runs(Work::Kind::Reload)) return;
    if (!frmVNT::ShowsCurrentProfile()) return Row.What != Event::Leave ? frmVNT::FormReload() : void();
    const Work Own(Row.Kind, mdlVNT::CurrentProfile);
    Trapped(Row.Name, mdlVNT::CurrentProfile, [&] { Row.Run(Argument); });
}

} // namespace

void Raise(int Id, Event What, int Detail) noexcept {
    if (What == Event::Enter || What == Event::Delete) return RaiseKey(Id, What);
    for (const EventRow& Row : EventRows) {
        if (Row.What != What || Id < Row.Id || Id >= Row.Id + Row.Count) continue;
        const int Argument = Row.Count > 1 ? Id - Row.Id : Detail;
        if (Row.Run == tmrVN_Timer)
            tmrVN_Timer(Argument); // it needs nothing that the window shows
        else
            RunRow(Row, Argument);
        return frmVNT::CatchUpReload();
    }
}
