#include "window/frmVNT.h"

#include <set>

#include "enforcement/sweep.h"
#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "window/ban_tabs.h"
#include "window/controls.h"
#include "window/events.h"
#include "window/menus.h"
#include "window/player_rows.h"
#include "window/refresh_interval.h"
#include "window/settings_tab.h"
#include "window/slaps.h"

namespace {

Long ShownProfile;          // whose lists are shown; 0 for none
std::set<Long> SweepTimers; // the elements of tmrVN

Timer SweepTimer(Long Index) { return Timer{ID_tmrVN + Index}; }

void Form_Load() noexcept {
    Trapped(L"FormLoad", mdlVNT::CurrentProfile, [] {
        LayOutGridHeader();
        optBanned.Choose(0);
        cmdSlapEdit.Enable(false);
    });
}

// What one profile's lists do not have, another one's must not lend them.
void ClearForOtherProfile() {
    ForgetSelectedRow();
    lblTeams.SetText(L"");
    ClearBanTabs();
    ClearSlapTab();
}

} // namespace

namespace frmVNT {

void Load() {
    if (IsLoaded()) return;
    Frame::Create();
    Form_Load();
}

bool IsLoaded() { return Frame::Exists(); }

void Move(Long X, Long Y, Long Width, Long Height) {
    Load();
    Frame::Move(X, Y, Width, Height);
}

Long TwipsPerPixelX() { return Frame::TwipsPerPixelX(); }
Long TwipsPerPixelY() { return Frame::TwipsPerPixelY(); }

void ShowFirstPage() { stMain.Turn(0); }

void SetParent(HostWindow Host, Place Where) { Frame::SetParent(Host, Where); }

void FormReload() {
    Trapped(L"FormReload", mdlVNT::CurrentProfile, [] {
        const Long Index = mdlVNT::CurrentProfile;
        if (Index != ShownProfile) ClearForOtherProfile();
        ShownProfile = Index;
        RefreshGrid();
        ShowBannedNames(Index);
        ShowBannedIps(Index);
        GetSlaps(Index);
        LoadSlapMenu(Index);
        ShowSettings(Index);
        if (chkRefresh.Checked())
            StartRefreshTimer();
        else
            tmrRefresh.Stop();
    });
}

void Show() { Frame::Show(true); }

void Hide() {
    tmrRefresh.Stop();
    Frame::Show(false);
}

void Unload() { Frame::Destroy(); }

void LoadSweepTimer(Long Index, Long Milliseconds, Place Where) {
    if (SweepTimers.count(Index) != 0) Fail(ErrorNumber::AlreadyLoaded, {}, Where);
    if (!SweepTimer(Index).Start(Milliseconds)) Fail(ErrorNumber::OutOfMemory, {}, Where);
    SweepTimers.insert(Index);
}

void UnloadSweepTimer(Long Index) {
    if (SweepTimers.erase(Index) != 0) SweepTimer(Index).Stop();
}

} // namespace frmVNT

void FrameGone() noexcept {
    ShownProfile = 0;
    SweepTimers.clear();
    ForgetPlayerRows();
    ForgetMenus();
}
