// The tab "Settings", and the refresh timer.
#include "window/settings_tab.h"

#include <cmath>

#include "game/mdlVNT.h"
#include "game/settings.h"
#include "window/controls.h"

namespace {

constexpr double LongestMilliseconds = 2147483647; // of a system timer

std::wstring StoredBanMethod(Long Profile) {
    std::wstring Method = ReadSetting(Profile, Settings::BanMethod);
    if (Method.empty()) {
        Method = L"0";
        WriteSetting(Profile, Settings::BanMethod, Method);
    }
    return Method;
}

void SaveSwitch(const Setting& Saved, const CheckBox& Box) {
    WriteSetting(mdlVNT::CurrentProfile, Saved, Box.Checked() ? L"1" : L"0");
}

void SaveNumber(const Setting& Saved, const TextBox& Box) {
    const std::wstring Text = Box.Text();
    if (IsNumeric(Text)) WriteSetting(mdlVNT::CurrentProfile, Saved, Text);
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
    const bool Stored = PlayersIniExists();
    // As the sweep reads it: every text but "1" bans by the command line.
    optMethod.Choose(Stored && StoredBanMethod(Profile) == L"1" ? 1 : 0);
    chkIdlePunt.Check(ReadValidSetting(Profile, Settings::IdlePunt) == L"1");
    ShowIdleMax(Profile);
    chkRefresh.Check(ReadValidSetting(Profile, Settings::AutoRefresh) == L"1");
    ShowRefreshInterval(Profile);
}

void optMethod_Click(int Method) {
    WriteSetting(mdlVNT::CurrentProfile, Settings::BanMethod, ToText(Method));
}

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
