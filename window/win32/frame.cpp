// The frame window: its class, its life and its place in the host.
#include "window/win32/native.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/win32/boxes.h"
#include "host/win32/entry.h"
#include "host/win32/module.h"
#include "host/win32/styled.h"
#include "window/frmVNT.h"

namespace {

constexpr const wchar_t* FrameClass = L"frmVNT";
constexpr UINT DpiChangedAfterParent = 0x02E3; // newer than the headers' target

HWND TheFrame = nullptr;
bool IsPrepared = false; // class, look and lock are there
RECT Wanted{};           // as last asked for by Move

void ForgetEverything() noexcept {
    TheFrame = nullptr;
    Native::StopKeyboard();
    Platform::SetOwner(0);
    Native::ForgetControls();
    Native::ForgetTimers();
    Native::ForgetScrolling();
    Native::ForgetPageBackground();
    frmVNT::Gone();
}

void Restyle(HWND Window) noexcept {
    Native::ApplyFont(Window);
    Native::ApplyLayout();
    Native::FitTooltips();
}

LRESULT CALLBACK FrameProcedure(HWND Window, UINT Message, WPARAM W, LPARAM L) noexcept {
    const Module::Entry Guard;
    switch (Message) {
    case WM_SIZE: Native::ApplyLayout(); return 0;
    case WM_COMMAND: Native::OnCommand(W, L); return 0;
    case WM_NOTIFY: return Native::OnNotify(reinterpret_cast<const NMHDR*>(L));
    case WM_CONTEXTMENU: Native::OnContextMenu(reinterpret_cast<HWND>(W), L); return 0;
    case WM_TIMER: Native::OnTimer(W); return 0;
    case WM_HSCROLL: Native::Scroll(SB_HORZ, W); return 0;
    case WM_VSCROLL: Native::Scroll(SB_VERT, W); return 0;
    case WM_MOUSEWHEEL: Native::ScrollByWheel(W); return 0;
    case Native::KeyOfOurs: Native::OnKey(W, L); return 0;
    case WM_SETFOCUS: SetFocus(Native::WindowOf(ID_mfg)); return 0;
    case WM_THEMECHANGED: Native::ForgetPageBackground(); break;
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE: Native::OnLookChanged(Message, W, L); break;
    case DpiChangedAfterParent: Restyle(Window); return 0;
    case WM_DESTROY: Native::StopTooltips(); return 0;
    case WM_NCDESTROY:
        // At our wish, or because the host's window goes with everything in it.
        if (Window == TheFrame) ForgetEverything();
        break;
    default: break;
    }
    return DefWindowProcW(Window, Message, W, L);
}

bool RegisterFrameClass() noexcept {
    WNDCLASSEXW Class{};
    Class.cbSize = sizeof Class;
    Class.lpfnWndProc = FrameProcedure;
    Class.hInstance = Module::Instance();
    Class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    Class.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_3DFACE + 1);
    Class.lpszClassName = FrameClass;
    return RegisterClassExW(&Class) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

void Prepare() {
    if (IsPrepared) return;
    if (!RegisterFrameClass() || !Native::RegisterPageClass())
        Fail(ErrorNumber::OutOfMemory, L"The window class could not be registered.");
    Native::LoadAppearance();
    Module::AddLock(); // the window procedures must outlive the window
    IsPrepared = true;
}

void Unprepare() noexcept {
    if (!IsPrepared) return;
    IsPrepared = false;
    Native::UnloadAppearance();
    Native::UnregisterPageClass();
    UnregisterClassW(FrameClass, Module::Instance());
    Module::RemoveLock();
}

void SetStyle(DWORD Kind) noexcept {
    const auto Style = static_cast<DWORD>(GetWindowLongW(TheFrame, GWL_STYLE)) & ~(WS_POPUP | WS_CHILD);
    SetWindowLongW(TheFrame, GWL_STYLE, static_cast<LONG>(Style | Kind));
}

void ReportRefusedHost(DWORD Reason) noexcept {
    Trapped(L"SetParent", mdlVNT::CurrentProfile, [&] {
        Fail(ErrorNumber::InvalidCall, L"The host's window cannot hold the plug-in's window (system error " +
                                           ToText(static_cast<Long>(Reason)) + L").");
    });
}

} // namespace

HWND Native::FrameWindow() noexcept { return TheFrame; }

namespace Frame {

void Create(Place Where) {
    Prepare();
    try {
        const Styled Controls;
        // A hidden pop-up window until the host's window takes it in.
        TheFrame = CreateWindowExW(WS_EX_CONTROLPARENT, FrameClass, L"Vantor", WS_POPUP | WS_CLIPSIBLINGS, 0,
                                   0, 0, 0, nullptr, nullptr, Module::Instance(), nullptr);
        if (TheFrame == nullptr) Fail(ErrorNumber::OutOfMemory, L"The window could not be created.", Where);
        Native::BuildControls(TheFrame);
        Native::ApplyFont(TheFrame);
        Native::StartTooltips(TheFrame);
    } catch (...) {
        Destroy();
        throw;
    }
    Native::ApplyLayout();
    Native::ShowPage(0);
    Native::StartKeyboard();
    Platform::SetOwner(reinterpret_cast<std::intptr_t>(TheFrame));
}

bool Exists() { return TheFrame != nullptr; }

void Destroy() {
    const Native::Quiet WhileItGoes;
    if (TheFrame != nullptr) DestroyWindow(TheFrame);
    Unprepare();
}

void Move(Long X, Long Y, Long Width, Long Height) {
    Wanted = {X, Y, X + Width, Y + Height};
    MoveWindow(TheFrame, X, Y, Width, Height, TRUE);
}

void SetParent(std::intptr_t Host) {
    const auto Window = reinterpret_cast<HWND>(Host);
    const bool HasHost = IsWindow(Window) != FALSE;
    // The style first, or the frame would take the activation from the host.
    SetStyle(HasHost ? WS_CHILD : WS_POPUP);
    const bool IsHeld = ::SetParent(TheFrame, HasHost ? Window : nullptr) != nullptr && HasHost;
    const DWORD Reason = GetLastError();
    if (HasHost && !IsHeld) { // as between windows of different dpi awareness
        SetStyle(WS_POPUP);
        ::SetParent(TheFrame, nullptr);
    }
    // The place counts from the new parent.
    SetWindowPos(TheFrame, nullptr, Wanted.left, Wanted.top, Wanted.right - Wanted.left,
                 Wanted.bottom - Wanted.top, SWP_FRAMECHANGED | SWP_NOZORDER | SWP_NOACTIVATE);
    if (HasHost && !IsHeld) ReportRefusedHost(Reason);
}

void Show(bool On) {
    // A hidden box that keeps the focus would store what is typed.
    if (!On && IsChild(TheFrame, GetFocus())) SetFocus(GetAncestor(TheFrame, GA_PARENT));
    ShowWindow(TheFrame, On ? SW_SHOWNA : SW_HIDE);
}

Size PixelsPerInch() {
    const HDC Screen = GetDC(nullptr);
    const Size Found{GetDeviceCaps(Screen, LOGPIXELSX), GetDeviceCaps(Screen, LOGPIXELSY)};
    ReleaseDC(nullptr, Screen);
    return Found;
}

} // namespace Frame
