// The dialog for one line of text, in the font of the system's messages.
#include "host/win32/input_box.h"

#include <cstring>
#include <vector>

#include "host/win32/module.h"

namespace {

enum ControlId : WORD { PromptId = 100, EditId = 101 };

// The system's classes by their atoms, as dialog templates name them.
enum ControlClass : WORD { ButtonClass = 0x0080, EditClass = 0x0081, StaticClass = 0x0082 };

// A dialog template in memory: words, strings, and controls on four-byte boundaries.
class Template {
public:
    Template(TextView Title, short Width, short Height, WORD Controls) {
        DLGTEMPLATE Header{};
        Header.style = DS_MODALFRAME | DS_SETFONT | WS_POPUP | WS_CAPTION | WS_SYSMENU;
        Header.cdit = Controls;
        Header.cx = Width;
        Header.cy = Height;
        Append(&Header, sizeof Header);
        Word(0); // no menu
        Word(0); // the dialog class
        Text(Title);
        AppendFont();
    }

    void Control(ControlClass Class, WORD Id, DWORD Style, TextView Caption, const RECT& Place) {
        while (Bytes.size() % 4 != 0) Bytes.push_back(0);
        DLGITEMTEMPLATE Item{};
        Item.style = Style | WS_CHILD | WS_VISIBLE;
        Item.x = static_cast<short>(Place.left);
        Item.y = static_cast<short>(Place.top);
        Item.cx = static_cast<short>(Place.right - Place.left);
        Item.cy = static_cast<short>(Place.bottom - Place.top);
        Item.id = Id;
        Append(&Item, sizeof Item);
        Word(0xFFFF);
        Word(Class);
        Text(Caption);
        Word(0); // no creation data
    }

    const DLGTEMPLATE* Get() const { return reinterpret_cast<const DLGTEMPLATE*>(Bytes.data()); }

private:
    // As message boxes and the plug-in's window have it.
    void AppendFont() {
        NONCLIENTMETRICSW Metrics{};
        Metrics.cbSize = sizeof Metrics;
        const bool Known = SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof Metrics, &Metrics, 0);
        const HDC Screen = GetDC(nullptr);
        const int Points = MulDiv(-Metrics.lfMessageFont.lfHeight, 72, GetDeviceCaps(Screen, LOGPIXELSY));
        ReleaseDC(nullptr, Screen);
        Word(static_cast<WORD>(Known && Points > 0 ? Points : 8));
        Text(Known ? Metrics.lfMessageFont.lfFaceName : L"MS Shell Dlg");
    }
    void Append(const void* Data, std::size_t Size) {
        const std::size_t At = Bytes.size();
        Bytes.resize(At + Size);
        std::memcpy(Bytes.data() + At, Data, Size);
    }
    void Word(WORD Value) { Append(&Value, sizeof Value); }
    void Text(TextView Value) {
        Append(Value.data(), Value.size() * sizeof(wchar_t));
        Word(0);
    }

    std::vector<unsigned char> Bytes;
};

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
    Template Dialog(Title, 240, 74, 4);
    Dialog.Control(StaticClass, PromptId, SS_LEFT | SS_NOPREFIX, Prompt, {7, 7, 233, 27});
    Dialog.Control(EditClass, EditId, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, L"", {7, 30, 233, 44});
    Dialog.Control(ButtonClass, IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, L"OK", {127, 53, 177, 67});
    Dialog.Control(ButtonClass, IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP, L"Cancel", {183, 53, 233, 67});
    std::wstring Answer;
    DialogBoxIndirectParamW(Module::Instance(), Dialog.Get(), Owner, DialogProcedure,
                            reinterpret_cast<LPARAM>(&Answer));
    return Answer;
}
