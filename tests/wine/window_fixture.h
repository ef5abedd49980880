// The real window in a host's window, driven by mouse and keyboard as the administrator does it. Game and
// files are those in memory, so that what a click did can be read off at once.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include "plugin/lifecycle.h"
#include "tests/fakes/server.h"
#include "tests/wine/input.h"
#include "window/controls.h"
#include "window/frmVNT.h"

inline constexpr int Wide = 640, Tall = 480;

// --- The window

inline std::vector<int> HostCommands; // menu entries and accelerators

inline LRESULT CALLBACK HostProcedure(HWND Window, UINT Message, WPARAM W, LPARAM L) {
    if (Message == WM_COMMAND && L == 0) HostCommands.push_back(LOWORD(W));
    return DefWindowProcW(Window, Message, W, L);
}

inline HWND Found;
inline int Sought;
inline BOOL CALLBACK IsIt(HWND Window, LPARAM) {
    if (GetDlgCtrlID(Window) == Sought) Found = Window;
    return Found == nullptr;
}

class RealWindow : public testing::Test {
protected:
    void SetUp() override {
        WNDCLASSW Class{};
        Class.lpfnWndProc = HostProcedure;
        Class.lpszClassName = L"TestHost";
        Class.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_3DFACE + 1);
        RegisterClassW(&Class);
        Host = CreateWindowW(L"TestHost", L"Host", WS_POPUP | WS_VISIBLE, 0, 0, Wide, Tall + 30, nullptr,
                             nullptr, nullptr, nullptr);
        Box =
            CreateWindowW(L"Edit", L"", WS_CHILD | WS_VISIBLE, 0, 0, 80, 20, Host, nullptr, nullptr, nullptr);
        TakeForeground(Host);
        SetFocus(Box);
        Game.Join(3, "Bob", "10.0.0.7", 1, 50);
        Game.Join(12, "Rita", "10.0.0.10", 2, 140);
        Open();
        Outside::Journal.clear();
    }
    void TearDown() override {
        frmVNT::Unload();
        DestroyWindow(Host);
        InMenu = nullptr;
    }
    void Open() {
        Pdat Data = HostData();
        const Size PerInch = Frame::PixelsPerInch();
        Data[PdatElement::AreaWidth] = {L"", (Wide * 1440 + PerInch.Width - 1) / PerInch.Width, true};
        Data[PdatElement::AreaHeight] = {L"", (Tall * 1440 + PerInch.Height - 1) / PerInch.Height, true};
        Load(TestProfile, reinterpret_cast<std::intptr_t>(Host), Data);
        Pump();
    }
    HWND At(int Id) const {
        Found = nullptr;
        Sought = Id;
        EnumChildWindows(Host, IsIt, 0);
        EXPECT_NE(Found, nullptr) << Id;
        return Found;
    }
    HWND Header() const { return ListView_GetHeader(At(ID_mfg)); }
    void ClickRow(int Row, DWORD Down, DWORD Up) const {
        RECT Area{};
        ListView_GetItemRect(At(ID_mfg), Row, &Area, LVIR_BOUNDS);
        ClickAt(MiddleOf(At(ID_mfg), Area), Down, Up);
    }
    void RightClickRow(int Row) const { ClickRow(Row, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP); }
    void ClickColumn(int Column) const {
        RECT Area{};
        Header_GetItemRect(Header(), Column, &Area);
        ClickAt(MiddleOf(Header(), Area), MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
        Pump();
    }
    // The next menu is looked for while it opens; Do runs in it.
    void WithMenu(std::function<void(HMENU)> Do) const {
        InMenu = std::move(Do);
        SetTimer(Host, 99, 30, LookForMenu);
    }
    std::wstring Cell(int Row, int Column) const {
        wchar_t Text[200] = L"";
        LVITEMW Item{};
        Item.iSubItem = Column;
        Item.pszText = Text;
        Item.cchTextMax = 200;
        SendMessageW(At(ID_mfg), LVM_GETITEMTEXTW, static_cast<WPARAM>(Row), reinterpret_cast<LPARAM>(&Item));
        return Text;
    }
    int ColumnsWidth() const {
        int Sum = 0;
        for (int Column = 0; Column < 4; ++Column) Sum += ListView_GetColumnWidth(At(ID_mfg), Column);
        return Sum;
    }
    int SelectedRow() const { return ListView_GetNextItem(At(ID_mfg), -1, LVNI_SELECTED); }

    Server Game;
    HWND Host = nullptr, Box = nullptr;
};
