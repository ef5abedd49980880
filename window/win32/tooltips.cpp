// Under the mouse: a value that is longer than its label, whole; and the keys that not everybody knows.
#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "window/win32/native.h"

namespace Native {

namespace {

HWND Tooltips = nullptr;
std::wstring ShownText; // the system keeps a pointer to it

bool Fits(HWND Tool, const std::wstring& Text) {
    RECT Room{};
    GetClientRect(Tool, &Room);
    return Measure::TextWidth(Text) <= Room.right ||
           (IdOf(Tool) == ID_lblReason &&
            Measure::TextHeight(Text, static_cast<int>(Room.right)) <= Room.bottom);
}

struct KeyTip {
    int Id;
    const wchar_t* Text;
};
constexpr KeyTip KeyTips[] = {
    {ID_mfg,
     L"Ctrl+1 to Ctrl+4 sort by a column, F5 refreshes, the menu key or Shift+F10 opens a player's menu."},
    {ID_stMain, L"Ctrl+Tab and Ctrl+Page Down turn to the next page."},
    {ID_cmdRemoveName, L"Delete, in the list"},
    {ID_cmdRemoveIp, L"Delete, in the list"},
    {ID_cmdSlapDelete, L"Delete, in the list"},
    {ID_cmdSlapAdd, L"Enter, in the text box"},
    {ID_cmdSlapEdit, L"Enter takes the selected message to be edited, and stores it when it is changed."},
    {ID_lstBannedNames, L"The menu key or Shift+F10 offers to import a ban list."},
    {ID_lstBannedIps, L"The menu key or Shift+F10 offers to import a ban list."},
};

void AddTool(HWND Root, HWND Control) noexcept {
    TOOLINFOW Tool{};
    Tool.cbSize = TTTOOLINFOW_V1_SIZE;
    Tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    Tool.hwnd = Root;
    Tool.uId = reinterpret_cast<UINT_PTR>(Control);
    Tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(Tooltips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&Tool));
}

// The tip of a grid belongs to its header: over the rows it would hide players.
HWND ToolOf(int Id) noexcept { return KindOf(Id) == Kind::Grid ? HeaderOf(Id) : WindowOf(Id); }

std::wstring TipOf(HWND Tool) {
    for (const KeyTip& Row : KeyTips)
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
    SendMessageW(Tooltips, TTM_SETMAXTIPWIDTH, 0, Measure::Scaled(400));
    for (const ControlRow& Row : Controls())
        if (Row.What == Kind::Value) AddTool(Root, WindowOf(Row.Id));
    for (const KeyTip& Row : KeyTips) AddTool(Root, ToolOf(Row.Id));
}

void StopTooltips() noexcept {
    if (Tooltips != nullptr) DestroyWindow(Tooltips);
    Tooltips = nullptr;
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
