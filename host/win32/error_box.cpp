// The error box: a modeless dialog that comes out of the message loop and leaves the focus where it is.
#include <windows.h>

#include <algorithm>

#include "host/platform.h"
#include "host/win32/boxes.h"
#include "host/win32/dialog_template.h"
#include "host/win32/entry.h"
#include "host/win32/module.h"
#include "host/win32/open_box.h"
#include "host/win32/styled.h"

namespace Platform {

namespace {

constexpr UINT Interval = 100; // milliseconds between two looks whether the box may come
constexpr WORD IconId = 100;
constexpr WORD TextId = 0xFFFF; // as in a message box: there are programs that read boxes

struct ErrorText {
    std::wstring Text, Title;
};

ErrorText Due;
UINT_PTR Timer = 0; // runs while a text is due
HWND Dialog = nullptr;
HWND Focus = nullptr; // where it was before somebody clicked into the box
HHOOK Hook = nullptr;

// --- Keys: the message loop is the host's and knows nothing of our dialog.

// As in a message box: the whole text, if no part of it is selected.
void SelectForCopy() noexcept {
    DWORD From = 0, To = 0;
    SendDlgItemMessageW(Dialog, TextId, EM_GETSEL, reinterpret_cast<WPARAM>(&From),
                        reinterpret_cast<LPARAM>(&To));
    if (From == To) SendDlgItemMessageW(Dialog, TextId, EM_SETSEL, 0, -1);
}

bool HandleKey(MSG Message) noexcept {
    if (Message.message < WM_KEYFIRST || Message.message > WM_KEYLAST) return false;
    if (Dialog == nullptr || (Message.hwnd != Dialog && !IsChild(Dialog, Message.hwnd))) return false;
    if (Message.message == WM_KEYDOWN && Message.wParam == 'C' && GetKeyState(VK_CONTROL) < 0) {
        SelectForCopy();
        SendDlgItemMessageW(Dialog, TextId, WM_COPY, 0, 0);
        return true;
    }
    return !MenuIsOpen() && IsDialogMessageW(Dialog, &Message);
}

LRESULT CALLBACK OnMessageTaken(int Code, WPARAM Taken, LPARAM L) noexcept {
    const Module::Entry Guard;
    auto* const Message = reinterpret_cast<MSG*>(L);
    if (Code == HC_ACTION && (Taken & PM_REMOVE) != 0 && HandleKey(*Message)) Message->message = WM_NULL;
    return CallNextHookEx(nullptr, Code, Taken, L);
}

// --- The dialog

void TakeAway() noexcept {
    if (Dialog == nullptr) return;
    if (GetActiveWindow() == Dialog) ReturnFocus(Focus);
    DestroyWindow(Dialog);
}

void Forget() noexcept {
    UnhookWindowsHookEx(Hook);
    Hook = nullptr;
    Dialog = nullptr;
}

// Some window managers give every new window the keyboard, unless it says that it does not want it.
void SetActivation(bool Allowed) noexcept {
    const LONG Style = GetWindowLongW(Dialog, GWL_EXSTYLE) & ~WS_EX_NOACTIVATE;
    SetWindowLongW(Dialog, GWL_EXSTYLE, Allowed ? Style : Style | WS_EX_NOACTIVATE);
}

INT_PTR CALLBACK DialogProcedure(HWND Window, UINT Message, WPARAM W, LPARAM) noexcept {
    const Module::Entry Guard;
    switch (Message) {
    case WM_MOUSEACTIVATE: // from here on the keyboard may be its own
        SetActivation(true);
        SetForegroundWindow(Window);
        return FALSE;
    case WM_ACTIVATE:
        if (LOWORD(W) != WA_INACTIVE && GetFocus() != nullptr && !IsChild(Window, GetFocus()))
            Focus = GetFocus();
        return FALSE;
    case WM_COMMAND:
        if (LOWORD(W) == IDOK || LOWORD(W) == IDCANCEL) TakeAway();
        return TRUE;
    case WM_NCDESTROY: // also with its owner
        Forget();
        return FALSE;
    default: return FALSE; // for WM_INITDIALOG, too: the focus stays where it is
    }
}

// Grows in height by that much, after moving down.
void Stretch(HWND Control, int Down, int Taller) noexcept {
    RECT Area{};
    GetWindowRect(Control, &Area);
    MapWindowPoints(nullptr, Control == Dialog ? nullptr : Dialog, reinterpret_cast<POINT*>(&Area), 2);
    MoveWindow(Control, Area.left, Area.top + Down, Area.right - Area.left, Area.bottom - Area.top + Taller,
               TRUE);
}

int LineHeight(HWND Edit) noexcept {
    TEXTMETRICW Metrics{};
    const HDC Context = GetDC(Edit);
    const HGDIOBJ Before =
        SelectObject(Context, reinterpret_cast<HGDIOBJ>(SendMessageW(Edit, WM_GETFONT, 0, 0)));
    GetTextMetricsW(Context, &Metrics);
    SelectObject(Context, Before);
    ReleaseDC(Edit, Context);
    return Metrics.tmHeight;
}

// As tall as the text, but at most half of the screen: then the text scrolls.
void FitToText() noexcept {
    const HWND Edit = GetDlgItem(Dialog, TextId);
    RECT Room{}, Screen{};
    GetClientRect(Edit, &Room);
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &Screen, 0);
    const int Wanted = static_cast<int>(SendMessageW(Edit, EM_GETLINECOUNT, 0, 0)) * LineHeight(Edit);
    const int Most = static_cast<int>(Screen.bottom - Screen.top) / 2;
    const int Taller = std::clamp(Wanted, GetSystemMetrics(SM_CYICON), Most) - static_cast<int>(Room.bottom);
    Stretch(Dialog, 0, Taller);
    Stretch(Edit, 0, Taller);
    Stretch(GetDlgItem(Dialog, IDOK), Taller, 0);
    ShowScrollBar(Edit, SB_VERT, Wanted > Most);
}

void Create(const std::wstring& Title) {
    DialogTemplate Template(Title, 280, 80, 3);
    Template.Control(L"Button", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, L"OK", {223, 59, 273, 73});
    Template.Control(L"Edit", TextId, ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL | WS_TABSTOP,
                     L"", {40, 9, 273, 49});
    Template.Control(L"Static", IconId, SS_ICON, L"", {9, 9, 29, 29});
    const Styled WhileItIsMade;
    Focus = GetFocus();
    Dialog = CreateDialogIndirectParamW(Module::Instance(), Template.Get(), BoxOwner(), DialogProcedure, 0);
    if (Dialog == nullptr) return;
    Hook = SetWindowsHookExW(WH_GETMESSAGE, OnMessageTaken, nullptr, GetCurrentThreadId());
    SendDlgItemMessageW(Dialog, IconId, STM_SETICON, reinterpret_cast<WPARAM>(LoadIconW(nullptr, IDI_ERROR)),
                        0);
}

void ShowDue() {
    const ErrorText Shown = std::exchange(Due, {});
    const bool IsNew = Dialog == nullptr;
    if (IsNew) Create(Shown.Title);
    if (Dialog == nullptr) return;
    SetDlgItemTextW(Dialog, TextId, Shown.Text.c_str());
    FitToText();
    if (IsNew) {
        SetActivation(false);
        MoveToCentre(Dialog, BoxOwner());
    }
    ShowWindow(Dialog, SW_SHOWNOACTIVATE);
    SetWindowPos(Dialog, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    MessageBeep(MB_ICONERROR);
}

void StopTimer() noexcept {
    if (Timer != 0) KillTimer(nullptr, std::exchange(Timer, 0));
}

// A box of ours or a menu has the mouse and the keyboard: a further box beside it could not be closed, and
// would hide what is being asked.
void CALLBACK ShowWhenPossible(HWND, UINT, UINT_PTR, DWORD) noexcept {
    const Module::Entry Guard;
    if (Timer == 0 || OpenBox::IsOpen() || MenuIsOpen()) return;
    StopTimer();
    try {
        ShowDue();
    } catch (...) { // NOLINT(bugprone-empty-catch): out of memory; the error has been logged
    }
}

} // namespace

void PostErrorBox(TextView Text, TextView Title, bool ToFront) noexcept {
    if ((Timer != 0 || Dialog != nullptr) && !ToFront) return;
    try {
        Due = {std::wstring(Text), std::wstring(Title)};
        if (Timer == 0) Timer = SetTimer(nullptr, 0, Interval, ShowWhenPossible);
    } catch (...) { // NOLINT(bugprone-empty-catch): out of memory; the error has been logged
    }
}

void CloseErrorBoxes() noexcept {
    StopTimer();
    TakeAway();
}

} // namespace Platform
