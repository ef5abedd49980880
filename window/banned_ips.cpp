// The tab "Banned IP Addresses".
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

void RemoveLinkedName(Long Index, const std::wstring& Name) {
    if (ListsShow(Index))
        RemoveItem(lstBannedNames, FindListItem(lstBannedNames, std::wstring(WholeName) + L" " + Trim(Name)));
    FileHelper::WriteIniKey(NamesSection, Name + std::wstring(WholeName), std::nullopt,
                            mdlVNT::BannedNamesPath(Index));
}

void AddIp(Long Index) {
    if (txtAddIp.Text().empty()) return;
    const std::wstring Address = Trim(txtAddIp.Text()); // as it will be stored
    if (!IsValidIp(Address)) {
        ShowMsg(MsgKind::Failed, L"IP Address format is invalid.", Index);
        return;
    }
    StoreBannedIp(Index, Address, TimeStamp());
    AppendBannedIp(Address);
    txtAddIp.SetText(L"");
    // Before the box: a sweep behind it must know already.
    mdlVNT::IpListChanged(Index) = true;
    ShowMsg(MsgKind::Success, L"IP Address added successfully.", Index);
}

void RemoveIp(Long Index) {
    const int Selected = lstBannedIps.Selected();
    if (Selected < 0) return;
    const std::wstring Address = lstBannedIps.Item(Selected);
    DeleteBannedIp(Index, Address);
    mdlVNT::IpListChanged(Index) = true;
    RemoveSelected(lstBannedIps);
    if (Platform::AskYesNo(L"Would you like to remove all associated names with this IP Address aswell?",
                           L"Remove Banned IP Address"))
        UnlinkAddress(Index, Address, [&](const std::wstring& Name) { RemoveLinkedName(Index, Name); });
    ShowMsg(MsgKind::Success, L"IP Address Removed Successfully.", Index);
}

} // namespace

void ShowBannedIps(Long Index) {
    const std::optional<Lines> Items = GetBannedIps(Index);
    if (!Items) return;
    lstBannedIps.Fill(*Items);
    SelectAndShow(lstBannedIps, Items->empty() ? -1 : 0);
}

void AppendBannedIp(TextView Address) { lstBannedIps.Add(Address); }

void ShowNewBan(Long Index, const std::wstring& Name, const std::wstring& Ip) {
    if (!ListsShow(Index)) return;
    const std::wstring Key = Name + std::wstring(WholeName);
    if (!HasItem(lstBannedNames, ItemOfKey(Key)) && !BannedNameDetails(Index, Key).Date.empty())
        AppendBannedName(ItemOfKey(Key));
    if (!HasItem(lstBannedIps, Ip) && !BannedIpDate(Index, Ip).empty()) AppendBannedIp(Ip);
}

void ClearBanTabs() {
    for (const ListBox& List : {lstBannedNames, lstBannedIps}) {
        List.Fill({});
        SelectAndShow(List, -1);
    }
}

void lstBannedIps_Click() noexcept {
    Trapped(L"lstBannedIps", mdlVNT::CurrentProfile, [] {
        const int Selected = lstBannedIps.Selected();
        const std::wstring Address = lstBannedIps.Item(Selected);
        const std::wstring Date = Selected >= 0 ? BannedIpDate(mdlVNT::CurrentProfile, Address) : L"";
        lblIp.SetText(Address);
        lblIpDate.SetText(Date);
    });
}

void lstBannedIps_MouseDown() noexcept {
    Trapped(L"lstBannedIps", mdlVNT::CurrentProfile, [] { PopUp(ID_mnuBannned); });
}

void cmdAddIp_MouseUp() noexcept {
    Trapped(L"cmdAddIp", mdlVNT::CurrentProfile, [] { AddIp(mdlVNT::CurrentProfile); });
}

void cmdRemoveIp_MouseUp() noexcept {
    Trapped(L"cmdRemoveIp", mdlVNT::CurrentProfile, [] { RemoveIp(mdlVNT::CurrentProfile); });
}

void cmdSearchIp_MouseUp() noexcept {
    Trapped(L"cmdSearchIp", mdlVNT::CurrentProfile,
            [] { SearchList(lstBannedIps, txtSearchIp.Text(), L"IP Address not found!"); });
}
