#include "endurance/driver.h"

#include <commdlg.h>

#include <dlgs.h>

#include <filesystem>
#include <fstream>

#include "tests/wine/support.h"

namespace Driver {

using Support::ControlOf;

namespace {

const std::filesystem::path ImportFile = std::filesystem::absolute(L"import.txt");

// Posted, because a box that is asked from outside its own loop would end inside this call.
BOOL CALLBACK Answer(HWND Box, LPARAM) {
    wchar_t Class[16] = L"";
    GetClassNameW(Box, Class, 16);
    if (std::wstring(Class) != L"#32770" || !IsWindowVisible(Box)) return TRUE;
    for (const int Name : {edt1, cmb13}) SetDlgItemTextW(Box, Name, ImportFile.c_str());
    const int Button = GetDlgItem(Box, IDYES) != nullptr ? IDYES : IDOK;
    PostMessageW(Box, WM_COMMAND, static_cast<WPARAM>(Button),
                 reinterpret_cast<LPARAM>(GetDlgItem(Box, Button)));
    return TRUE;
}

void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) { EnumThreadWindows(GetCurrentThreadId(), Answer, 0); }

void Select(HWND List, const Edit& Made) {
    SendMessageW(List, LB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(Made.Item));
    // A slap message comes into its text box by a double click.
    for (const WORD Code : {LBN_SELCHANGE, LBN_DBLCLK})
        if (Code == LBN_SELCHANGE || Made.Button == ID_cmdSlapEdit)
            SendMessageW(GetParent(List), WM_COMMAND, MAKEWPARAM(Made.List, Code),
                         reinterpret_cast<LPARAM>(List));
}

} // namespace

void AnswerBoxes() { SetTimer(nullptr, 0, USER_TIMER_MINIMUM, Tick); }

void Do(HWND Frame, const Edit& Made) {
    if (Made.List != 0) Select(ControlOf(Frame, Made.List), Made);
    const std::wstring Text = Made.Text != nullptr ? Made.Text : L"";
    if (Made.TextBox != 0) SetWindowTextW(ControlOf(Frame, Made.TextBox), Text.c_str());
    if (Made.Button == ID_mnuMerrow300)
        std::ofstream(ImportFile, std::ios::binary) << std::string(Text.begin(), Text.end()) << "\r\n";
    if (const HWND Button = ControlOf(Frame, Made.Button))
        SendMessageW(Button, BM_CLICK, 0, 0);
    else
        SendMessageW(Frame, WM_COMMAND, static_cast<WPARAM>(Made.Button), 0);
}

} // namespace Driver
