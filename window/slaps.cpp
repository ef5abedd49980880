// The tab "Slap Messages".
#include "window/slaps.h"

#include <algorithm>

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "lists/slap_messages.h"
#include "window/controls.h"
#include "window/list_editing.h"
#include "window/long_work.h"
#include "window/menus.h"

namespace {

constexpr DetailedList SlapsList{lstSlaps, L"lstSlaps", lstSlaps_Click};

// The list as the file has it now: what was typed may be stored otherwise (blanks at its ends are lost), and
// remote consoles change it, too. Past the end the last message is selected.
void ShowStoredSlaps(Long Profile, int Selected) {
    const std::optional<Lines> Messages = ReadSlaps(Profile);
    if (Messages) lstSlaps.Fill(*Messages);
    lstSlaps.Select(std::min(Selected, lstSlaps.Count() - 1));
}

} // namespace

void GetSlaps(Long Profile) noexcept {
    Trapped(L"GetSlaps", Profile, [&] {
        const std::optional<Lines> Messages = ReadSlaps(Profile);
        if (!Messages) return;
        lstSlaps.Fill(*Messages);
        SelectAndShow(SlapsList, Messages->empty() ? -1 : 0);
    });
}

void LoadSlapMenu(Long Profile) noexcept {
    Trapped(L"LoadSlapMenu", Profile, [&] {
        std::optional<Lines> Messages = ReadSlaps(Profile);
        if (Messages) SetSlapItems(std::move(*Messages));
    });
}

void ClearSlapTab() {
    lstSlaps.Fill({});
    SelectAndShow(SlapsList, -1);
    SetSlapItems({});
}

void lstSlaps_DblClick() {
    const int Selected = lstSlaps.Selected();
    if (Selected < 0) return;
    txtSlap.SetText(lstSlaps.Item(Selected));
    cmdSlapEdit.Enable(true);
    txtSlap.Edit();
}

void lstSlaps_Click() {
    txtSlap.SetText(L"");
    cmdSlapEdit.Enable(false);
}

void cmdSlapAdd_MouseUp() {
    const Long Profile = mdlVNT::CurrentProfile;
    const std::wstring Message = txtSlap.Text();
    if (Message.empty()) return;
    AddSlap(Profile, Message);
    ShowStoredSlaps(Profile, lstSlaps.Selected());
    lstSlaps.ShowAtTop(lstSlaps.Count() - 1);
    txtSlap.SetText(L"");
    LoadSlapMenu(Profile);
    ShowMsg(MsgKind::Success, L"Slap message added successfully.", Profile);
}

void cmdSlapEdit_MouseUp() {
    const Long Profile = mdlVNT::CurrentProfile;
    const std::wstring Message = txtSlap.Text();
    const int Selected = lstSlaps.Selected();
    if (!Message.empty() && Selected >= 0) {
        const std::wstring Old = lstSlaps.Item(Selected);
        // One that a remote console has deleted meanwhile is written again.
        if (!EditSlap(Profile, Old, Message, static_cast<std::size_t>(Selected))) AddSlap(Profile, Message);
        ShowStoredSlaps(Profile, Selected);
        LoadSlapMenu(Profile);
    }
    lstSlaps_Click(); // or Enter would add the message once more
}

void cmdSlapDelete_MouseUp() {
    const Long Profile = mdlVNT::CurrentProfile;
    const int Selected = lstSlaps.Selected();
    if (Selected < 0) Fail(ErrorNumber::InvalidCall);
    if (cmdSlapEdit.Enabled()) lstSlaps_Click(); // what was being edited may be gone
    {
        LongWork Work(L"Deleting the slap message...", false);
        DeleteSlap(Profile, lstSlaps.Item(Selected), static_cast<std::size_t>(Selected), Work.GoOn());
    }
    ShowStoredSlaps(Profile, Selected);
    LoadSlapMenu(Profile);
}
