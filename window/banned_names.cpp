// The tab "Banned Names".
#include "window/banned_names.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "lists/ban_lists.h"
#include "lists/ban_references.h"
#include "lists/first_failure.h"
#include "window/ban_list_boxes.h"
#include "window/long_work.h"
#include "window/part_question.h"

namespace {

void RemoveIpWithItem(const BanFiles& Files, const std::wstring& Address) {
    if (Address.empty()) return; // a damaged link: every item begins with nothing
    // The list loses what FindListItem finds, the file exactly the address.
    if (BanListsShow(Files)) DropItem(lstBannedIps, FindListItem(lstBannedIps, Address));
    RemoveLinkedIp(Files, Address);
}

// Returns what to add to the message.
std::wstring RemoveLinkedIps(const BanFiles& Files, const std::wstring& Name) {
    LongWork Work(L"Removing the associated IP Addresses...");
    FirstFailure Failed;
    Failed.Try([&] {
        UnlinkName(
            Files, Name, [&](const std::wstring& Address) { RemoveIpWithItem(Files, Address); }, Work.GoOn());
    });
    SelectAndShow(BannedIpsList, lstBannedIps.Selected());
    Failed.Throw();
    return Work.Note();
}

BannedName TypedName() {
    const std::wstring Name = txtBannedName.Text();
    if (optBanned.Chosen() == 1) return BannedName::Part(Name);
    const std::wstring Part = AskForPartOf(Name, L"Add Name");
    return Part.empty() ? BannedName::Whole(Name) : BannedName::Part(Part);
}

} // namespace

void cmdAddName_MouseUp() {
    const Long Profile = mdlVNT::CurrentProfile;
    if (txtBannedName.Text().empty()) return;
    const BanFiles Files(Profile); // also after the question, whatever the host has loaded meanwhile
    if (txtBanReason.Text().empty()) txtBanReason.SetText(L"None");
    const std::wstring Reason = txtBanReason.Text();
    const BannedName Banned = TypedName();
    if (!StoreBannedName(Files, Banned, TimeStamp(), Reason)) {
        ShowMsg(MsgKind::Failed, L"The name could not be stored in the ban list.", Profile);
        return;
    }
    if (BanListsShow(Files)) {
        AppendBannedNames({Banned.Item()});
        txtBannedName.SetText(L"");
        txtBanReason.SetText(L"");
        optBanned.Choose(0);
    }
    ShowMsg(MsgKind::Success, L"Name added successfully.", Profile);
}

void cmdRemoveName_MouseUp() {
    const Long Profile = mdlVNT::CurrentProfile;
    const int Selected = lstBannedNames.Selected();
    if (Selected < 0) return;
    const BannedName Banned = BannedName::OfItem(lstBannedNames.Item(Selected));
    const BanFiles Files(Profile); // also after the question, whatever the host has loaded meanwhile
    RemoveBannedName(Files, Banned);
    RemoveItem(BannedNamesList, Selected);
    std::wstring Message = L"Name Removed Successfully.";
    if (Platform::AskYesNo(L"Would you like to remove all associated IP Addresses with this name aswell?",
                           L"Remove Banned Name", Platform::Answer::No))
        Message += RemoveLinkedIps(Files, Banned.Name);
    ShowMsg(MsgKind::Success, Message, Profile);
}

void cmdSearchName_MouseUp() { SearchList(BannedNamesList, txtSearch.Text(), L"Name not found!"); }
