// The table of the controls.
#include "window/controls.h"

namespace {

// The captions are fixed, misspelling included: help texts and screenshots of many years show them so.
constexpr ControlRow Rows[] = {
    {ID_Frame2, Kind::Frame, 0, L"Player List"},
    {ID_mfg, Kind::Grid, 0, L""},
    {ID_lblTeams, Kind::Value, 0, L""},
    {ID_lblAsOf, Kind::Value, 0, L""},
    {ID_stMain, Kind::Tab, 0, L""},

    {ID_pageNames, Kind::Page, 0, L"Banned Names"},
    {ID_lblBannedNames, Kind::HiddenLabel, ID_pageNames, L"Banned Names"},
    {ID_lstBannedNames, Kind::List, ID_pageNames, L""},
    {ID_Frame8, Kind::Frame, ID_pageNames, L"Details"},
    {ID_lblNameCaption, Kind::Caption, ID_pageNames, L"Name:"},
    {ID_lblName, Kind::Value, ID_pageNames, L""},
    {ID_lblDateCaption, Kind::Caption, ID_pageNames, L"Date Added:"},
    {ID_lblDate, Kind::Value, ID_pageNames, L""},
    {ID_lblReasonCaption, Kind::Caption, ID_pageNames, L"Reason:"},
    {ID_lblReason, Kind::Value, ID_pageNames, L""},
    {ID_Frame3, Kind::Frame, ID_pageNames, L"Options"},
    {ID_cmdRemoveName, Kind::Push, ID_pageNames, L"Remove"},
    {ID_Frame4, Kind::Frame, ID_pageNames, L"Search"},
    {ID_lblSearch, Kind::HiddenLabel, ID_pageNames, L"Search"},
    {ID_txtSearch, Kind::Text, ID_pageNames, L""},
    {ID_cmdSearchName, Kind::Push, ID_pageNames, L"Search"},
    {ID_Frame1, Kind::Frame, ID_pageNames, L"Add Name"},
    {ID_lblBannedName, Kind::Caption, ID_pageNames, L"Name:"},
    {ID_txtBannedName, Kind::Text, ID_pageNames, L""},
    {ID_optBanned, Kind::OptionStart, ID_pageNames, L"Matches Whole Name"},
    {ID_optBanned + 1, Kind::Option, ID_pageNames, L"Matches Part of Name"},
    {ID_lblBanReason, Kind::Caption, ID_pageNames, L"Reason:"},
    {ID_txtBanReason, Kind::Text, ID_pageNames, L""},
    {ID_cmdAddName, Kind::Push, ID_pageNames, L"Add to List"},

    {ID_pageIps, Kind::Page, 0, L"Banned IP Addresses"},
    {ID_lblBannedIps, Kind::HiddenLabel, ID_pageIps, L"Banned IP Addresses"},
    {ID_lstBannedIps, Kind::List, ID_pageIps, L""},
    {ID_Frame9, Kind::Frame, ID_pageIps, L"Details"},
    {ID_lblIpCaption, Kind::Caption, ID_pageIps, L"IP Address:"},
    {ID_lblIp, Kind::Value, ID_pageIps, L""},
    {ID_lblIpDateCaption, Kind::Caption, ID_pageIps, L"Date Added:"},
    {ID_lblIpDate, Kind::Value, ID_pageIps, L""},
    {ID_Frame6, Kind::Frame, ID_pageIps, L"Options"},
    {ID_cmdRemoveIp, Kind::Push, ID_pageIps, L"Remove"},
    {ID_Frame7, Kind::Frame, ID_pageIps, L"Search"},
    {ID_lblSearchIp, Kind::HiddenLabel, ID_pageIps, L"Search"},
    {ID_txtSearchIp, Kind::Text, ID_pageIps, L""},
    {ID_cmdSearchIp, Kind::Push, ID_pageIps, L"Search"},
    {ID_Frame10, Kind::Frame, ID_pageIps, L"Add IP Address"},
    {ID_lblAddIp, Kind::Caption, ID_pageIps, L"IP Address:"},
    {ID_txtAddIp, Kind::Text, ID_pageIps, L""},
    {ID_lblIpHint, Kind::Caption, ID_pageIps,
     L"Use * as a wildcard to ban IP Ranges, the following formats are valid: 127.0.0.*, 127.0.*, 127.*"},
    {ID_cmdAddIp, Kind::Push, ID_pageIps, L"Add to List"},

    {ID_pageSettings, Kind::Page, 0, L"Settings"},
    {ID_Frame5, Kind::Frame, ID_pageSettings, L"IP Ban Method"},
    {ID_optMethod, Kind::OptionStart, ID_pageSettings, L"Game Command Line"},
    {ID_optMethod + 1, Kind::Option, ID_pageSettings, L"Kernel Driver"},
    {ID_lblMethod, Kind::Caption, ID_pageSettings,
     L"Game Command Line: This method uses the games commmand prompt to instantly punt players as soon as "
     L"they join "
     L"the server."},
    {ID_lblMethod + 1, Kind::Caption, ID_pageSettings,
     L"Kernel Driver: This method monitors network traffic and blocks all data packets sent from banned IP "
     L"Addresses."},
    {ID_Frame12, Kind::Frame, ID_pageSettings, L"Idle Players"},
    {ID_chkIdlePunt, Kind::Check, ID_pageSettings, L"Punt players that have been idle"},
    {ID_lblIdleMax, Kind::Caption, ID_pageSettings, L"Max idle time before punt:"},
    {ID_txtIdleMax, Kind::Text, ID_pageSettings, L""},
    {ID_lblMins, Kind::Caption, ID_pageSettings, L"Mins."},
    {ID_Frame13, Kind::Frame, ID_pageSettings, L"Refresh"},
    {ID_chkRefresh, Kind::Check, ID_pageSettings, L"Auto-Refresh player list every"},
    {ID_lblRefreshInterval, Kind::HiddenLabel, ID_pageSettings, L"Seconds between refreshes"},
    {ID_txtRefreshInterval, Kind::Text, ID_pageSettings, L""},
    {ID_lblSecs, Kind::Caption, ID_pageSettings, L"Secs."},

    {ID_pageSlaps, Kind::Page, 0, L"Slap Messages"},
    {ID_Frame11, Kind::Frame, ID_pageSlaps, L""},
    {ID_lblSlaps, Kind::HiddenLabel, ID_pageSlaps, L"Slap Messages"},
    {ID_lstSlaps, Kind::List, ID_pageSlaps, L""},
    {ID_lblSlap, Kind::HiddenLabel, ID_pageSlaps, L"Slap message"},
    {ID_txtSlap, Kind::Text, ID_pageSlaps, L""},
    {ID_cmdSlapAdd, Kind::Push, ID_pageSlaps, L"Add Slap"},
    {ID_cmdSlapEdit, Kind::Push, ID_pageSlaps, L"Edit Slap"},
    {ID_cmdSlapDelete, Kind::Push, ID_pageSlaps, L"Delete Slap"},
};

} // namespace

std::span<const ControlRow> Controls() { return Rows; }

const ControlRow& RowOf(int Id) {
    for (const ControlRow& Row : Rows)
        if (Row.Id == Id) return Row;
    Fail(ErrorNumber::InvalidCall);
}
