#include "window/events.h"

#include "enforcement/sweep.h"
#include "window/controls.h"
#include "window/handlers.h"

namespace {

using Handler = void (*)(int Index) noexcept;

// A handler that needs no index.
template <void (*Named)() noexcept> void Plain(int) noexcept { Named(); }

struct EventRow {
    int Id;
    Event What;
    Handler Run;
    int Count = 1; // elements of a control array
};

constexpr EventRow EventRows[] = {
    {ID_cmdAddName, Event::Click, Plain<cmdAddName_MouseUp>},
    {ID_cmdRemoveName, Event::Click, Plain<cmdRemoveName_MouseUp>},
    {ID_cmdSearchName, Event::Click, Plain<cmdSearchName_MouseUp>},
    {ID_lstBannedNames, Event::Click, Plain<lstBannedNames_Click>},
    {ID_lstBannedNames, Event::RightClick, Plain<lstBannedNames_MouseDown>},
    {ID_cmdAddIp, Event::Click, Plain<cmdAddIp_MouseUp>},
    {ID_cmdRemoveIp, Event::Click, Plain<cmdRemoveIp_MouseUp>},
    {ID_cmdSearchIp, Event::Click, Plain<cmdSearchIp_MouseUp>},
    {ID_lstBannedIps, Event::Click, Plain<lstBannedIps_Click>},
    {ID_lstBannedIps, Event::RightClick, Plain<lstBannedIps_MouseDown>},
    {ID_optMethod, Event::Click, optMethod_Click, 2},
    {ID_chkIdlePunt, Event::Click, Plain<chkIdlePunt_Click>},
    {ID_txtIdleMax, Event::Change, Plain<txtIdleMax_Change>},
    {ID_chkRefresh, Event::Click, Plain<chkRefresh_Click>},
    {ID_txtRefreshInterval, Event::Change, Plain<txtRefreshInterval_Change>},
    {ID_lstSlaps, Event::Click, Plain<lstSlaps_Click>},
    {ID_lstSlaps, Event::DblClick, Plain<lstSlaps_DblClick>},
    {ID_cmdSlapAdd, Event::Click, Plain<cmdSlapAdd_MouseUp>},
    {ID_cmdSlapEdit, Event::Click, Plain<cmdSlapEdit_MouseUp>},
    {ID_cmdSlapDelete, Event::Click, Plain<cmdSlapDelete_MouseUp>},

    {ID_mnuPunt, Event::Click, Plain<mnuPunt_Click>},
    {ID_mnuBan1, Event::Click, Plain<mnuBan1_Click>},
    {ID_mnuBan2, Event::Click, Plain<mnuBan2_Click>},
    {ID_mnuSwitch, Event::Click, Plain<mnuSwitch_Click>},
    {ID_mnuKill, Event::Click, Plain<mnuKill_Click>},
    {ID_mnuDisarm, Event::Click, Plain<mnuDisarm_Click>},
    {ID_mnuKillPerm, Event::Click, Plain<mnuKillPerm_Click>},
    {ID_mnuDisarmPerm, Event::Click, Plain<mnuDisarmPerm_Click>},
    {ID_mnuRearm, Event::Click, Plain<mnuRearm_Click>},
    {ID_mnuRefresh, Event::Click, Plain<mnuRefresh_Click>},
    {ID_mnuSlapItem, Event::Click, mnuSlapItem_Click, ID_mnuSlapItemCount},
    {ID_mnuMerrow300, Event::Click, Plain<mnuMerrow300_Click>},
};

// What the Enter key stands for. A push button stands for itself.
struct EnterRow {
    int Id;
    int Target;
    Event What;
};
constexpr EnterRow EnterRows[] = {
    {ID_txtSearch, ID_cmdSearchName, Event::Click},  {ID_txtSearchIp, ID_cmdSearchIp, Event::Click},
    {ID_txtBannedName, ID_cmdAddName, Event::Click}, {ID_txtBanReason, ID_cmdAddName, Event::Click},
    {ID_txtAddIp, ID_cmdAddIp, Event::Click},        {ID_lstSlaps, ID_lstSlaps, Event::DblClick},
    {ID_txtSlap, ID_cmdSlapAdd, Event::Click},
};

void RaiseEnter(int Id) noexcept {
    // A slap message that is being edited is changed, not added once more.
    if (Id == ID_txtSlap && cmdSlapEdit.Enabled()) return Raise(ID_cmdSlapEdit, Event::Click);
    for (const EnterRow& Row : EnterRows)
        if (Row.Id == Id) return Raise(Row.Target, Row.What);
    for (const ControlRow& Row : Controls())
        if (Row.Id == Id && Row.What == Kind::Push) Raise(Id, Event::Click);
}

} // namespace

void Raise(int Id, Event What) noexcept {
    if (What == Event::Enter) return RaiseEnter(Id);
    for (const EventRow& Row : EventRows)
        if (Row.What == What && Id >= Row.Id && Id < Row.Id + Row.Count) return Row.Run(Id - Row.Id);
}

void RaiseTimer(int Id) noexcept {
    if (Id == ID_tmrRefresh) tmrRefresh_Timer();
    if (Id > ID_tmrVN) tmrVN_Timer(Id - ID_tmrVN);
}
