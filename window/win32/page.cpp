// The pages of the tab control.
#include <windows.h>

#include <uxtheme.h>
#include <vssym32.h>

#include <algorithm>

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/win32/entry.h"
#include "host/win32/module.h"
#include "window/win32/native.h"

namespace Native {

namespace {

// What a page looks like, drawn once for its size: the inside of a tab may be a picture.
HBITMAP Background = nullptr;
HBRUSH BackgroundBrush = nullptr;

void Draw(HDC Context, const RECT& Area) noexcept {
    FillRect(Context, &Area, GetSysColorBrush(COLOR_3DFACE));
    const HTHEME Theme = OpenThemeData(WindowOf(ID_stMain), L"TAB");
    if (Theme == nullptr) return;
    DrawThemeBackground(Theme, Context, TABP_BODY, 0, &Area, nullptr);
    CloseThemeData(Theme);
}

void MakeBackground(HWND Page) noexcept {
    if (Background != nullptr) return;
    RECT Area{};
    GetClientRect(Page, &Area);
    const HDC Screen = GetDC(Page);
    const HDC Context = CreateCompatibleDC(Screen);
    Background = CreateCompatibleBitmap(Screen, std::max<int>(Area.right, 1), std::max<int>(Area.bottom, 1));
    const HGDIOBJ Before = SelectObject(Context, Background);
    Draw(Context, Area);
    SelectObject(Context, Before);
    DeleteDC(Context);
    ReleaseDC(Page, Screen);
    BackgroundBrush = CreatePatternBrush(Background);
}

void Erase(HWND Page, HDC Context) noexcept {
    MakeBackground(Page);
    RECT Area{};
    GetClientRect(Page, &Area);
    const HDC From = CreateCompatibleDC(Context);
    const HGDIOBJ Before = SelectObject(From, Background);
    BitBlt(Context, 0, 0, Area.right, Area.bottom, From, 0, 0, SRCCOPY);
    SelectObject(From, Before);
    DeleteDC(From);
}

// The scheme's colour for the text, and the brush that continues the page's background behind it.
LRESULT BrushBehind(HWND Page, UINT Message, HDC Context, HWND Control) noexcept {
    DefWindowProcW(Page, Message, reinterpret_cast<WPARAM>(Context), reinterpret_cast<LPARAM>(Control));
    MakeBackground(Page);
    POINT Corner{};
    MapWindowPoints(Control, Page, &Corner, 1);
    SetBrushOrgEx(Context, -Corner.x, -Corner.y, nullptr);
    SetBkMode(Context, TRANSPARENT);
    return reinterpret_cast<LRESULT>(BackgroundBrush);
}

// A text of several lines that ends with "..." where it is cut; the system's labels do that for one line.
void DrawReason(const DRAWITEMSTRUCT& Label) noexcept {
    wchar_t Text[1024] = L"";
    GetWindowTextW(Label.hwndItem, Text, static_cast<int>(std::size(Text)));
    RECT Area = Label.rcItem;
    const HGDIOBJ Before = SelectObject(Label.hDC, Font());
    BrushBehind(GetParent(Label.hwndItem), WM_CTLCOLORSTATIC, Label.hDC, Label.hwndItem);
    FillRect(Label.hDC, &Area, BackgroundBrush);
    DrawTextW(Label.hDC, Text, -1, &Area, DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX | DT_END_ELLIPSIS);
    SelectObject(Label.hDC, Before);
}

LRESULT CALLBACK PageProcedure(HWND Page, UINT Message, WPARAM W, LPARAM L) noexcept {
    const Module::Entry Guard;
    switch (Message) {
    case WM_COMMAND: OnCommand(W, L); return 0;
    case WM_NOTIFY: return OnNotify(reinterpret_cast<const NMHDR*>(L));
    case WM_CONTEXTMENU: OnContextMenu(reinterpret_cast<HWND>(W), L); return 0;
    case WM_ERASEBKGND: Erase(Page, reinterpret_cast<HDC>(W)); return 1;
    case WM_PRINTCLIENT: Erase(Page, reinterpret_cast<HDC>(W)); return 0;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
        return BrushBehind(Page, Message, reinterpret_cast<HDC>(W), reinterpret_cast<HWND>(L));
    case WM_DRAWITEM: DrawReason(*reinterpret_cast<const DRAWITEMSTRUCT*>(L)); return TRUE;
    default: return DefWindowProcW(Page, Message, W, L);
    }
}

} // namespace

bool RegisterPageClass() noexcept {
    WNDCLASSEXW Class{};
    Class.cbSize = sizeof Class;
    Class.lpfnWndProc = PageProcedure;
    Class.hInstance = Module::Instance();
    Class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    Class.lpszClassName = PageClass;
    return RegisterClassExW(&Class) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

void UnregisterPageClass() noexcept { UnregisterClassW(PageClass, Module::Instance()); }

void ShowPage(int Page) noexcept {
    const HWND Focus = GetFocus();
    int Number = 0;
    for (const ControlRow& Row : Controls())
        if (Row.What == Kind::Page) ShowWindow(WindowOf(Row.Id), Number++ == Page ? SW_SHOWNA : SW_HIDE);
    // A hidden box that keeps the focus would store what is typed, and nobody would see it.
    if (IsChild(FrameWindow(), Focus) && !IsWindowVisible(Focus)) SetFocus(WindowOf(ID_stMain));
}

void CutPageHole() noexcept {
    RECT Tabs{}, Page{};
    GetWindowRect(WindowOf(ID_stMain), &Tabs);
    GetWindowRect(WindowOf(ID_pageNames), &Page);
    OffsetRect(&Page, -Tabs.left, -Tabs.top);
    const HRGN Region = CreateRectRgn(0, 0, Tabs.right - Tabs.left, Tabs.bottom - Tabs.top);
    const HRGN Hole = CreateRectRgnIndirect(&Page);
    CombineRgn(Region, Region, Hole, RGN_DIFF);
    DeleteObject(Hole);
    SetWindowRgn(WindowOf(ID_stMain), Region, TRUE); // the region is the system's from here on
}

void OnLookChanged(UINT Message, WPARAM W, LPARAM L) noexcept {
    Trapped(L"Appearance", mdlVNT::CurrentProfile, [&] {
        ForgetPageBackground();
        FitTeamColumn(ID_mfg);
        FitGridColumns(ID_mfg);
        // The system tells only top-level windows.
        for (const ControlRow& Row : Controls()) Send(Row.Id, Message, W, L);
        RedrawWindow(FrameWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    });
}

void ForgetPageBackground() noexcept {
    if (BackgroundBrush != nullptr) DeleteObject(BackgroundBrush);
    if (Background != nullptr) DeleteObject(Background);
    BackgroundBrush = nullptr;
    Background = nullptr;
}

} // namespace Native
