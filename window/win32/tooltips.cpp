// Under the mouse: a value that is longer than its place, whole; and what the captions do not say.
#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/win32/entry.h"
#include "window/win32/native.h"

namespace Native {

namespace {

HWND Tooltips = nullptr;
WNDPROC SystemProcedure = nullptr;
std::wstring ShownText; // the system keeps a pointer to it

struct Cell {
    int Row = -1, Column = -1;
    std::wstring Text;
    bool operator==(const Cell&) const = default;
};
Cell Hovered; // the grid's cell under the mouse
constexpr UINT_PTR CellTool = 1;

// Our one window of the top level, and the system tells only those that its look has changed.
LRESULT CALLBACK TooltipProcedure(HWND Window, UINT Message, WPARAM W, LPARAM L) noexcept {
    const Module::Entry Guard;
    if (Message == WM_SETTINGCHANGE || Message == WM_SYSCOLORCHANGE) OnLookChanged(Message, W, L);
    return CallWindowProcW(SystemProcedure, Window, Message, W, L);
}

bool Fits(HWND Tool, const std::wstring& Text) {
    RECT Room{};
    GetClientRect(Tool, &Room);
    return Measure::TextWidth(Text) <= Room.right ||
           (IdOf(Tool) == ID_lblReason &&
            Measure::TextHeight(Text, static_cast<int>(Room.right)) <= Room.bottom);
}

// What the captions do not say.
struct TipRow {
    int Id;
    const wchar_t* Text;
};
constexpr TipRow Tips[] = {
    {ID_mfg, L"Click a heading to sort by it (Ctrl+1 to Ctrl+4). Right-click a player, or press Enter on "
             L"him, for what "
             L"can be done with him. Ctrl+C copies the selected player, F5 refreshes the list."},
    {ID_lstBannedNames, L"Right-click the list to import a ban file. Ctrl+C copies the selected name."},
    {ID_lstBannedIps, L"Right-click the list to import a ban file. Ctrl+C copies the selected address."},
    {ID_cmdRemoveName, L"Removes the selected name (Delete, in the list)."},
    {ID_cmdRemoveIp, L"Removes the selected address (Delete, in the list)."},
    {ID_txtIdleMax,
     L"A number of minutes from 1 on, such as 5. A smaller one, or one that begins with a zero, "
     L"counts as 5; what is no number is not taken."},
    {ID_txtRefreshInterval,
     L"A number of seconds from 1 on, such as 5. A smaller one, or one that begins with a "
     L"zero, counts as 5; what is no number is not taken."},
    {ID_lstSlaps, L"Double-click a message, or press Enter on it, to edit it in the box below."},
    {ID_cmdSlapAdd,
     L"Adds the text in the box (Enter, in the box). The menu of a player shows each message whole: "
     L"with more than some eighty characters it becomes very wide."},
    {ID_cmdSlapEdit, L"Stores the message that is being edited (Enter, in the box)."},
    {ID_cmdSlapDelete, L"Deletes the selected message (Delete, in the list)."},
};

TOOLINFOW ToolIn(HWND Window, UINT Flags, UINT_PTR Number) noexcept {
    TOOLINFOW Tool{};
    Tool.cbSize = TTTOOLINFOW_V1_SIZE;
    Tool.uFlags = Flags | TTF_SUBCLASS;
    Tool.hwnd = Window;
    Tool.uId = Number;
    return Tool;
}

void Tell(UINT Message, const TOOLINFOW& Tool) noexcept {
    SendMessageW(Tooltips, Message, 0, reinterpret_cast<LPARAM>(&Tool));
}

void AddTool(HWND Root, HWND Control) noexcept {
    TOOLINFOW Tool = ToolIn(Root, TTF_IDISHWND, reinterpret_cast<UINT_PTR>(Control));
    Tool.lpszText = LPSTR_TEXTCALLBACKW;
    Tell(TTM_ADDTOOLW, Tool);
}

// The tip of a grid belongs to its header: over the rows it would hide players.
HWND ToolOf(int Id) noexcept { return KindOf(Id) == Kind::Grid ? HeaderOf(Id) : WindowOf(Id); }

std::wstring TipOf(HWND Tool) {
    for (const TipRow& Row : Tips)
        if (ToolOf(Row.Id) == Tool) return Row.Text;
    std::wstring Text = ::Label{IdOf(Tool)}.Text();
    return Fits(Tool, Text) ? std::wstring() : Text;
}

} // namespace

void StartTooltips(HWND Root) noexcept {
    Tooltips =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0,
                        0, 0, 0, Root, nullptr, nullptr, nullptr);
    if (Tooltips == nullptr) return;
    FitTooltips();
    for (const ControlRow& Row : Controls())
        if (Row.What == Kind::Value) AddTool(Root, WindowOf(Row.Id));
    for (const TipRow& Row : Tips) AddTool(Root, ToolOf(Row.Id));
    SystemProcedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(Tooltips, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(TooltipProcedure)));
}

void StopTooltips() noexcept {
    if (Tooltips != nullptr) DestroyWindow(Tooltips);
    Tooltips = nullptr;
    Hovered = {};
}

void FitTooltips() noexcept { SendMessageW(Tooltips, TTM_SETMAXTIPWIDTH, 0, Measure::Scaled(400)); }

// A list view shows a tip for its first column alone.
void TrackCell(POINT Mouse) noexcept {
    Trapped(L"Tooltip", mdlVNT::CurrentProfile, [&] {
        LVHITTESTINFO Hit{};
        Hit.pt = Mouse;
        Send(ID_mfg, LVM_SUBITEMHITTEST, 0, &Hit);
        Cell Present{Hit.iItem, Hit.iSubItem, {}};
        if (Hit.iItem >= 0) Present.Text = CellText(ID_mfg, Hit.iItem, Hit.iSubItem);
        if (Present == Hovered) return;
        Hovered = Present;
        TOOLINFOW Tool = ToolIn(WindowOf(ID_mfg), 0, CellTool);
        Tell(TTM_DELTOOLW, Tool);
        const auto Column = static_cast<WPARAM>(Hit.iSubItem);
        if (Measure::TextWidth(Present.Text) + Measure::Scaled(8) <= Send(ID_mfg, LVM_GETCOLUMNWIDTH, Column))
            return;
        Tool.rect.top = Hit.iSubItem;
        Tool.rect.left = LVIR_BOUNDS;
        Send(ID_mfg, LVM_GETSUBITEMRECT, static_cast<WPARAM>(Hit.iItem), &Tool.rect);
        Tool.lpszText = Hovered.Text.data();
        Tell(TTM_ADDTOOLW, Tool);
    });
}

void OnTooltip(const NMHDR* Header) noexcept {
    Trapped(L"Tooltip", mdlVNT::CurrentProfile, [&] {
        // The system hands out its own structure for us to write the text into.
        auto* Wanted = const_cast<NMTTDISPINFOW*>(reinterpret_cast<const NMTTDISPINFOW*>(Header));
        ShownText = TipOf(reinterpret_cast<HWND>(Header->idFrom));
        Wanted->lpszText = ShownText.data();
    });
}

} // namespace Native
