// The tab "Banned Names".
#include "window/banned_names.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "lists/ban_lists.h"
#include "lists/ban_references.h"
#include "window/ban_list_boxes.h"
#include "window/part_question.h"

namespace {

void RemoveIpWithItem(Long Profile, const std::wstring& Address) {
    if (Address.empty()) return; // a damaged link: every item begins with nothing
    // The list loses the first item that begins with the address, the file exactly the address.
    if (BanListsShow(Profile)) RemoveItem(BannedIpsList, lstBannedIps.FindPrefix(Address));
    RemoveLinkedIp(BanFiles(Profile), Address);
}

BannedName TypedName() {
    const std::wstring Name = txtBannedName.Text();
    if (optBanned.Chosen() == 1) return BannedName::Part(Name);
    const std::wstring Part = AskForPartOf(Name, L"Add Name");
    return Part.empty() ? BannedName::Whole(Name) : BannedName::Part(Part);
}

} // namespace

void AddTypedName() {
    const Long Profile = mdlVNT::CurrentProfile;
    if (txtBannedName.Text().empty()) return;
    const BannedName Banned = TypedName();
    if (txtBanReason.Text().empty()) txtBanReason.SetText(L"None");
    if (!StoreBannedName(BanFiles(Profile), Banned, TimeStamp(), txtBanReason.Text())) {
        ShowMsg(MsgKind::Failed, L"The name could not be stored in the ban list.", Profile);
        return;
    }
    AppendBannedName(Banned.Item());
    txtBannedName.SetText(L"");
    txtBanReason.SetText(L"");
    optBanned.Choose(0);
    ShowMsg(MsgKind::Success, L"Name added successfully.", Profile);
}

void RemoveSelectedName() {
    const Long Profile = mdlVNT::CurrentProfile;
    const int Selected = lstBannedNames.Selected();
    if (Selected < 0) return;
    const BannedName Banned = BannedName::OfItem(lstBannedNames.Item(Selected));
    RemoveBannedName(BanFiles(Profile), Banned);
    RemoveItem(BannedNamesList, Selected);
    if (Platform::AskYesNo(L"Would you like to remove all associated IP Addresses with this name aswell?",
                           L"Remove Banned Name", Platform::Answer::No))
        UnlinkName(BanFiles(Profile), Banned.Name,
                   [&](const std::wstring& Address) { RemoveIpWithItem(Profile, Address); });
    ShowMsg(MsgKind::Success, L"Name Removed Successfully.", Profile);
}

void SearchNames() { SearchList(BannedNamesList, txtSearch.Text(), L"Name not found!"); }
