// The tab "Banned Names".
#include "window/banned_names.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "lists/ban_lists.h"
#include "lists/ban_references.h"
#include "window/ban_list_boxes.h"

namespace {

constexpr std::size_t TagLength = 3; // "[1]"

void RemoveLinkedIp(Long Profile, const std::wstring& Address) {
    if (Address.empty()) return; // a damaged link: every item begins with nothing
    // The list loses the first item that begins with the address, the file exactly the address.
    if (BanListsShow(Profile)) RemoveItem(BannedIpsList, lstBannedIps.FindPrefix(Address));
    FileHelper::WriteIniKey(IpsSection, Address, std::nullopt, mdlVNT::BannedIpsPath(Profile));
}

} // namespace

void AddTypedName() {
    const Long Profile = mdlVNT::CurrentProfile;
    const std::wstring Name = txtBannedName.Text();
    if (Name.empty()) return;
    const std::wstring Tag(optBanned.Chosen() == 1 ? PartOfName : WholeName);
    if (txtBanReason.Text().empty()) txtBanReason.SetText(L"None");
    if (!StoreBannedName(Profile, Name + Tag, TimeStamp(), txtBanReason.Text())) {
        ShowMsg(MsgKind::Failed, L"The name could not be stored in the ban list.", Profile);
        return;
    }
    AppendBannedName(Tag + L" " + Name);
    txtBannedName.SetText(L"");
    txtBanReason.SetText(L"");
    optBanned.Choose(0);
    ShowMsg(MsgKind::Success, L"Name added successfully.", Profile);
}

void RemoveSelectedName() {
    const Long Profile = mdlVNT::CurrentProfile;
    const int Selected = lstBannedNames.Selected();
    if (Selected < 0) return;
    const std::wstring Key = KeyOfItem(lstBannedNames.Item(Selected));
    DeleteBannedName(Profile, Key);
    RemoveItem(BannedNamesList, Selected);
    if (Platform::AskYesNo(L"Would you like to remove all associated IP Addresses with this name aswell?",
                           L"Remove Banned Name"))
        UnlinkName(Profile, TextView(Key).substr(0, Key.size() - TagLength),
                   [&](const std::wstring& Address) { RemoveLinkedIp(Profile, Address); });
    ShowMsg(MsgKind::Success, L"Name Removed Successfully.", Profile);
}

void SearchNames() { SearchList(BannedNamesList, txtSearch.Text(), L"Name not found!"); }
