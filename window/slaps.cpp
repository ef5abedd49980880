#include "window/slaps.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "lists/slap_messages.h"
#include "window/controls.h"
#include "window/handlers.h"
#include "window/list_editing.h"
#include "window/menus.h"

namespace {

// The list as the file has it now: what was typed may be stored otherwise (blanks at its ends are lost), and
// remote consoles change it, too.
void ShowStoredSlaps(Long Index, int Selected) {
    if (const std::optional<Lines> Messages = ReadSlaps(Index)) lstSlaps.Fill(*Messages);
    lstSlaps.Select(Selected);
}

void AddMessage(Long Index) {
    const std::wstring Message = txtSlap.Text();
    if (Message.empty()) return;
    AddSlap(Index, Message);
    ShowStoredSlaps(Index, lstSlaps.Selected());
    txtSlap.SetText(L"");
    LoadSlapMenu(Index);
    ShowMsg(MsgKind::Success, L"Slap message added successfully.", Index);
}

void EditMessage(Long Index) {
    cmdSlapEdit.Enable(false);
    const std::wstring Message = txtSlap.Text();
    const int Selected = lstSlaps.Selected();
    if (Message.empty() || Selected < 0) return;
    const std::wstring Old = lstSlaps.Item(Selected);
    // One that a remote console has deleted meanwhile is written again.
    if (!EditSlap(Index, Old, Message, static_cast<std::size_t>(Selected))) AddSlap(Index, Message);
    ShowStoredSlaps(Index, Selected);
    LoadSlapMenu(Index);
}

void DeleteMessage(Long Index) {
    const int Selected = lstSlaps.Selected();
    if (Selected < 0) Fail(ErrorNumber::InvalidCall);
    cmdSlapEdit.Enable(false); // what was being edited may be gone
    const std::wstring Message = lstSlaps.Item(Selected);
    DeleteSlap(Index, Message, static_cast<std::size_t>(Selected));
    ShowStoredSlaps(Index, -1);
    LoadSlapMenu(Index);
}

} // namespace

void GetSlaps(Long Index) noexcept {
    Trapped(L"GetSlaps", Index, [&] {
        const std::optional<Lines> Messages = ReadSlaps(Index);
        if (!Messages) return;
        lstSlaps.Fill(*Messages);
        SelectAndShow(lstSlaps, Messages->empty() ? -1 : 0);
    });
}

void LoadSlapMenu(Long Index) noexcept {
    Trapped(L"LoadSlapMenu", Index, [&] {
        if (std::optional<Lines> Messages = ReadSlaps(Index)) SetSlapItems(std::move(*Messages));
    });
}

void ClearSlapTab() {
    lstSlaps.Fill({});
    SelectAndShow(lstSlaps, -1);
    SetSlapItems({});
}

void lstSlaps_Click() noexcept {
    Trapped(L"lstSlaps", mdlVNT::CurrentProfile, [] {
        txtSlap.SetText(L"");
        cmdSlapEdit.Enable(false);
    });
}

void lstSlaps_DblClick() noexcept {
    Trapped(L"lstSlaps", mdlVNT::CurrentProfile, [] {
        const int Selected = lstSlaps.Selected();
        if (Selected < 0) return;
        txtSlap.SetText(lstSlaps.Item(Selected));
        cmdSlapEdit.Enable(true);
    });
}

void cmdSlapAdd_MouseUp() noexcept {
    Trapped(L"cmdSlapAdd", mdlVNT::CurrentProfile, [] { AddMessage(mdlVNT::CurrentProfile); });
}

void cmdSlapEdit_MouseUp() noexcept {
    Trapped(L"cmdSlapEdit", mdlVNT::CurrentProfile, [] { EditMessage(mdlVNT::CurrentProfile); });
}

void cmdSlapDelete_MouseUp() noexcept {
    Trapped(L"cmdSlapDelete", mdlVNT::CurrentProfile, [] { DeleteMessage(mdlVNT::CurrentProfile); });
}
