// Pop-up menus.
#include <algorithm>
#include <utility>

#include "window/win32/native.h"

namespace {

POINT MenuPoint{};

class OwnedMenu {
public:
    OwnedMenu() noexcept : Handle(CreatePopupMenu()) {}
    ~OwnedMenu() {
        if (Handle != nullptr) DestroyMenu(Handle); // with its sub-menus
    }
    OwnedMenu(const OwnedMenu&) = delete;
    OwnedMenu& operator=(const OwnedMenu&) = delete;
    HMENU Get() const noexcept { return Handle; }
    HMENU Release() noexcept { return std::exchange(Handle, nullptr); }

private:
    HMENU Handle;
};

// A menu takes "&" for a shortcut and a tab for a column of its own.
std::wstring Displayed(TextView Caption) {
    std::wstring Text;
    for (const wchar_t Letter : Caption) {
        if (Letter == L'&') Text += L'&';
        Text += Letter == L'\t' ? L' ' : Letter;
    }
    return Text;
}

void FillMenu(HMENU Menu, const std::vector<MenuEntry>& Entries);

void AppendEntry(HMENU Menu, const MenuEntry& Entry) {
    const std::wstring Text = Displayed(Entry.Caption);
    if (!Entry.Items.empty()) {
        OwnedMenu Sub;
        FillMenu(Sub.Get(), Entry.Items);
        if (AppendMenuW(Menu, MF_POPUP, reinterpret_cast<UINT_PTR>(Sub.Get()), Text.c_str())) Sub.Release();
    } else {
        const UINT Look = Entry.IsSeparator ? MF_SEPARATOR : Entry.IsChecked ? MF_CHECKED : MF_STRING;
        AppendMenuW(Menu, Look, static_cast<UINT_PTR>(Entry.Id), Text.c_str());
    }
}

void FillMenu(HMENU Menu, const std::vector<MenuEntry>& Entries) {
    for (const MenuEntry& Entry : Entries) AppendEntry(Menu, Entry);
}

} // namespace

void Native::SetMenuPoint(POINT Screen) noexcept { MenuPoint = Screen; }

void Native::SetMenuPointBelow(const RECT& Box) noexcept {
    MenuPoint = {Box.left + Measure::Scaled(16), std::min(Box.bottom, Box.top + Measure::Scaled(24))};
}

int PopUpMenu(const std::vector<MenuEntry>& Entries) {
    const OwnedMenu Menu;
    FillMenu(Menu.Get(), Entries);
    return static_cast<int>(TrackPopupMenu(Menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, MenuPoint.x,
                                           MenuPoint.y, 0, Native::FrameWindow(), nullptr));
}
