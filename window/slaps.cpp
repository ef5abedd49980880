#include "window/slaps.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "lists/slap_messages.h"
#include "window/controls.h"
#include "window/handlers.h"
#include "window/list_editing.h"
#include "window/menus.h"

namespace {

Lines ItemsOf(const ListBox& List) {
    Lines Items;
    const int Count = List.Count();
    for (int Index = 0; Index < Count; ++Index) Items.push_back(List.Item(Index));
    return Items;
}

void AddMessage(Long Index) {
    const std::wstring Message = txtSlap.Text();
    if (Message.empty()) return;
    AddSlap(Index, Message);
    lstSlaps.Add(Message);
    txtSlap.SetText(L"");
    LoadSlapMenu(Index);
    ShowMsg(MsgKind::Success, L"Slap message added successfully.", Index);
}

void EditMessage(Long Index) {
    cmdSlapEdit.Enable(false);
    const std::wstring Message = txtSlap.Text();
    const int Selected = lstSlaps.Selected();
    if (Message.empty() || Selected < 0) return;
    lstSlaps.Replace(Selected, Message);
    EditSlap(Index, static_cast<std::size_t>(Selected), Message);
    LoadSlapMenu(Index);
}

void DeleteMessage(Long Index) {
    const int Selected = lstSlaps.Selected();
    if (Selected < 0) Fail(ErrorNumber::InvalidCall);
    cmdSlapEdit.Enable(false); // what was being edited may be gone
    lstSlaps.Remove(Selected);
    RewriteSlaps(Index, ItemsOf(lstSlaps));
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
