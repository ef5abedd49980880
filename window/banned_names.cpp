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
    DropItem(lstBannedIps, FindListItem(lstBannedIps, Address));
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
    return optBanned.Chosen() == 1 ? BannedName::Part(Name) : BannedName::Whole(Name);
}

} // namespace

void cmdAddName_MouseUp() {
    if (txtBannedName.Text().empty()) return;
    const BanFiles Files(mdlVNT::CurrentProfile);
    const std::wstring Reason = txtBanReason.Text().empty() ? L"None" : txtBanReason.Text();
    const std::optional<BannedName> Banned = AskForEntry(TypedName(), L"Add Name");
    if (!Banned) return;
    txtBanReason.SetText(Reason);
    if (!StoreBannedName(Files, *Banned, TimeStamp(), Reason))
        return ShowMsg(MsgKind::Failed, NameNotStored, Files.Profile);
    AppendBannedNames({Banned->Item()});
    txtBannedName.SetText(L"");
    txtBanReason.SetText(L"");
    optBanned.Choose(0);
    ShowMsg(MsgKind::Success, L"Name added successfully.", Files.Profile);
}

void cmdRemoveName_MouseUp() {
    const int Selected = lstBannedNames.Selected();
    if (Selected < 0) return;
    const BannedName Banned = BannedName::OfItem(lstBannedNames.Item(Selected));
    const BanFiles Files(mdlVNT::CurrentProfile);
    RemoveBannedName(Files, Banned);
    lstBannedNames.Remove(Selected);
    // The details say what the question is about until it is answered.
    const bool WithIps =
        Platform::AskYesNo(L"Would you like to remove all associated IP Addresses with this name aswell?",
                           L"Remove Banned Name", Platform::Answer::No);
    SelectFirst(BannedNamesList);
    std::wstring Message = L"Name Removed Successfully.";
    if (WithIps) Message += RemoveLinkedIps(Files, Banned.Name);
    ShowMsg(MsgKind::Success, Message, Files.Profile);
}

void cmdSearchName_MouseUp() { SearchList(BannedNamesList, txtSearch.Text(), L"Name not found!"); }
