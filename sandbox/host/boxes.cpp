#include "sandbox/host/boxes.h"

#include <set>
#include <string>

#include <windows.h>

#include "sandbox/host/journal.h"

namespace Boxes {
namespace {

constexpr int TextControl = 0xFFFF;
std::set<HWND> Seen;

BOOL CALLBACK Add(HWND Window, LPARAM Target) {
    wchar_t Class[16] = L"";
    GetClassNameW(Window, Class, 16);
    if (std::wstring(Class) == L"#32770" && IsWindowVisible(Window))
        reinterpret_cast<std::set<HWND>*>(Target)->insert(Window);
    return TRUE;
}

std::set<HWND> Open() {
    std::set<HWND> Found;
    EnumThreadWindows(GetCurrentThreadId(), Add, reinterpret_cast<LPARAM>(&Found));
    return Found;
}

} // namespace

void Watch() {
    std::set<HWND> Present = Open();
    for (const HWND Box : Present) {
        if (Seen.contains(Box)) continue;
        wchar_t Title[128] = L"", Text[2048] = L"";
        GetWindowTextW(Box, Title, 128);
        GetDlgItemTextW(Box, TextControl, Text, 2048);
        Journal::Write(std::wstring(L"box \"") + Title + L"\": " + Text);
    }
    Seen.swap(Present);
}

void CloseAll() {
    for (const HWND Box : Open()) {
        const WORD Default = LOWORD(SendMessageW(Box, DM_GETDEFID, 0, 0));
        PostMessageW(Box, WM_COMMAND, Default, 0);
    }
}

} // namespace Boxes
