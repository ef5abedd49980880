// The tab "Banned Names".
#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "lists/ban_lists.h"
#include "lists/ban_references.h"
#include "window/ban_tabs.h"
#include "window/controls.h"
#include "window/handlers.h"
#include "window/list_editing.h"
#include "window/menus.h"

namespace {

constexpr std::size_t ItemPrefix = 4; // "[1] "
constexpr std::size_t TagLength = 3;  // "[1]"

void RemoveLinkedIp(Long Index, const std::wstring& Address) {
    if (Address.empty()) return; // a damaged link: every item begins with nothing
    if (ListsShow(Index)) RemoveItem(lstBannedIps, FindListItem(lstBannedIps, Address));
    FileHelper::WriteIniKey(IpsSection, Address, std::nullopt, mdlVNT::BannedIpsPath(Index));
}

void AddName(Long Index) {
    const std::wstring Name = txtBannedName.Text();
    if (Name.empty()) return;
    const std::wstring Tag(optBanned.Chosen() == 1 ? PartOfName : WholeName);
    if (txtBanReason.Text().empty()) txtBanReason.SetText(L"None");
    if (!StoreBannedName(Index, Name + Tag, TimeStamp(), txtBanReason.Text())) {
        ShowMsg(MsgKind::Failed, L"The name could not be stored in the ban list.", Index);
        return;
    }
    AppendBannedName(Tag + L" " + Name);
    txtBannedName.SetText(L"");
    txtBanReason.SetText(L"");
    optBanned.Choose(0);
    ShowMsg(MsgKind::Success, L"Name added successfully.", Index);
}

void RemoveName(Long Index) {
    const int Selected = lstBannedNames.Selected();
    if (Selected < 0) return;
    const std::wstring Key = KeyOfItem(lstBannedNames.Item(Selected));
    DeleteBannedName(Index, Key);
    RemoveSelected(lstBannedNames);
    if (Platform::AskYesNo(L"Would you like to remove all associated IP Addresses with this name aswell?",
                           L"Remove Banned Name"))
        UnlinkName(Index, TextView(Key).substr(0, Key.size() - TagLength),
                   [&](const std::wstring& Address) { RemoveLinkedIp(Index, Address); });
    ShowMsg(MsgKind::Success, L"Name Removed Successfully.", Index);
}

} // namespace

void ShowBannedNames(Long Index) {
    const std::optional<Lines> Items = GetBannedNames(Index);
    if (!Items) return;
    lstBannedNames.Fill(*Items);
    SelectAndShow(lstBannedNames, Items->empty() ? -1 : 0);
}

void AppendBannedName(TextView Item) {
    lstBannedNames.SetItemData(lstBannedNames.Add(Item), Item.starts_with(PartOfName) ? 2 : 1);
}

void lstBannedNames_Click() noexcept {
    Trapped(L"lstBannedNames", mdlVNT::CurrentProfile, [] {
        const int Selected = lstBannedNames.Selected();
        const std::wstring Item = lstBannedNames.Item(Selected);
        BanDetails Details;
        if (Selected >= 0) Details = BannedNameDetails(mdlVNT::CurrentProfile, KeyOfItem(Item));
        lblName.SetText(Selected >= 0 ? TextView(Item).substr(ItemPrefix) : TextView());
        lblDate.SetText(Details.Date);
        lblReason.SetText(Details.Reason);
    });
}

void lstBannedNames_MouseDown() noexcept {
    Trapped(L"lstBannedNames", mdlVNT::CurrentProfile, [] { PopUp(ID_mnuBannned); });
}

void cmdAddName_MouseUp() noexcept {
    Trapped(L"cmdAddName", mdlVNT::CurrentProfile, [] { AddName(mdlVNT::CurrentProfile); });
}

void cmdRemoveName_MouseUp() noexcept {
    Trapped(L"cmdRemoveName", mdlVNT::CurrentProfile, [] { RemoveName(mdlVNT::CurrentProfile); });
}

void cmdSearchName_MouseUp() noexcept {
    Trapped(L"cmdSearchName", mdlVNT::CurrentProfile,
            [] { SearchList(lstBannedNames, txtSearch.Text(), L"Name not found!"); });
}
