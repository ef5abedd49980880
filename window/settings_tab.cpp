// The tab "Settings", and the refresh timer.
#include "window/settings_tab.h"

#include <cmath>

#include "game/mdlVNT.h"
#include "game/settings.h"
#include "window/controls.h"

namespace {

constexpr double LongestMilliseconds = 2147483647; // of a system timer

std::wstring StoredBanMethod(Long Profile) {
    std::wstring Method = ReadSetting(Profile, Setting::BanMethod);
    if (Method.empty()) {
        Method = L"0";
        WriteSetting(Profile, Setting::BanMethod, Method);
    }
    return Method;
}

void SaveSwitch(TextView Setting, const CheckBox& Box) {
    WriteSetting(mdlVNT::CurrentProfile, Setting, Box.Checked() ? L"1" : L"0");
}

void SaveNumber(TextView Setting, const TextBox& Box) {
    const std::wstring Text = Box.Text();
    if (IsNumeric(Text)) WriteSetting(mdlVNT::CurrentProfile, Setting, Text);
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
    chkIdlePunt.Check(SwitchOr0(ReadSetting(Profile, Setting::IdlePunt)) == L"1");
    txtIdleMax.SetText(PeriodOr5(ReadSetting(Profile, Setting::IdleMax)));
    chkRefresh.Check(SwitchOr0(ReadSetting(Profile, Setting::AutoRefresh)) == L"1");
    txtRefreshInterval.SetText(Stored ? PeriodOr5(ReadSetting(Profile, Setting::RefreshInterval)) : L"30");
}

void SaveBanMethod(int Method) { WriteSetting(mdlVNT::CurrentProfile, Setting::BanMethod, ToText(Method)); }

void SaveIdlePunt() { SaveSwitch(Setting::IdlePunt, chkIdlePunt); }

void SaveIdleMax() { SaveNumber(Setting::IdleMax, txtIdleMax); }

void SaveAutoRefresh() {
    SaveSwitch(Setting::AutoRefresh, chkRefresh);
    if (chkRefresh.Checked())
        StartRefreshTimer();
    else
        tmrRefresh.Stop();
}

void SaveRefreshInterval() { SaveNumber(Setting::RefreshInterval, txtRefreshInterval); }
