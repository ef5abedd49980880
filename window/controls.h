// The controls of the window by their names, and the table that says what each is.
#pragma once

#include "window/ids.h"
#include "window/toolkit.h"

enum class Kind : unsigned char {
    Page,        // holds the controls of one tab; the caption is the tab's
    Frame,       // a group box
    Caption,     // a fixed text, on several lines where the width asks for it
    HiddenLabel, // of no size: names the next control to a screen reader, which passes over invisible ones
    Value,       // a text that the program sets
    Text,
    Push,
    Option,
    OptionStart, // the first of its group
    Check,
    List,
    Grid,
    Tab,
};

struct ControlRow {
    int Id;
    Kind What;
    int Parent; // a page, or 0 for the window itself
    const wchar_t* Caption;
};

// In the order of the Tab key; a label stands before the control it names, and the option buttons of a group
// stand together, so that the arrow keys find them.
std::span<const ControlRow> Controls();
const ControlRow& RowOf(int Id);

inline constexpr Grid mfg{ID_mfg};
inline constexpr Label lblTeams{ID_lblTeams};
inline constexpr Label lblAsOf{ID_lblAsOf}; // how old the list is
inline constexpr TabControl stMain{ID_stMain};

inline constexpr ListBox lstBannedNames{ID_lstBannedNames};
inline constexpr TextBox txtSearch{ID_txtSearch};
inline constexpr TextBox txtBannedName{ID_txtBannedName};
inline constexpr OptionGroup optBanned{ID_optBanned, 2};
inline constexpr TextBox txtBanReason{ID_txtBanReason};
inline constexpr Label lblName{ID_lblName};
inline constexpr Label lblDate{ID_lblDate};
inline constexpr Label lblReason{ID_lblReason};

inline constexpr ListBox lstBannedIps{ID_lstBannedIps};
inline constexpr TextBox txtSearchIp{ID_txtSearchIp};
inline constexpr TextBox txtAddIp{ID_txtAddIp};
inline constexpr Label lblIp{ID_lblIp};
inline constexpr Label lblIpDate{ID_lblIpDate};

inline constexpr OptionGroup optMethod{ID_optMethod, 2};
inline constexpr CheckBox chkIdlePunt{ID_chkIdlePunt};
inline constexpr TextBox txtIdleMax{ID_txtIdleMax};
inline constexpr CheckBox chkRefresh{ID_chkRefresh};
inline constexpr TextBox txtRefreshInterval{ID_txtRefreshInterval};

inline constexpr ListBox lstSlaps{ID_lstSlaps};
inline constexpr TextBox txtSlap{ID_txtSlap};
inline constexpr Button cmdSlapAdd{ID_cmdSlapAdd};
inline constexpr Button cmdSlapEdit{ID_cmdSlapEdit};

inline constexpr Timer tmrRefresh{ID_tmrRefresh};
