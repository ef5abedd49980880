// The tab "Settings", and the refresh timer.
#include "window/settings_tab.h"

#include <cmath>

#include "game/mdlVNT.h"
#include "game/settings.h"
#include "window/controls.h"

namespace {

constexpr double LongestMilliseconds = 2147483647; // of a system timer

void Save(const Setting& Kind, TextView Value) {
    const Long Profile = mdlVNT::CurrentProfile;
    try {
        WriteSetting(Profile, Kind, Value);
    } catch (...) {
        ShowSettings(Profile);
        throw;
    }
}

void SaveSwitch(const Setting& Kind, const CheckBox& Box) { Save(Kind, Box.Checked() ? L"1" : L"0"); }

void SaveNumber(const Setting& Kind, const TextBox& Box) {
    const std::wstring Text = Box.Text();
    if (IsNumeric(Text)) Save(Kind, Text);
}

void ShowIdleMax(Long Profile) { txtIdleMax.SetText(ReadValidSetting(Profile, Settings::IdleMax)); }

void ShowRefreshInterval(Long Profile) {
    const bool Stored = PlayersIniExists();
    txtRefreshInterval.SetText(Stored ? ReadValidSetting(Profile, Settings::RefreshInterval) : L"30");
}

} // namespace

Long RefreshMilliseconds(TextView Seconds) {
    const double Asked = IsNumeric(Seconds) ? ToNumber(Seconds) : 0;
    if (Asked < 1) return 30000;
    return static_cast<Long>(std::fmin(std::nearbyint(Asked * 1000), LongestMilliseconds));
}

void StartRefreshTimer(Place Where) {
    if (!tmrRefresh.Start(RefreshMilliseconds(txtRefreshInterval.Text())))
        Fail(ErrorNumber::OutOfMemory, {}, Where);
}

void ShowSettings(Long Profile) {
    optMethod.Choose(KernelMethodIsSet(Profile) ? 1 : 0);
    chkIdlePunt.Check(ReadValidSetting(Profile, Settings::IdlePunt) == L"1");
    ShowIdleMax(Profile);
    chkRefresh.Check(ReadValidSetting(Profile, Settings::AutoRefresh) == L"1");
    ShowRefreshInterval(Profile);
}

void StoreMissingBanMethod(Long Profile) {
    if (PlayersIniExists() && ReadSetting(Profile, Settings::BanMethod).empty())
        WriteSetting(Profile, Settings::BanMethod, Settings::BanMethod.Default);
}

void optMethod_Click(int Method) { Save(Settings::BanMethod, ToText(Method)); }

void chkIdlePunt_Click() { SaveSwitch(Settings::IdlePunt, chkIdlePunt); }

void txtIdleMax_Change() { SaveNumber(Settings::IdleMax, txtIdleMax); }

void txtIdleMax_LostFocus() { ShowIdleMax(mdlVNT::CurrentProfile); }

void chkRefresh_Click() {
    SaveSwitch(Settings::AutoRefresh, chkRefresh);
    if (chkRefresh.Checked())
        StartRefreshTimer();
    else
        tmrRefresh.Stop();
}

void txtRefreshInterval_Change() { SaveNumber(Settings::RefreshInterval, txtRefreshInterval); }

void txtRefreshInterval_LostFocus() { ShowRefreshInterval(mdlVNT::CurrentProfile); }
