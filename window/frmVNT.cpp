// The window as the rest of the plug-in sees it.
#include "window/frmVNT.h"

#include <algorithm>
#include <set>

#include "enforcement/sweep.h"
#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "host/work.h"
#include "window/ban_list_boxes.h"
#include "window/controls.h"
#include "window/menus.h"
#include "window/player_rows.h"
#include "window/settings_tab.h"
#include "window/slaps.h"

namespace {

// Where the window lies in the host's area, pixels: below the host's own heading.
constexpr Long Left = 2;
constexpr Long Top = 30;
constexpr Long LessHeight = 28;
constexpr std::int64_t TwipsPerInch = 1440;

// A host that loads another profile in each call of a reload is followed no further; the next event goes on.
constexpr int MostReloads = 3;

bool ReloadIsDue;
bool IsHidden;              // by the host, since it last asked for a place in its area
Long ShownProfile;          // whose lists are shown; 0 for none
std::wstring ShownFolder;   // of that profile: the host may give an index to another profile
std::set<Long> SweepTimers; // the elements of tmrVN

// Rounded down; negative sizes count as 0.
Long Pixels(Long Twips, int PerInch) {
    return static_cast<Long>(std::max<std::int64_t>(Twips, 0) * PerInch / TwipsPerInch);
}

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
    ClearPlayerRows(); // the server may be one that cannot be read
    ClearBanLists();
    ClearSlapTab();
    // The settings, too: what is typed before they are read is stored for the profile that comes.
    for (const TextBox& Typed :
         {txtSearch, txtBannedName, txtBanReason, txtSearchIp, txtAddIp, txtIdleMax, txtRefreshInterval})
        Typed.SetText(L"");
    optBanned.Choose(0);
}

bool Shows(Long Profile) {
    return Profile == ShownProfile &&
           Platform::IsSamePath(mdlVNT::Profiles(Profile).ProfileFolder, ShownFolder);
}

void ShowCurrentProfile() {
    const Long Profile = mdlVNT::CurrentProfile;
    if (!Shows(Profile)) ClearForOtherProfile();
    ShownProfile = Profile;
    ShownFolder = mdlVNT::Profiles(Profile).ProfileFolder;
    RefreshGrid();
    ShowBannedNames(Profile);
    ShowBannedIps(Profile);
    GetSlaps(Profile);
    LoadSlapMenu(Profile);
    ShowSettings(Profile);
    if (chkRefresh.Checked() && !IsHidden)
        StartRefreshTimer();
    else
        tmrRefresh.Stop();
    StoreMissingBanMethod(Profile); // last: the tab is right, whether or not it can be written
}

bool IsAtWork() {
    return Work::Runs(Work::Kind::Click) || Work::Runs(Work::Kind::Edit) || Work::Runs(Work::Kind::Refresh) ||
           Work::Runs(Work::Kind::Reload);
}

} // namespace

namespace frmVNT {

void Load() {
    if (IsLoaded()) return;
    Frame::Create();
    Form_Load();
}

bool IsLoaded() { return Frame::Exists(); }

void FillArea(Long WidthTwips, Long HeightTwips) {
    Load();
    IsHidden = false;
    const Size PerInch = Frame::PixelsPerInch();
    Frame::Move(Left, Top, Pixels(WidthTwips, PerInch.Width),
                Pixels(HeightTwips, PerInch.Height) - LessHeight);
}

void ShowFirstPage() { stMain.Turn(0); }

void SetParent(HostWindow Host) { Frame::SetParent(Host); }

void FormReload() {
    ReloadIsDue = true;
    if (IsLoaded() && !Shows(mdlVNT::CurrentProfile)) {
        // What the interrupted work still fills in goes with the reload that follows.
        ClearForOtherProfile();
        ShownProfile = 0;
    }
    CatchUpReload();
}

void CatchUpReload() {
    for (int Round = 0; Round < MostReloads && ReloadIsDue && IsLoaded() && !IsAtWork(); ++Round) {
        ReloadIsDue = false;
        const Work Own(Work::Kind::Reload, mdlVNT::CurrentProfile);
        Trapped(L"FormReload", mdlVNT::CurrentProfile, ShowCurrentProfile);
    }
}

bool ShowsCurrentProfile() {
    return !ReloadIsDue && !Work::Runs(Work::Kind::Reload) && Shows(mdlVNT::CurrentProfile);
}

void Show() {
    if (!IsHidden) Frame::Show(true);
}

void Hide() {
    IsHidden = true;
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
    ReloadIsDue = false;
    ShownProfile = 0;
    ShownFolder.clear();
    SweepTimers.clear();
    ForgetPlayerRows();
    SetSlapItems({});
}

} // namespace frmVNT
