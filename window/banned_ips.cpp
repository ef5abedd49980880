// The tab "Banned IP Addresses".
#include "window/banned_ips.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "lists/ban_lists.h"
#include "lists/ban_references.h"
#include "lists/first_failure.h"
#include "window/ban_list_boxes.h"
#include "window/long_work.h"

namespace {

void RemoveNameWithItem(Long Profile, const std::wstring& Name) {
    // The list loses what FindListItem finds, the file exactly the name.
    if (BanListsShow(Profile))
        DropItem(lstBannedNames, FindListItem(lstBannedNames, BannedName::Whole(Trim(Name)).Item()));
    RemoveLinkedName(BanFiles(Profile), Name);
}

// Returns what to add to the message.
std::wstring RemoveLinkedNames(Long Profile, const std::wstring& Address) {
    LongWork Work(L"Removing the associated names...");
    FirstFailure Failed;
    Failed.Try([&] {
        UnlinkAddress(
            BanFiles(Profile), Address, [&](const std::wstring& Name) { RemoveNameWithItem(Profile, Name); },
            Work.GoOn());
    });
    SelectAndShow(BannedNamesList, lstBannedNames.Selected());
    Failed.Throw();
    return Work.Note();
}

} // namespace

void cmdAddIp_MouseUp() {
    const Long Profile = mdlVNT::CurrentProfile;
    if (txtAddIp.Text().empty()) return;
    const std::wstring Address = Trim(txtAddIp.Text()); // as it will be stored
    if (!IsValidIp(Address) || !StoreBannedIp(BanFiles(Profile), Address, TimeStamp())) {
        ShowMsg(MsgKind::Failed, L"IP Address format is invalid.", Profile);
        return;
    }
    AppendBannedIps({Address});
    txtAddIp.SetText(L"");
    // Before the box: a sweep behind it must know already.
    mdlVNT::IpListChanged(Profile) = true;
    ShowMsg(MsgKind::Success, L"IP Address added successfully.", Profile);
}

void cmdRemoveIp_MouseUp() {
    const Long Profile = mdlVNT::CurrentProfile;
    const int Selected = lstBannedIps.Selected();
    if (Selected < 0) return;
    const std::wstring Address = lstBannedIps.Item(Selected);
    RemoveBannedIp(BanFiles(Profile), Address);
    mdlVNT::IpListChanged(Profile) = true;
    RemoveItem(BannedIpsList, Selected);
    std::wstring Message = L"IP Address Removed Successfully.";
    if (Platform::AskYesNo(L"Would you like to remove all associated names with this IP Address aswell?",
                           L"Remove Banned IP Address", Platform::Answer::No))
        Message += RemoveLinkedNames(Profile, Address);
    ShowMsg(MsgKind::Success, Message, Profile);
}

void cmdSearchIp_MouseUp() { SearchList(BannedIpsList, txtSearchIp.Text(), L"IP Address not found!"); }
