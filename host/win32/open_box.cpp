// The place of a box on the screen, and the focus after it.
#include "host/win32/open_box.h"

#include <algorithm>

#include "host/win32/entry.h"
#include "host/win32/module.h"

namespace {

OpenBox* Innermost = nullptr;

bool IsDialog(HWND Window) noexcept {
    wchar_t Class[8] = L"";
    GetClassNameW(Window, Class, static_cast<int>(std::size(Class)));
    return lstrcmpW(Class, L"#32770") == 0;
}

} // namespace

OpenBox::OpenBox(HWND HostWindow) noexcept
    : Outer(Innermost), Host(HostWindow), Focus(GetFocus()),
      Hook(SetWindowsHookExW(WH_CBT, OnThreadEvent, nullptr, GetCurrentThreadId())) {
    Module::AddLock();
    Innermost = this;
}

OpenBox::~OpenBox() {
    if (Hook != nullptr) UnhookWindowsHookEx(Hook);
    Innermost = Outer;
    ReturnFocus(Focus);
    Module::RemoveLock();
}

bool OpenBox::IsOpen() noexcept { return Innermost != nullptr; }

void OpenBox::OnActivate(HWND Activated) noexcept {
    if (Box != nullptr || !IsDialog(Activated)) return;
    Box = Activated;
    MoveToCentre(Box, Host);
}

LRESULT CALLBACK OpenBox::OnThreadEvent(int Code, WPARAM W, LPARAM L) noexcept {
    const Module::Entry Guard;
    if (Code == HCBT_ACTIVATE && Innermost != nullptr) Innermost->OnActivate(reinterpret_cast<HWND>(W));
    return CallNextHookEx(nullptr, Code, W, L);
}

bool MenuIsOpen() noexcept {
    GUITHREADINFO Info{};
    Info.cbSize = sizeof Info;
    return GetGUIThreadInfo(GetCurrentThreadId(), &Info) && (Info.flags & GUI_INMENUMODE) != 0;
}

void MoveToCentre(HWND Box, HWND Host) noexcept {
    if (!IsWindowVisible(Host) || IsIconic(Host)) return;
    RECT Own{}, Area{};
    MONITORINFO Screen{};
    Screen.cbSize = sizeof Screen;
    GetWindowRect(Box, &Own);
    GetWindowRect(Host, &Area);
    GetMonitorInfoW(MonitorFromWindow(Host, MONITOR_DEFAULTTONEAREST), &Screen);
    const LONG Width = Own.right - Own.left;
    const LONG Height = Own.bottom - Own.top;
    const LONG X = (Area.left + Area.right - Width) / 2;
    const LONG Y = (Area.top + Area.bottom - Height) / 2;
    SetWindowPos(Box, nullptr, std::max(Screen.rcWork.left, std::min(X, Screen.rcWork.right - Width)),
                 std::max(Screen.rcWork.top, std::min(Y, Screen.rcWork.bottom - Height)), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ReturnFocus(HWND Focus) noexcept {
    if (IsWindowVisible(Focus) && IsWindowEnabled(Focus)) SetFocus(Focus);
}
