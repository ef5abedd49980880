#include "sandbox/host/player_menu.h"

#include <commctrl.h>

#include "sandbox/host/journal.h"

namespace PlayerMenu {
namespace {

constexpr UINT GetMenuHandle = 0x01E1; // asks a menu's window for its menu

HWND Grid = nullptr;
std::wstring Wanted;

BOOL CALLBACK FindGrid(HWND Window, LPARAM Found) {
    wchar_t Class[32] = L"";
    GetClassNameW(Window, Class, 32);
    if (std::wstring(Class) != WC_LISTVIEWW) return TRUE;
    *reinterpret_cast<HWND*>(Found) = Window;
    return FALSE;
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

void Open(HWND PluginArea, Long Row, const std::wstring& Caption) {
    Grid = nullptr;
    EnumChildWindows(PluginArea, FindGrid, reinterpret_cast<LPARAM>(&Grid));
    if (!Grid || !IsWindowVisible(Grid)) Fail(ErrorNumber::InvalidCall, L"No interface is shown");
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

} // namespace PlayerMenu
