#include "window/menus.h"

#include "window/events.h"
#include "window/ids.h"
#include "window/player_rows.h"
#include "window/toolkit.h"

namespace {

enum class Shown : unsigned char { Always, WithPlayers };

struct MenuRow {
    int Menu; // the menu or sub-menu it is in
    int Id;
    const wchar_t* Caption; // null: a separator
    Shown When;
};

constexpr MenuRow Rows[] = {
    {ID_mnuMain, ID_mnuSlap, L"Slap Player", Shown::WithPlayers},
    {ID_mnuMain, ID_mnuPunt, L"Punt Player", Shown::WithPlayers},
    {ID_mnuMain, ID_mnuBan1, L"Ban Player (With Reason)", Shown::WithPlayers},
    {ID_mnuMain, ID_mnuBan2, L"Ban Player (Without Reason)", Shown::WithPlayers},
    {ID_mnuMain, ID_mnuSep1, nullptr, Shown::WithPlayers},
    {ID_mnuMain, ID_mnuSwitch, L"Switch Teams", Shown::WithPlayers},
    {ID_mnuMain, ID_mnuSep2, nullptr, Shown::WithPlayers},
    {ID_mnuMain, ID_mnuKill, L"Kill Player (Once)", Shown::WithPlayers},
    {ID_mnuMain, ID_mnuDisarm, L"Disarm Player (Once)", Shown::WithPlayers},
    {ID_mnuMain, ID_mnuKillPerm, L"Kill Player (Permanently)", Shown::WithPlayers},
    {ID_mnuMain, ID_mnuDisarmPerm, L"Disarm Player (Permanently)", Shown::WithPlayers},
    {ID_mnuMain, ID_mnuRearm, L"Rearm Player", Shown::WithPlayers},
    {ID_mnuMain, ID_mnuSep3, nullptr, Shown::WithPlayers},
    {ID_mnuMain, ID_mnuRefresh, L"Refresh Player List", Shown::Always},
    {ID_mnuBannned, ID_mnuImport, L"Import Ban List", Shown::Always},
    {ID_mnuImport, ID_mnuMerrow300, L"Merrows Server Manager - v3.0.0", Shown::Always},
};

bool WithPlayers;
Lines SlapCaptions;

std::vector<MenuEntry> SlapEntries() {
    std::vector<MenuEntry> Entries;
    int Id = ID_mnuSlapItem;
    for (const std::wstring& Caption : SlapCaptions) {
        if (Id == ID_mnuSlapItem + ID_mnuSlapItemCount) break;
        Entries.push_back({Id++, false, Caption, {}});
    }
    return Entries;
}

std::vector<MenuEntry> EntriesOf(int Menu) {
    std::vector<MenuEntry> Entries;
    for (const MenuRow& Row : Rows) {
        if (Row.Menu != Menu || (Row.When == Shown::WithPlayers && !WithPlayers)) continue;
        if (Row.Id == ID_mnuSlap && SlapCaptions.empty()) continue;
        Entries.push_back({Row.Id, Row.Caption == nullptr, Row.Caption != nullptr ? Row.Caption : L"",
                           Row.Id == ID_mnuSlap ? SlapEntries() : EntriesOf(Row.Id)});
    }
    return Entries;
}

int ChooseFrom(int Menu) {
    // The administrator has a player under the pointer: no refresh may put another one there.
    const GridHold WhileItIsOpen;
    return PopUpMenu(EntriesOf(Menu));
}

} // namespace

void PopUp(int Menu) {
    if (const int Chosen = ChooseFrom(Menu)) Raise(Chosen, Event::Click);
    CatchUpRefresh();
}

void ShowPlayerEntries(bool On) { WithPlayers = On; }

void SetSlapItems(Lines Captions) { SlapCaptions = std::move(Captions); }

std::wstring SlapItem(int Index) {
    if (Index < 0 || static_cast<std::size_t>(Index) >= SlapCaptions.size())
        Fail(ErrorNumber::SubscriptOutOfRange);
    return SlapCaptions[static_cast<std::size_t>(Index)];
}

void ForgetMenus() noexcept {
    WithPlayers = false;
    SlapCaptions.clear();
}
