// The message loop of the tests, which also sees to the boxes that the plug-in opens.
#include "tests/wine/support.h"

#include <algorithm>

namespace Support {
namespace {

constexpr UINT WatchMilliseconds = 20;

struct Watched {
    bool IsClosing = true;
    std::vector<HWND> Open;
    std::vector<std::wstring> Titles;
    const std::function<bool()>* Condition = nullptr;
    ULONGLONG Deadline = 0;
    bool IsMet = false;
} Watch;

BOOL CALLBACK AddBox(HWND Window, LPARAM Found) {
    wchar_t Class[16] = L"";
    GetClassNameW(Window, Class, 16);
    if (std::wstring(Class) == L"#32770" && IsWindowVisible(Window))
        reinterpret_cast<std::vector<HWND>*>(Found)->push_back(Window);
    return TRUE;
}

void LookForBoxes() {
    std::vector<HWND> Now;
    EnumThreadWindows(GetCurrentThreadId(), AddBox, reinterpret_cast<LPARAM>(&Now));
    for (const HWND Box : Now) {
        if (std::find(Watch.Open.begin(), Watch.Open.end(), Box) != Watch.Open.end()) continue;
        wchar_t Title[128] = L"";
        GetWindowTextW(Box, Title, 128);
        Watch.Titles.push_back(Title);
    }
    Watch.Open = Now;
}

bool IsOver() {
    if (Watch.Condition && !Watch.IsMet) Watch.IsMet = (*Watch.Condition)();
    return Watch.IsMet || GetTickCount64() > Watch.Deadline;
}

// Ticks behind a modal box, too, and ends the box when there is nothing left to wait for.
void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
    LookForBoxes();
    if (Watch.IsClosing || IsOver())
        for (const HWND Box : Watch.Open) PostMessageW(Box, WM_COMMAND, IDOK, 0);
}

} // namespace

bool PumpUntil(const std::function<bool()>& Condition, unsigned Milliseconds) {
    Watch.Condition = &Condition;
    Watch.Deadline = GetTickCount64() + Milliseconds;
    Watch.IsMet = false;
    const UINT_PTR Timer = SetTimer(nullptr, 0, WatchMilliseconds, Tick);
    while (!IsOver()) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, WatchMilliseconds, QS_ALLINPUT);
        for (MSG Message; PeekMessageW(&Message, nullptr, 0, 0, PM_REMOVE);) {
            TranslateMessage(&Message);
            DispatchMessageW(&Message);
        }
    }
    KillTimer(nullptr, Timer);
    Watch.Condition = nullptr;
    return Watch.IsMet;
}

void CloseBoxes(bool AtOnce) { Watch.IsClosing = AtOnce; }

std::vector<std::wstring>& BoxesSeen() { return Watch.Titles; }

} // namespace Support
