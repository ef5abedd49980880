// The keyboard: our keys reach our controls although the message loop is the host's.
//
// A host may translate keys before they arrive: Delete may be an entry of its menu, Esc may close it, the
// arrows may move among its own controls. A hook looks at its messages as it takes them, keeps from it the
// keys that our focused control needs, and posts them to the frame: a box that a key opens must not open
// inside the host's GetMessage.
#include <algorithm>

#include "host/win32/entry.h"
#include "host/win32/open_box.h"
#include "window/events.h"
#include "window/win32/native.h"

namespace Native {

namespace {

HHOOK Hook = nullptr;

// Alone, with Shift or with Ctrl. Everything else (Alt, F10, the other function keys) is the host's.
constexpr WPARAM KeptKeys[] = {VK_TAB,  VK_RETURN, VK_ESCAPE, VK_LEFT, VK_RIGHT,  VK_UP,     VK_DOWN,
                               VK_HOME, VK_END,    VK_PRIOR,  VK_NEXT, VK_INSERT, VK_DELETE, VK_BACK};
constexpr TextView EditKeys = L"ACVXZ"; // with Ctrl, in a text box

bool IsDown(int Key) noexcept { return GetKeyState(Key) < 0; }

bool IsKept(const MSG& Message) noexcept {
    const WPARAM Key = Message.wParam;
    if (Message.message == WM_SYSKEYDOWN) return Key == VK_F10 && IsDown(VK_SHIFT) && !IsDown(VK_MENU);
    if (Message.message != WM_KEYDOWN) return false;
    if (std::find(std::begin(KeptKeys), std::end(KeptKeys), Key) != std::end(KeptKeys)) return true;
    if (!IsDown(VK_CONTROL)) return Key == VK_F5;
    const std::optional<Kind> Focused = KindOf(IdOf(Message.hwnd));
    if (Key == 'C' && (Focused == Kind::Grid || Focused == Kind::List)) return true;
    if (Focused == Kind::Grid) return Key >= '1' && Key <= '9';
    return Focused == Kind::Text && EditKeys.find(static_cast<wchar_t>(Key)) != TextView::npos;
}

// Some controls swallow the wheel although they have nothing to scroll; the window may have.
bool TurnsWheelInVain(const MSG& Message) noexcept {
    return Message.message == WM_MOUSEWHEEL && IsChild(FrameWindow(), Message.hwnd) &&
           (GetWindowLongW(Message.hwnd, GWL_STYLE) & WS_VSCROLL) == 0;
}

// Changes what the host is about to get.
void Divert(MSG& Message) noexcept {
    if (IsChild(FrameWindow(), Message.hwnd) && IsKept(Message) && !MenuIsOpen() &&
        PostMessageW(FrameWindow(), KeyOfOurs, Message.wParam, Message.lParam))
        Message.message = WM_NULL;
    else if (TurnsWheelInVain(Message))
        Message.hwnd = FrameWindow();
    else if (Message.message == WM_MOUSEMOVE && IdOf(Message.hwnd) == ID_mfg)
        TrackCell({static_cast<short>(LOWORD(Message.lParam)), static_cast<short>(HIWORD(Message.lParam))});
}

// Only a message that is really taken counts: a host may look at one several times before.
LRESULT CALLBACK OnMessageTaken(int Code, WPARAM Taken, LPARAM L) noexcept {
    const Module::Entry Guard;
    if (Code == HC_ACTION && (Taken & PM_REMOVE) != 0) Divert(*reinterpret_cast<MSG*>(L));
    return CallNextHookEx(Hook, Code, Taken, L);
}

void TurnPage(int Step) noexcept {
    const int Pages = static_cast<int>(Send(ID_stMain, TCM_GETITEMCOUNT));
    const int Shown = static_cast<int>(Send(ID_stMain, TCM_GETCURSEL));
    stMain.Turn((Shown + Step + Pages) % Pages);
}

// The keys that are more than a key for the focused control.
struct ShortcutRow {
    WPARAM Key;
    bool WithControl;
    void (*Run)(int Focused);
};
constexpr ShortcutRow Shortcuts[] = {
    {VK_RETURN, false, OnEnter},
    {VK_F5, false, [](int) { Raise(ID_mnuRefresh, Event::Click); }},
    {VK_F10, false, [](int) { OnContextMenu(GetFocus(), ByKeyboard); }},
    {VK_TAB, true, [](int) { TurnPage(IsDown(VK_SHIFT) ? -1 : 1); }},
    {VK_NEXT, true, [](int) { TurnPage(1); }},
    {VK_PRIOR, true, [](int) { TurnPage(-1); }},
};

bool MovesTheFocus(const MSG& Message) noexcept {
    switch (Message.wParam) {
    case VK_TAB: return true;
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN: // among option buttons; lists and edits use the arrows themselves
        return (SendMessageW(Message.hwnd, WM_GETDLGCODE, 0, 0) & DLGC_WANTARROWS) == 0;
    default: return false;
    }
}

// Past the last control and before the first the focus goes to the host's next one, or to its window.
bool LeavesFrame(HWND Focus) noexcept {
    const bool Back = IsDown(VK_SHIFT);
    const HWND Root = GetAncestor(FrameWindow(), GA_ROOT);
    const HWND First = GetNextDlgTabItem(FrameWindow(), nullptr, FALSE);
    const HWND AtEnd = Back ? Focus : GetNextDlgTabItem(FrameWindow(), Focus, FALSE);
    if (AtEnd != First || Root == FrameWindow()) return false;
    const HWND Next = GetNextDlgTabItem(Root, Focus, Back);
    SetFocus(Next != nullptr && !IsChild(FrameWindow(), Next) ? Next : Root);
    return true;
}

void PassOn(MSG Message) noexcept {
    if (Message.wParam == VK_TAB && LeavesFrame(Message.hwnd)) return;
    if (MovesTheFocus(Message) && IsDialogMessageW(FrameWindow(), &Message)) return ScrollTo(GetFocus());
    TranslateMessage(&Message);
    DispatchMessageW(&Message);
}

} // namespace

void OnKey(WPARAM Key, LPARAM Flags) noexcept {
    const HWND Focus = GetFocus();
    if (!IsChild(FrameWindow(), Focus)) return;
    const bool Repeats = (HIWORD(Flags) & KF_REPEAT) != 0;
    const int Focused = IdOf(Focus);
    if (Key == 'C' && KindOf(Focused) != Kind::Text) return CopySelected(Focused);
    for (const ShortcutRow& Row : Shortcuts) {
        if (Row.Key != Key || Row.WithControl != IsDown(VK_CONTROL)) continue;
        if (!Repeats) Row.Run(Focused);
        return;
    }
    if (Key != VK_DELETE || KindOf(Focused) != Kind::List)
        PassOn({.hwnd = Focus, .message = WM_KEYDOWN, .wParam = Key, .lParam = Flags, .time = 0, .pt = {}});
    else if (!Repeats) // a key that is held down must not empty a list
        Raise(Focused, Event::Delete);
}

void StartKeyboard() noexcept {
    if (Hook == nullptr)
        Hook = SetWindowsHookExW(WH_GETMESSAGE, OnMessageTaken, nullptr, GetCurrentThreadId());
}

void StopKeyboard() noexcept {
    if (Hook != nullptr) UnhookWindowsHookEx(Hook);
    Hook = nullptr;
}

} // namespace Native
