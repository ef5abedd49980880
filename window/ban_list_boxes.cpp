// The items and details of the two ban list boxes.
#include "window/ban_list_boxes.h"

#include "game/mdlVNT.h"
#include "lists/ban_lists.h"

namespace {

constexpr std::size_t ItemPrefix = 4; // "[1] "

void FillList(const DetailedList& List, const std::optional<Lines>& Items) {
    if (!Items) return;
    List.Box.Fill(*Items);
    SelectAndShow(List, Items->empty() ? -1 : 0);
}

} // namespace

void ShowBannedNames(Long Profile) { FillList(BannedNamesList, GetBannedNames(Profile)); }

void ShowBannedIps(Long Profile) { FillList(BannedIpsList, GetBannedIps(Profile)); }

void ClearBanLists() {
    for (const DetailedList& List : {BannedNamesList, BannedIpsList}) FillList(List, Lines());
}

void AppendBannedName(TextView Item) {
    lstBannedNames.SetItemData(lstBannedNames.Add(Item), Item.starts_with(PartOfName) ? 2 : 1);
}

void AppendBannedIp(TextView Address) { lstBannedIps.Add(Address); }

bool BanListsShow(Long Profile) { return Profile == mdlVNT::CurrentProfile; }

void ShowNewBan(Long Profile, const std::wstring& Name, const std::wstring& Ip) {
    if (!BanListsShow(Profile)) return;
    const std::wstring Key = Name + std::wstring(WholeName);
    if (!HasItem(lstBannedNames, ItemOfKey(Key)) && !BannedNameDetails(Profile, Key).Date.empty())
        AppendBannedName(ItemOfKey(Key));
    if (!HasItem(lstBannedIps, Ip) && !BannedIpDate(Profile, Ip).empty()) AppendBannedIp(Ip);
}

void ShowNameDetails() {
    const int Selected = lstBannedNames.Selected();
    const std::wstring Item = lstBannedNames.Item(Selected);
    BanDetails Details;
    if (Selected >= 0) Details = BannedNameDetails(mdlVNT::CurrentProfile, KeyOfItem(Item));
    lblName.SetText(Selected >= 0 ? TextView(Item).substr(ItemPrefix) : TextView());
    lblDate.SetText(Details.Date);
    lblReason.SetText(Details.Reason);
}

void ShowIpDetails() {
    const int Selected = lstBannedIps.Selected();
    const std::wstring Address = lstBannedIps.Item(Selected);
    const std::wstring Date = Selected >= 0 ? BannedIpDate(mdlVNT::CurrentProfile, Address) : L"";
    lblIp.SetText(Address);
    lblIpDate.SetText(Date);
}
