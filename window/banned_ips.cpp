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

void RemoveNameWithItem(const BanFiles& Files, const std::wstring& Name) {
    // The list loses what FindListItem finds, the file exactly the name.
    DropItem(lstBannedNames, FindListItem(lstBannedNames, BannedName::Whole(Trim(Name)).Item()));
    RemoveLinkedName(Files, Name);
}

// Returns what to add to the message.
std::wstring RemoveLinkedNames(const BanFiles& Files, const std::wstring& Address) {
    LongWork Work(L"Removing the associated names...");
    FirstFailure Failed;
    Failed.Try([&] {
        UnlinkAddress(
            Files, Address, [&](const std::wstring& Name) { RemoveNameWithItem(Files, Name); }, Work.GoOn());
    });
    SelectAndShow(BannedNamesList, lstBannedNames.Selected());
    Failed.Throw();
    return Work.Note();
}

// The sweep behind a box must know of the change already.
bool Store(Long Profile, const std::wstring& Address) {
    const IpListChange Change(Profile);
    return StoreBannedIp(BanFiles(Profile), Address, TimeStamp());
}

void Remove(const BanFiles& Files, const std::wstring& Address) {
    const IpListChange Change(Files.Profile);
    RemoveBannedIp(Files, Address);
}

} // namespace

void cmdAddIp_MouseUp() {
    const Long Profile = mdlVNT::CurrentProfile;
    if (txtAddIp.Text().empty()) return;
    const std::wstring Address = Trim(txtAddIp.Text()); // as it will be stored
    if (!IsValidIp(Address)) return ShowMsg(MsgKind::Failed, L"IP Address format is invalid.", Profile);
    if (!Store(Profile, Address)) return ShowMsg(MsgKind::Failed, IpNotStored, Profile);
    AppendBannedIps({Address});
    txtAddIp.SetText(L"");
    ShowMsg(MsgKind::Success, L"IP Address added successfully.", Profile);
}

void cmdRemoveIp_MouseUp() {
    const int Selected = lstBannedIps.Selected();
    if (Selected < 0) return;
    const BanFiles Files(mdlVNT::CurrentProfile);
    const std::wstring Address = lstBannedIps.Item(Selected);
    Remove(Files, Address);
    lstBannedIps.Remove(Selected);
    // The details say what the question is about until it is answered.
    const bool WithNames =
        Platform::AskYesNo(L"Would you like to remove all associated names with this IP Address aswell?",
                           L"Remove Banned IP Address", Platform::Answer::No);
    SelectFirst(BannedIpsList);
    std::wstring Message = L"IP Address Removed Successfully.";
    if (WithNames) Message += RemoveLinkedNames(Files, Address);
    ShowMsg(MsgKind::Success, Message, Files.Profile);
}

void cmdSearchIp_MouseUp() { SearchList(BannedIpsList, txtSearchIp.Text(), L"IP Address not found!"); }
