#include "sandbox/host/plugin_area.h"

#include <windows.h>

#include "sandbox/host/actions.h"
#include "sandbox/host/loaded_plugin.h"

namespace {

void PaintArea(HWND Window) {
    PAINTSTRUCT Paint;
    const HDC Context = BeginPaint(Window, &Paint);
    RECT Caption{};
    GetClientRect(Window, &Caption);
    const Long Shown = Actions::ShownProfile();
    FillRect(Context, &Caption, GetSysColorBrush(COLOR_APPWORKSPACE));
    std::wstring Text = L"Double-click a profile to load the plug-in's interface.";
    for (const HostProfile& Profile : Actions::Configured().Profiles)
        if (Profile.Index == Shown) Text = LoadedPlugin::Described().Name + L"  -  " + Profile.Name;
    SelectObject(Context, GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(Context, TRANSPARENT);
    SetTextColor(Context, GetSysColor(COLOR_HIGHLIGHTTEXT));
    Caption.left += 8;
    Caption.bottom = CaptionHeight;
    DrawTextW(Context, Text.c_str(), -1, &Caption, DT_SINGLELINE | DT_VCENTER);
    EndPaint(Window, &Paint);
}

LRESULT CALLBACK AreaProcedure(HWND Window, UINT Message, WPARAM First, LPARAM Second) {
    if (Message == WM_PAINT) {
        PaintArea(Window);
        return 0;
    }
    return DefWindowProcW(Window, Message, First, Second);
}

} // namespace

void RegisterPluginArea() {
    WNDCLASSW Class{};
    Class.lpszClassName = PluginAreaClass;
    Class.lpfnWndProc = AreaProcedure;
    Class.hInstance = GetModuleHandleW(nullptr);
    Class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    RegisterClassW(&Class);
}
