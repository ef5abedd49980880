// The menu table, and the slap messages in it.
#include "window/menus.h"

#include <algorithm>

#include "window/ids.h"
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

Lines SlapCaptions;

std::vector<MenuEntry> SlapEntries() {
    std::vector<MenuEntry> Entries;
    int Id = ID_mnuSlapItem;
    for (const std::wstring& Caption : SlapCaptions) {
        if (Id == ID_mnuSlapItem + ID_mnuSlapItemCount) break;
        Entries.push_back({Id++, false, Caption, {}, false});
    }
    return Entries;
}

std::vector<MenuEntry> EntriesOf(int Menu, bool WithPlayers, const std::vector<int>& Checked) {
    std::vector<MenuEntry> Entries;
    for (const MenuRow& Row : Rows) {
        if (Row.Menu != Menu || (Row.When == Shown::WithPlayers && !WithPlayers)) continue;
        if (Row.Id == ID_mnuSlap && SlapCaptions.empty()) continue;
        Entries.push_back({Row.Id, Row.Caption == nullptr, Row.Caption != nullptr ? Row.Caption : L"",
                           Row.Id == ID_mnuSlap ? SlapEntries() : EntriesOf(Row.Id, WithPlayers, Checked),
                           std::ranges::find(Checked, Row.Id) != Checked.end()});
    }
    return Entries;
}

} // namespace

int ChooseFromMenu(int Menu, bool WithPlayers, const std::vector<int>& Checked) {
    const Lines Offered = SlapCaptions;
    const int Chosen = PopUpMenu(EntriesOf(Menu, WithPlayers, Checked));
    const bool IsSlap = Chosen >= ID_mnuSlapItem && Chosen < ID_mnuSlapItem + ID_mnuSlapItemCount;
    // A message that was changed behind the menu has another's number by now.
    return IsSlap && SlapCaptions != Offered ? 0 : Chosen;
}

void SetSlapItems(Lines Captions) { SlapCaptions = std::move(Captions); }

std::wstring SlapItem(int Element) {
    if (Element < 0 || static_cast<std::size_t>(Element) >= SlapCaptions.size())
        Fail(ErrorNumber::SubscriptOutOfRange);
    return SlapCaptions[static_cast<std::size_t>(Element)];
}
