#include "sandbox/host/shown_interface.h"

#include <commctrl.h>

#include "sandbox/host/journal.h"

namespace ShownInterface {
namespace {

constexpr UINT GetMenuHandle = 0x01E1; // asks a menu's window for its menu

HWND Grid = nullptr;
std::wstring Wanted;

struct SearchedClass {
    const wchar_t* Class;
    HWND Found;
};

BOOL CALLBACK MatchClass(HWND Window, LPARAM Search) {
    auto* Asked = reinterpret_cast<SearchedClass*>(Search);
    wchar_t Class[32] = L"";
    GetClassNameW(Window, Class, 32);
    if (std::wstring(Class) != Asked->Class) return TRUE;
    Asked->Found = Window;
    return FALSE;
}

// The interface has one control of each of the classes that are asked for.
HWND ControlOf(HWND PluginArea, const wchar_t* Class) {
    SearchedClass Asked{Class, nullptr};
    EnumChildWindows(PluginArea, MatchClass, reinterpret_cast<LPARAM>(&Asked));
    if (!Asked.Found || !IsWindowVisible(Asked.Found))
        Fail(ErrorNumber::InvalidCall, L"No interface is shown");
    return Asked.Found;
}

// How often "down" must be pressed to come to the entry; 0 when there is none of that caption.
int StepsTo(HMENU Menu, const std::wstring& Caption) {
    int Steps = 0;
    for (int At = 0; At < GetMenuItemCount(Menu); ++At) {
        if (GetMenuState(Menu, static_cast<UINT>(At), MF_BYPOSITION) & MF_SEPARATOR) continue;
        ++Steps;
        wchar_t Text[128] = L"";
        GetMenuStringW(Menu, static_cast<UINT>(At), Text, 128, MF_BYPOSITION);
        if (Caption == Text) return Steps;
    }
    return 0;
}

void Press(WPARAM Key) {
    PostMessageW(Grid, WM_KEYDOWN, Key, 1);
    PostMessageW(Grid, WM_KEYUP, Key, 1);
}

} // namespace

void ChooseFromMenu(HWND PluginArea, Long Row, const std::wstring& Caption) {
    Grid = ControlOf(PluginArea, WC_LISTVIEWW);
    if (Row < 1 || Row > SendMessageW(Grid, LVM_GETITEMCOUNT, 0, 0))
        Fail(ErrorNumber::InvalidCall, L"The player list has no row " + ToText(Row));
    LVITEMW Item{};
    Item.state = Item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(Grid, LVM_SETITEMSTATE, static_cast<WPARAM>(Row - 1), reinterpret_cast<LPARAM>(&Item));
    SetFocus(Grid);
    Wanted = Caption;
    PostMessageW(Grid, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Grid), -1);
}

void Continue() {
    if (Wanted.empty()) return;
    const HWND Popup = FindWindowW(L"#32768", nullptr);
    if (!Popup || GetWindowThreadProcessId(Popup, nullptr) != GetCurrentThreadId()) return;
    const HMENU Menu = reinterpret_cast<HMENU>(SendMessageW(Popup, GetMenuHandle, 0, 0));
    const int Steps = StepsTo(Menu, Wanted);
    if (Steps == 0) Journal::Write(L"FAILED menu: no entry \"" + Wanted + L"\"");
    for (int Step = 0; Step < Steps; ++Step) Press(VK_DOWN);
    Press(Steps == 0 ? VK_ESCAPE : VK_RETURN);
    Wanted.clear();
}

void TurnTab(HWND PluginArea, Long Tab) {
    const HWND Tabs = ControlOf(PluginArea, WC_TABCONTROLW);
    RECT Bounds{};
    if (!SendMessageW(Tabs, TCM_GETITEMRECT, static_cast<WPARAM>(Tab - 1), reinterpret_cast<LPARAM>(&Bounds)))
        Fail(ErrorNumber::InvalidCall, L"There is no tab " + ToText(Tab));
    // Choosing a tab by message would tell nobody.
    const LPARAM Middle = MAKELPARAM((Bounds.left + Bounds.right) / 2, (Bounds.top + Bounds.bottom) / 2);
    PostMessageW(Tabs, WM_LBUTTONDOWN, MK_LBUTTON, Middle);
    PostMessageW(Tabs, WM_LBUTTONUP, 0, Middle);
}

} // namespace ShownInterface
