// A value that is longer than its label shows whole under the mouse.
#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "window/win32/native.h"

namespace Native {

namespace {

HWND Tooltips = nullptr;
std::wstring ShownText; // the system keeps a pointer to it

bool Fits(HWND Label, const std::wstring& Text) {
    RECT Room{};
    GetClientRect(Label, &Room);
    return Measure::TextWidth(Text) <= Room.right ||
           (IdOf(Label) == ID_lblReason &&
            Measure::TextHeight(Text, static_cast<int>(Room.right)) <= Room.bottom);
}

void AddTool(HWND Label) noexcept {
    TOOLINFOW Tool{};
    Tool.cbSize = TTTOOLINFOW_V1_SIZE;
    Tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    Tool.hwnd = GetParent(Label);
    Tool.uId = reinterpret_cast<UINT_PTR>(Label);
    Tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(Tooltips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&Tool));
}

} // namespace

void StartTooltips(HWND Frame) noexcept {
    Tooltips =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0,
                        0, 0, 0, Frame, nullptr, nullptr, nullptr);
    if (Tooltips == nullptr) return;
    SendMessageW(Tooltips, TTM_SETMAXTIPWIDTH, 0, Measure::Scaled(400));
    for (const ControlRow& Row : Controls())
        if (Row.What == Kind::Value) AddTool(WindowOf(Row.Id));
}

void StopTooltips() noexcept {
    if (Tooltips != nullptr) DestroyWindow(Tooltips);
    Tooltips = nullptr;
}

void OnTooltip(const NMHDR* Header) noexcept {
    Trapped(L"Tooltip", mdlVNT::CurrentProfile, [&] {
        // The system hands out its own structure for us to write the text into.
        auto* Wanted = const_cast<NMTTDISPINFOW*>(reinterpret_cast<const NMTTDISPINFOW*>(Header));
        const auto Label = reinterpret_cast<HWND>(Header->idFrom);
        ShownText = ::Label{IdOf(Label)}.Text();
        if (Fits(Label, ShownText)) ShownText.clear();
        Wanted->lpszText = ShownText.data();
    });
}

} // namespace Native
