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

void ShowBannedNames(Long Profile) { FillList(BannedNamesList, GetBannedNames(Profile)); }
void ShowBannedIps(Long Profile) { FillList(BannedIpsList, GetBannedIps(Profile)); }

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

void ShowNewBan(const BanOutcome& Stored) {
    if (Stored.Name && !lstBannedNames.Has(Stored.Name->Item())) AppendBannedNames({Stored.Name->Item()});
    if (!Stored.Ip.empty() && !lstBannedIps.Has(Stored.Ip)) AppendBannedIps({Stored.Ip});
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
