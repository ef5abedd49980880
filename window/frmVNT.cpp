// The window as the rest of the plug-in sees it.
#include "window/frmVNT.h"

#include <set>

#include "enforcement/sweep.h"
#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "window/ban_list_boxes.h"
#include "window/controls.h"
#include "window/menus.h"
#include "window/player_rows.h"
#include "window/settings_tab.h"
#include "window/slaps.h"

namespace {

Long ShownProfile;          // whose lists are shown; 0 for none
std::set<Long> SweepTimers; // the elements of tmrVN

Timer SweepTimer(Long Profile) { return Timer{ID_tmrVN + Profile}; }

void Form_Load() noexcept {
    Trapped(L"FormLoad", mdlVNT::CurrentProfile, [] {
        LayOutGridHeader();
        optBanned.Choose(0);
        cmdSlapEdit.Enable(false);
    });
}

// A missing file leaves its list untouched, so clear first or the previous profile's entries stay.
void ClearForOtherProfile() {
    SelectPlayerRow(-1);
    lblTeams.SetText(L"");
    ClearBanLists();
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
        const Long Profile = mdlVNT::CurrentProfile;
        if (Profile != ShownProfile) ClearForOtherProfile();
        ShownProfile = Profile;
        RefreshGrid();
        ShowBannedNames(Profile);
        ShowBannedIps(Profile);
        GetSlaps(Profile);
        LoadSlapMenu(Profile);
        ShowSettings(Profile);
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

void LoadSweepTimer(Long Profile, Long Milliseconds, Place Where) {
    if (SweepTimers.count(Profile) != 0) Fail(ErrorNumber::AlreadyLoaded, {}, Where);
    if (!SweepTimer(Profile).Start(Milliseconds)) Fail(ErrorNumber::OutOfMemory, {}, Where);
    SweepTimers.insert(Profile);
}

void UnloadSweepTimer(Long Profile) {
    if (SweepTimers.erase(Profile) != 0) SweepTimer(Profile).Stop();
}

void Gone() noexcept {
    ShownProfile = 0;
    SweepTimers.clear();
    ForgetPlayerRows();
    SetSlapItems({});
}

} // namespace frmVNT
