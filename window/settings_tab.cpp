#include "window/settings_tab.h"

#include <cmath>

#include "game/mdlVNT.h"
#include "game/settings.h"
#include "game/show_msg.h"
#include "window/controls.h"
#include "window/handlers.h"
#include "window/refresh_interval.h"

namespace {

constexpr double LongestMilliseconds = 2147483647; // of a system timer

std::wstring StoredBanMethod(Long Index) {
    std::wstring Method = ReadSetting(Index, Setting::BanMethod);
    if (Method.empty()) {
        Method = L"0";
        WriteSetting(Index, Setting::BanMethod, Method);
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

void ShowSettings(Long Index) {
    const bool Stored = PlayersIniExists();
    // As the sweep reads it: every text but "1" bans by the command line.
    optMethod.Choose(Stored && StoredBanMethod(Index) == L"1" ? 1 : 0);
    chkIdlePunt.Check(SwitchOr0(ReadSetting(Index, Setting::IdlePunt)) == L"1");
    txtIdleMax.SetText(PeriodOr5(ReadSetting(Index, Setting::IdleMax)));
    chkRefresh.Check(SwitchOr0(ReadSetting(Index, Setting::AutoRefresh)) == L"1");
    txtRefreshInterval.SetText(Stored ? PeriodOr5(ReadSetting(Index, Setting::RefreshInterval)) : L"30");
}

void optMethod_Click(int Method) noexcept {
    Trapped(L"optMethod", mdlVNT::CurrentProfile,
            [&] { WriteSetting(mdlVNT::CurrentProfile, Setting::BanMethod, ToText(Method)); });
}

void chkIdlePunt_Click() noexcept {
    Trapped(L"chkIdlePunt", mdlVNT::CurrentProfile, [] { SaveSwitch(Setting::IdlePunt, chkIdlePunt); });
}

void txtIdleMax_Change() noexcept {
    Trapped(L"txtIdleMax", mdlVNT::CurrentProfile, [] { SaveNumber(Setting::IdleMax, txtIdleMax); });
}

void chkRefresh_Click() noexcept {
    Trapped(L"chkRefresh", mdlVNT::CurrentProfile, [] {
        SaveSwitch(Setting::AutoRefresh, chkRefresh);
        if (chkRefresh.Checked())
            StartRefreshTimer();
        else
            tmrRefresh.Stop();
    });
}

void txtRefreshInterval_Change() noexcept {
    Trapped(L"txtRefreshInterval", mdlVNT::CurrentProfile,
            [] { SaveNumber(Setting::RefreshInterval, txtRefreshInterval); });
}
