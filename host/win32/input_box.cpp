// The dialog for one line of text.
#include "host/win32/input_box.h"

#include "host/win32/dialog_template.h"
#include "host/win32/entry.h"
#include "host/win32/module.h"

namespace {

enum ControlId : WORD { PromptId = 100, EditId = 101 };

std::wstring TextOfEdit(HWND Dialog) {
    const HWND Edit = GetDlgItem(Dialog, EditId);
    std::wstring Text(static_cast<std::size_t>(GetWindowTextLengthW(Edit)) + 1, L'\0');
    Text.resize(static_cast<std::size_t>(GetWindowTextW(Edit, Text.data(), static_cast<int>(Text.size()))));
    return Text;
}

void Close(HWND Dialog, bool Accepted) noexcept {
    try {
        auto* const Answer = reinterpret_cast<std::wstring*>(GetWindowLongPtrW(Dialog, DWLP_USER));
        if (Accepted && Answer != nullptr) *Answer = TextOfEdit(Dialog);
    } catch (...) { // NOLINT(bugprone-empty-catch): out of memory counts as Cancel
    }
    EndDialog(Dialog, 0);
}

INT_PTR CALLBACK DialogProcedure(HWND Dialog, UINT Message, WPARAM W, LPARAM L) noexcept {
    const Module::Entry Guard;
    if (Message == WM_INITDIALOG) {
        SetWindowLongPtrW(Dialog, DWLP_USER, L);
        SendDlgItemMessageW(Dialog, EditId, EM_LIMITTEXT, 255, 0);
        return TRUE;
    }
    if (Message != WM_COMMAND || (LOWORD(W) != IDOK && LOWORD(W) != IDCANCEL)) return FALSE;
    Close(Dialog, LOWORD(W) == IDOK);
    return TRUE;
}

} // namespace

std::wstring InputBox(HWND Owner, TextView Prompt, TextView Title) {
    DialogTemplate Dialog(Title, 240, 74, 4);
    Dialog.Control(L"Static", PromptId, SS_LEFT | SS_NOPREFIX, Prompt, {7, 7, 233, 27});
    Dialog.Control(L"Edit", EditId, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, L"", {7, 30, 233, 44});
    Dialog.Control(L"Button", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, L"OK", {127, 53, 177, 67});
    Dialog.Control(L"Button", IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP, L"Cancel", {183, 53, 233, 67});
    std::wstring Answer;
    DialogBoxIndirectParamW(Module::Instance(), Dialog.Get(), Owner, DialogProcedure,
                            reinterpret_cast<LPARAM>(&Answer));
    return Answer;
}
