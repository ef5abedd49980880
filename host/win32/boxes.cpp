// Result boxes, questions and dialogs; the error box is in error_box.cpp.
#include "host/win32/boxes.h"

#include <windows.h>

#include <commdlg.h>

#include "host/platform.h"
#include "host/win32/entry.h"
#include "host/win32/input_box.h"
#include "host/win32/module.h"
#include "host/win32/open_box.h"
#include "host/win32/styled.h"

namespace Platform {

namespace {

HWND OwnerChild = nullptr;

UINT IconOf(BoxIcon Icon) {
    switch (Icon) {
    case BoxIcon::Error: return MB_ICONERROR;
    case BoxIcon::Information: return MB_ICONINFORMATION;
    case BoxIcon::Warning: break;
    }
    return MB_ICONWARNING;
}

struct StyledBox {
    const Styled Look;
    const OpenBox Open{BoxOwner()};
};

int Show(TextView Text, TextView Title, UINT Style) {
    const StyledBox WhileItIsOpen;
    return MessageBoxW(BoxOwner(), std::wstring(Text).c_str(), std::wstring(Title).c_str(), Style);
}

} // namespace

void SetOwner(std::intptr_t Window) noexcept {
    OwnerChild = reinterpret_cast<HWND>(Window);
    if (OwnerChild == nullptr) CloseErrorBoxes();
}

HWND BoxOwner() noexcept {
    return OwnerChild != nullptr && IsWindow(OwnerChild) ? GetAncestor(OwnerChild, GA_ROOT) : nullptr;
}

void ShowBox(BoxIcon Icon, TextView Text, TextView Title) { Show(Text, Title, MB_OK | IconOf(Icon)); }

bool AskYesNo(TextView Text, TextView Title, Answer Default) {
    const UINT DefaultButton = Default == Answer::Yes ? MB_DEFBUTTON1 : MB_DEFBUTTON2;
    return Show(Text, Title, MB_YESNO | MB_ICONQUESTION | DefaultButton) == IDYES;
}

Answer AskYesNoCancel(TextView Text, TextView Title) {
    const int Pressed = Show(Text, Title, MB_YESNOCANCEL | MB_ICONQUESTION | MB_DEFBUTTON3);
    return Pressed == IDYES ? Answer::Yes : Pressed == IDNO ? Answer::No : Answer::Cancel;
}

std::wstring AskText(TextView Prompt, TextView Title) {
    const StyledBox WhileItIsOpen;
    return InputBox(BoxOwner(), Prompt, Title);
}

std::optional<std::wstring> AskOpenFile(TextView Title, TextView Filter, Place Where) {
    const StyledBox WhileItIsOpen;
    // Shell extensions of other makers run inside the dialog.
    const Module::FloatingPoint AsWeNeedIt;
    // "description|pattern" becomes two strings that end with NUL, and an empty one.
    std::wstring Pairs(Filter);
    for (wchar_t& C : Pairs)
        if (C == L'|') C = L'\0';
    Pairs += L'\0';
    const std::wstring TitleText(Title);
    std::wstring Path(32768, L'\0');
    OPENFILENAMEW Dialog{};
    Dialog.lStructSize = sizeof Dialog;
    Dialog.hwndOwner = BoxOwner();
    Dialog.lpstrFilter = Pairs.c_str();
    Dialog.lpstrFile = Path.data();
    Dialog.nMaxFile = static_cast<DWORD>(Path.size());
    Dialog.lpstrTitle = TitleText.c_str();
    // The current folder is the host's.
    Dialog.Flags = OFN_NOCHANGEDIR | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_EXPLORER;
    if (GetOpenFileNameW(&Dialog)) return std::wstring(Path.c_str());
    if (CommDlgExtendedError() != 0)
        Fail(ErrorNumber::InternalError, L"The file dialog could not be shown.", Where);
    return std::nullopt;
}

} // namespace Platform
