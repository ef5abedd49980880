#include "window/win32/native.h"

namespace Native {

namespace {

HHOOK Hook = nullptr;

bool MovesTheFocus(const MSG& Message) noexcept {
    switch (Message.wParam) {
    case VK_TAB: return GetKeyState(VK_CONTROL) >= 0;
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN: // among option buttons; lists and edits use the arrows themselves
        return (SendMessageW(Message.hwnd, WM_GETDLGCODE, 0, 0) & DLGC_WANTARROWS) == 0;
    default: return false;
    }
}

void OnKeyDown(MSG& Message) noexcept {
    const HWND Frame = FrameWindow();
    if (Frame == nullptr || !IsChild(Frame, Message.hwnd)) return;
    if (Message.wParam == VK_RETURN)
        // Posted: a box that the handler shows must not open inside the host's GetMessage.
        PostMessageW(Frame, WM_COMMAND, IDOK, 0);
    else if (!MovesTheFocus(Message) || !IsDialogMessageW(Frame, &Message))
        return;
    else
        ScrollTo(GetFocus());
    Message.message = WM_NULL;
}

// The message loop is the host's and knows nothing of our Tab order: we look at its messages as it takes
// them.
LRESULT CALLBACK OnMessageTaken(int Code, WPARAM Taken, LPARAM L) noexcept {
    auto& Message = *reinterpret_cast<MSG*>(L);
    if (Code == HC_ACTION && Taken == PM_REMOVE && Message.message == WM_KEYDOWN) OnKeyDown(Message);
    return CallNextHookEx(Hook, Code, Taken, L);
}

} // namespace

void StartKeyboard() noexcept {
    if (Hook == nullptr)
        Hook = SetWindowsHookExW(WH_GETMESSAGE, OnMessageTaken, nullptr, GetCurrentThreadId());
}

void StopKeyboard() noexcept {
    if (Hook != nullptr) UnhookWindowsHookEx(Hook);
    Hook = nullptr;
}

} // namespace Native
