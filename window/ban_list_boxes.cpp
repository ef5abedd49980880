// The items and details of the two ban list boxes.
#include "window/ban_list_boxes.h"

#include "game/mdlVNT.h"
#include "lists/ban_lists.h"

namespace {

void FillList(const DetailedList& List, const std::optional<Lines>& Items) {
    if (!Items) return;
    List.Box.Fill(*Items);
    SelectAndShow(List, Items->empty() ? -1 : 0);
}

} // namespace

void ShowBannedNames(Long Profile) {
    const BanFiles Files(Profile);
    const std::optional<Lines> Items = GetBannedNames(Profile);
    if (BanListsShow(Files)) FillList(BannedNamesList, Items);
}

void ShowBannedIps(Long Profile) {
    const BanFiles Files(Profile);
    const std::optional<Lines> Items = GetBannedIps(Profile);
    if (BanListsShow(Files)) FillList(BannedIpsList, Items);
}

void ClearBanLists() {
    for (const DetailedList& List : {BannedNamesList, BannedIpsList}) FillList(List, Lines());
}

void AppendBannedNames(const Lines& Items) {
    int Item = lstBannedNames.Count();
    lstBannedNames.Append(Items);
    for (const std::wstring& Text : Items)
        lstBannedNames.SetItemData(Item++, BannedName::OfItem(Text).IsPart() ? 2 : 1);
}

void AppendBannedIps(const Lines& Addresses) { lstBannedIps.Append(Addresses); }

bool BanListsShow(const BanFiles& Files) {
    return Files.Profile == mdlVNT::CurrentProfile && Files.Folder == mdlVNT::SettingsFolder(Files.Profile);
}

void ShowNewBan(Long Profile, const BannedName& Banned, const std::wstring& Ip) {
    if (!BanListsShow(BanFiles(Profile))) return;
    if (!HasItem(lstBannedNames, Banned.Item()) && !BannedNameDetails(Profile, Banned).Date.empty())
        AppendBannedNames({Banned.Item()});
    if (!HasItem(lstBannedIps, Ip) && !BannedIpDate(Profile, Ip).empty()) AppendBannedIps({Ip});
}

void lstBannedNames_Click() {
    const int Selected = lstBannedNames.Selected();
    BannedName Banned;
    BanDetails Details;
    if (Selected >= 0) {
        Banned = BannedName::OfItem(lstBannedNames.Item(Selected));
        Details = BannedNameDetails(mdlVNT::CurrentProfile, Banned);
    }
    lblName.SetText(Banned.Name);
    lblDate.SetText(Details.Date);
    lblReason.SetText(Details.Reason);
}

void lstBannedIps_Click() {
    const int Selected = lstBannedIps.Selected();
    const std::wstring Address = lstBannedIps.Item(Selected);
    const std::wstring Date = Selected >= 0 ? BannedIpDate(mdlVNT::CurrentProfile, Address) : L"";
    lblIp.SetText(Address);
    lblIpDate.SetText(Date);
}
