#include "endurance/driver.h"

#include <commdlg.h>

#include <dlgs.h>

#include <filesystem>
#include <fstream>

#include "tests/wine/support.h"

namespace Driver {

long Labels = 0;

using Support::ControlOf;

namespace {

std::wstring ImportFile;

BOOL CALLBACK CountLabel(HWND Window, LPARAM) {
    wchar_t Class[16] = L"";
    GetClassNameW(Window, Class, 16);
    if (lstrcmpiW(Class, L"Static") == 0) ++Labels;
    return TRUE;
}

// A box is answered again until it is gone, and counted once. Boxes are styled as the window is, so that
// their labels are of the same kind.
void CountLabelsOnce(HWND Box) {
    if (GetPropW(Box, L"counted") != nullptr) return;
    SetPropW(Box, L"counted", Box);
    CountLabels(Box);
}

// Posted, because a box that is asked from outside its own loop would end inside this call.
BOOL CALLBACK Answer(HWND Box, LPARAM) {
    wchar_t Class[16] = L"";
    GetClassNameW(Box, Class, 16);
    if (std::wstring(Class) != L"#32770" || !IsWindowVisible(Box)) return TRUE;
    const HWND Name = GetDlgItem(Box, cmb13) != nullptr ? GetDlgItem(Box, cmb13) : GetDlgItem(Box, edt1);
    if (Name != nullptr) SetWindowTextW(Name, ImportFile.c_str());
    if (Name == nullptr) CountLabelsOnce(Box);
    const WPARAM Button = GetDlgItem(Box, IDYES) != nullptr ? IDYES : IDOK;
    PostMessageW(Box, WM_COMMAND, Button,
                 reinterpret_cast<LPARAM>(GetDlgItem(Box, static_cast<int>(Button))));
    return TRUE;
}

void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) { EnumThreadWindows(GetCurrentThreadId(), Answer, 0); }

void Notify(HWND List, WORD Code) {
    SendMessageW(GetParent(List), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(List), Code),
                 reinterpret_cast<LPARAM>(List));
}

} // namespace

void CountLabels(HWND Window) { EnumChildWindows(Window, CountLabel, 0); }

void AnswerBoxes() { SetTimer(nullptr, 0, USER_TIMER_MINIMUM, Tick); }

void Type(HWND Frame, int Id, const std::wstring& Text) {
    SendMessageW(ControlOf(Frame, Id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Text.c_str()));
}

void Select(HWND Frame, int List, const std::wstring& Item) {
    const HWND Box = ControlOf(Frame, List);
    SendMessageW(Box, LB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(Item.c_str()));
    Notify(Box, LBN_SELCHANGE);
}

void DoubleClick(HWND Frame, int List, const std::wstring&) { Notify(ControlOf(Frame, List), LBN_DBLCLK); }

void Click(HWND Frame, int Id, const std::wstring&) { SendMessageW(ControlOf(Frame, Id), BM_CLICK, 0, 0); }

void TakeMenuEntry(HWND Frame, int Id, const std::wstring&) {
    SendMessageW(Frame, WM_COMMAND, static_cast<WPARAM>(Id), 0);
}

void WriteImportFile(HWND, int, const std::wstring& Line) {
    const std::filesystem::path Path = std::filesystem::absolute(L"import.txt");
    std::ofstream(Path, std::ios::binary) << std::string(Line.begin(), Line.end()) << "\r\n";
    ImportFile = Path.wstring();
}

} // namespace Driver
