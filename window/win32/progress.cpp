// toolkit.h: the window that shows how far long work has come.
#include <optional>

#include "host/win32/dialog_template.h"
#include "host/win32/entry.h"
#include "host/win32/module.h"
#include "host/win32/open_box.h"
#include "host/win32/styled.h"
#include "window/win32/native.h"

namespace {

constexpr ULONGLONG Patience = 1000; // milliseconds of work before the window shows
constexpr ULONGLONG Interval = 100;  // between two looks at its messages, which cost more than many entries
constexpr WORD WhatId = 100, CountId = 101, BarId = 102;

INT_PTR CALLBACK DialogProcedure(HWND Dialog, UINT Message, WPARAM W, LPARAM L) noexcept {
    const Module::Entry Guard;
    if (Message == WM_INITDIALOG) SetWindowLongPtrW(Dialog, DWLP_USER, L);
    // Escape sends the command without a button, too; L is the button.
    if (Message == WM_COMMAND && LOWORD(W) == IDCANCEL && L != 0)
        *reinterpret_cast<bool*>(GetWindowLongPtrW(Dialog, DWLP_USER)) = true;
    return Message == WM_INITDIALOG || Message == WM_COMMAND;
}

HWND CreateProgressDialog(HWND Owner, TextView What, bool HasCancel, bool& Cancelled) {
    DialogTemplate Dialog(L"Vantor", 200, HasCancel ? 66 : 48, HasCancel ? 4 : 3);
    Dialog.Control(L"Static", WhatId, SS_LEFT | SS_NOPREFIX, What, {7, 7, 193, 17});
    Dialog.Control(L"Static", CountId, SS_LEFT | SS_NOPREFIX, L"", {7, 18, 193, 28});
    Dialog.Control(PROGRESS_CLASSW, BarId, PBS_SMOOTH, L"", {7, 31, 193, 41});
    if (HasCancel)
        Dialog.Control(L"Button", IDCANCEL, BS_DEFPUSHBUTTON | WS_TABSTOP, L"Cancel", {143, 47, 193, 61});
    const Styled WhileItIsMade;
    return CreateDialogIndirectParamW(Module::Instance(), Dialog.Get(), Owner, DialogProcedure,
                                      reinterpret_cast<LPARAM>(&Cancelled));
}

void TakeOutOfQueue(UINT First, UINT Last) noexcept {
    for (MSG Message; PeekMessageW(&Message, nullptr, First, Last, PM_REMOVE);) {
    }
}

} // namespace

struct ProgressWindow::State {
    std::wstring What;
    bool HasCancel = true;
    ULONGLONG Due = GetTickCount64() + Patience; // when to look at the messages next
    bool Cancelled = false;
    HWND Owner = nullptr;
    HWND Dialog = nullptr;
    std::optional<OpenBox> Open;

    void ShowDialog();
    void ShowCount(Long Done, Long Total) const;
    void HandleMessages();
};

void ProgressWindow::State::ShowDialog() {
    Owner = GetAncestor(Native::FrameWindow(), GA_ROOT);
    Open.emplace(Owner);
    Dialog = CreateProgressDialog(Owner, What, HasCancel, Cancelled);
    if (Dialog == nullptr) return Open.reset(); // the work goes on without it
    EnableWindow(Owner, FALSE);
    ShowWindow(Dialog, SW_SHOW);
}

void ProgressWindow::State::ShowCount(Long Done, Long Total) const {
    SetDlgItemTextW(Dialog, CountId, (ToText(Done) + L" of " + ToText(Total)).c_str());
    SendDlgItemMessageW(Dialog, BarId, PBM_SETRANGE32, 0, Total);
    SendDlgItemMessageW(Dialog, BarId, PBM_SETPOS, static_cast<WPARAM>(Done), 0);
}

// The messages of the dialog and its controls alone. That the program shall end is told to every window.
void ProgressWindow::State::HandleMessages() {
    for (MSG Message; PeekMessageW(&Message, Dialog, 0, 0, PM_REMOVE);) {
        if (Message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(Message.wParam));
            Cancelled = true;
            return;
        }
        if (IsDialogMessageW(Dialog, &Message)) continue;
        TranslateMessage(&Message);
        DispatchMessageW(&Message);
    }
}

ProgressWindow::ProgressWindow(TextView What, bool HasCancel) : Its(std::make_unique<State>()) {
    Its->What = What;
    Its->HasCancel = HasCancel;
}

ProgressWindow::~ProgressWindow() {
    if (Its->Dialog == nullptr) return;
    // What was clicked and typed meanwhile was meant for a window that did not move.
    TakeOutOfQueue(WM_KEYFIRST, WM_KEYLAST);
    TakeOutOfQueue(WM_MOUSEFIRST, WM_MOUSELAST);
    EnableWindow(Its->Owner, TRUE);
    DestroyWindow(Its->Dialog);
}

bool ProgressWindow::GoesOn(Long Done, Long Total) {
    if (GetTickCount64() < Its->Due) return !Its->Cancelled;
    if (Its->Dialog == nullptr) Its->ShowDialog();
    if (Its->Dialog != nullptr) {
        Its->ShowCount(Done, Total);
        Its->HandleMessages();
    }
    Its->Due = GetTickCount64() + Interval;
    return !Its->Cancelled;
}
