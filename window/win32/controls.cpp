// Labels, boxes, buttons, the tab control, timers and the pointer on the system's own.
#include <set>

#include "window/events.h"
#include "window/win32/native.h"

using Native::Send;

namespace {

std::set<int> RunningTimers;

std::wstring WindowText(int Id) {
    const HWND Window = Native::WindowOf(Id);
    if (Window == nullptr) return {};
    std::wstring Text(static_cast<std::size_t>(GetWindowTextLengthW(Window)) + 1, L'\0');
    Text.resize(static_cast<std::size_t>(GetWindowTextW(Window, Text.data(), static_cast<int>(Text.size()))));
    return Text;
}

void SetWindowTextOf(int Id, TextView Text) {
    if (WindowText(Id) == Text) return; // nothing to repaint
    const Native::Quiet WhileItChanges;
    Send(Id, WM_SETTEXT, 0, std::wstring(Text).c_str());
    InvalidateRect(Native::WindowOf(Id), nullptr, FALSE); // one that the page draws does not see to it
}

} // namespace

std::wstring Label::Text() const { return WindowText(Id); }
void Label::SetText(TextView Text) const { SetWindowTextOf(Id, Text); }

std::wstring TextBox::Text() const { return WindowText(Id); }
void TextBox::SetText(TextView Text) const { SetWindowTextOf(Id, Text); }
void TextBox::Edit() const {
    const int End = GetWindowTextLengthW(Native::WindowOf(Id));
    SetFocus(Native::WindowOf(Id));
    Send(Id, EM_SETSEL, static_cast<WPARAM>(End), End);
}

bool Button::Enabled() const { return IsWindowEnabled(Native::WindowOf(Id)) != FALSE; }

void Button::Enable(bool On) const {
    const HWND Window = Native::WindowOf(Id);
    // A disabled control that keeps the focus swallows every key.
    if (!On && Window != nullptr && GetFocus() == Window)
        SetFocus(GetNextDlgTabItem(Native::FrameWindow(), Window, TRUE));
    EnableWindow(Window, On);
}

bool CheckBox::Checked() const { return Send(Id, BM_GETCHECK) == BST_CHECKED; }
void CheckBox::Check(bool On) const { Send(Id, BM_SETCHECK, On ? BST_CHECKED : BST_UNCHECKED); }

int OptionGroup::Chosen() const {
    for (int Element = 0; Element < Size; ++Element)
        if (Send(Id + Element, BM_GETCHECK) == BST_CHECKED) return Element;
    return -1;
}

void OptionGroup::Choose(int Element) const {
    for (int Other = 0; Other < Size; ++Other)
        Send(Id + Other, BM_SETCHECK, Other == Element ? BST_CHECKED : BST_UNCHECKED);
}

void TabControl::Turn(int Page) const {
    Send(Id, TCM_SETCURSEL, static_cast<WPARAM>(Page));
    Native::ShowPage(Page);
}

bool Timer::Start(Long Milliseconds) const {
    const HWND Window = Native::FrameWindow();
    if (Window == nullptr) return false;
    RunningTimers.insert(Id);
    if (SetTimer(Window, static_cast<UINT_PTR>(Id), static_cast<UINT>(Milliseconds), nullptr) != 0)
        return true;
    RunningTimers.erase(Id);
    return false;
}

void Timer::Stop() const {
    RunningTimers.erase(Id);
    if (const HWND Window = Native::FrameWindow()) KillTimer(Window, static_cast<UINT_PTR>(Id));
}

// A tick may still lie in the queue when its timer is stopped.
void Native::OnTimer(WPARAM Id) noexcept {
    if (RunningTimers.count(static_cast<int>(Id)) != 0) Raise(static_cast<int>(Id), Event::Tick);
}

void Native::ForgetTimers() noexcept { RunningTimers.clear(); }

Hourglass::Hourglass() noexcept
    : Previous(reinterpret_cast<std::intptr_t>(SetCursor(LoadCursorW(nullptr, IDC_WAIT)))) {}

Hourglass::~Hourglass() { SetCursor(reinterpret_cast<HCURSOR>(Previous)); }
