// Result boxes, questions, dialogs, and the error boxes that the message loop shows.
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

// --- Result boxes and questions

HWND OwnerChild = nullptr;

HWND Owner() {
    return OwnerChild != nullptr && IsWindow(OwnerChild) ? GetAncestor(OwnerChild, GA_ROOT) : nullptr;
}

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
    const OpenBox Open{Owner()};
};

int Show(HWND BoxOwner, TextView Text, TextView Title, UINT Style) {
    const StyledBox WhileItIsOpen;
    return MessageBoxW(BoxOwner, std::wstring(Text).c_str(), std::wstring(Title).c_str(), Style);
}

// --- Error boxes, shown by a hidden window out of the message loop

constexpr const wchar_t* PosterClass = L"qrvVNT.ErrorBoxes";
constexpr UINT ShowErrorBox = WM_APP;

struct ErrorBox {
    std::wstring Text;
    std::wstring Title;
};

HWND Poster = nullptr;
bool BoxIsDue = false; // one waits or is open
ErrorBox Due;

LRESULT CALLBACK PosterProcedure(HWND Window, UINT Message, WPARAM W, LPARAM L) noexcept {
    const Module::Entry Guard;
    if (Message != ShowErrorBox) return DefWindowProcW(Window, Message, W, L);
    try {
        const ErrorBox Shown = std::move(Due);
        // No owner: the host stays usable while nobody is there to close the box.
        Show(nullptr, Shown.Text, Shown.Title, MB_OK | MB_ICONERROR);
    } catch (...) { // NOLINT(bugprone-empty-catch): out of memory; the error has been logged
    }
    BoxIsDue = false;
    return 0;
}

bool MakePoster() {
    if (Poster != nullptr) return true;
    WNDCLASSEXW Class{};
    Class.cbSize = sizeof Class;
    Class.lpfnWndProc = PosterProcedure;
    Class.hInstance = Module::Instance();
    Class.lpszClassName = PosterClass;
    RegisterClassExW(&Class);
    Poster =
        CreateWindowExW(0, PosterClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, Class.hInstance, nullptr);
    return Poster != nullptr;
}

} // namespace

void SetOwner(std::intptr_t Window) noexcept { OwnerChild = reinterpret_cast<HWND>(Window); }

void CloseErrorBoxes() noexcept {
    if (Poster == nullptr) return;
    DestroyWindow(std::exchange(Poster, nullptr));
    UnregisterClassW(PosterClass, Module::Instance());
    BoxIsDue = false;
}

void ShowBox(BoxIcon Icon, TextView Text, TextView Title) {
    Show(Owner(), Text, Title, MB_OK | IconOf(Icon));
}

bool AskYesNo(TextView Text, TextView Title, Answer Default) {
    const UINT DefaultButton = Default == Answer::Yes ? MB_DEFBUTTON1 : MB_DEFBUTTON2;
    return Show(Owner(), Text, Title, MB_YESNO | MB_ICONQUESTION | DefaultButton) == IDYES;
}

Answer AskYesNoCancel(TextView Text, TextView Title) {
    const int Pressed = Show(Owner(), Text, Title, MB_YESNOCANCEL | MB_ICONQUESTION | MB_DEFBUTTON3);
    return Pressed == IDYES ? Answer::Yes : Pressed == IDNO ? Answer::No : Answer::Cancel;
}

std::wstring AskText(TextView Prompt, TextView Title) {
    const StyledBox WhileItIsOpen;
    return InputBox(Owner(), Prompt, Title);
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
    Dialog.hwndOwner = Owner();
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

void PostErrorBox(TextView Text, TextView Title, bool) noexcept {
    if (BoxIsDue) return;
    try {
        if (!MakePoster()) return;
        Due = {std::wstring(Text), std::wstring(Title)};
        BoxIsDue = PostMessageW(Poster, ShowErrorBox, 0, 0) != FALSE;
    } catch (...) { // NOLINT(bugprone-empty-catch): out of memory; the error has been logged
    }
}

} // namespace Platform
