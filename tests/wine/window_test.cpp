// The real window: its place, mouse, refresh, long work, and how it goes.
#include "host/win32/boxes.h"
#include "tests/wine/window_fixture.h"

namespace Platform {
// The boxes are recorded, not shown: none needs an owner.
void SetOwner(std::intptr_t) noexcept {}
} // namespace Platform

namespace FakeWindow {
// What a new game server begins with; the window in memory is not linked here.
void Reset() { frmVNT::Unload(); }
} // namespace FakeWindow

namespace {

TEST_F(RealWindow, TakesItsPlaceAndLeavesTheHostsFocusAlone) {
    EXPECT_EQ(GetFocus(), Box);
    const HWND Frame = GetParent(At(ID_mfg));
    EXPECT_EQ(GetParent(Frame), Host);
    RECT Area{};
    GetWindowRect(Frame, &Area);
    MapWindowPoints(nullptr, Host, reinterpret_cast<POINT*>(&Area), 2);
    EXPECT_EQ(Area.left, 2);
    EXPECT_EQ(Area.top, 30);
    EXPECT_EQ(Area.right - Area.left, Wide);
    EXPECT_EQ(Area.bottom - Area.top, Tall - 28);
    EXPECT_EQ(GetWindowLongW(Frame, GWL_STYLE) & (WS_CHILD | WS_POPUP), WS_CHILD);
    EXPECT_EQ(Cell(1, 1), L"Rita");
}

TEST_F(RealWindow, ARightClickChoosesTheRowAndItsMenuActsOnIt) {
    WithMenu([&](HMENU Menu) {
        EXPECT_EQ(SelectedRow(), 1);
        EXPECT_EQ(CaptionAt(Menu, 0), L"Punt Player");
        Choose(Menu, L"Punt Player");
    });
    RightClickRow(1);
    Pump(700);
    EXPECT_EQ(Commands(), Lines{L"punt 12"});
    EXPECT_EQ(ListView_GetItemCount(At(ID_mfg)), 1);
}

TEST_F(RealWindow, AListHasItsMenuAndADoubleClickEdits) {
    WithMenu([&](HMENU Menu) {
        EXPECT_EQ(CaptionAt(Menu, 0), L"Import Ban List");
        for (const WORD Key : {VK_DOWN, VK_RIGHT, VK_RETURN}) Press(Key);
    });
    ClickAt(MiddleOf(At(ID_lstBannedNames), {0, 0, 60, 20}), MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
    Pump(700);
    EXPECT_EQ(Outside::Recorded(L"AskOpenFile").size(), 1u);
    Outside::PutIni(SettingsFile(L"Slaps.ini"), L"Messages", L"0", L"go away");
    frmVNT::FormReload();
    stMain.Turn(3);
    Pump();
    EXPECT_FALSE(cmdSlapEdit.Enabled());
    for (int Twice = 0; Twice < 2; ++Twice)
        ClickAt(MiddleOf(At(ID_lstSlaps), {0, 0, 60, 12}), MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    Pump();
    EXPECT_TRUE(cmdSlapEdit.Enabled());
    Press('1');
    Pump();
    EXPECT_EQ(txtSlap.Text(), L"go away1") << "the focus goes along";
    SetFocus(At(ID_cmdSlapEdit));
    Press(VK_SPACE);
    Pump();
    EXPECT_FALSE(cmdSlapEdit.Enabled());
    EXPECT_EQ(GetFocus(), At(ID_cmdSlapAdd)) << "a disabled button must not keep the keys";
}

TEST_F(RealWindow, TheHeaderHasAMenuOnlyWhileNobodyPlays) {
    int Entries = 0;
    for (const bool IsEmpty : {false, true}) {
        if (IsEmpty) {
            Game.Leave(3);
            Game.Leave(12);
            frmVNT::FormReload();
        }
        WithMenu([&](HMENU Menu) {
            Entries = GetMenuItemCount(Menu);
            Press(VK_ESCAPE);
        });
        ClickAt(MiddleOf(Header(), {60, 2, 80, 12}), MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
        Pump(400);
        EXPECT_EQ(Entries, IsEmpty ? 1 : 0);
    }
}

int HostTicks;
void CALLBACK CountTick(HWND, UINT, UINT_PTR, DWORD) { ++HostTicks; }

HWND ProgressDialog() {
    const HWND Dialog = FindWindowW(L"#32770", L"Vantor");
    return IsWindowVisible(Dialog) ? Dialog : nullptr;
}

TEST_F(RealWindow, LongWorkShowsItselfAndCanBeCancelled) {
    SetFocus(At(ID_lstBannedNames));
    SetTimer(Host, 3, 10, CountTick);
    {
        ProgressWindow Short(L"Short work...");
        for (int Entry = 0; Entry < 20; ++Entry, Sleep(5)) EXPECT_TRUE(Short.GoesOn(Entry, 20));
        EXPECT_EQ(ProgressDialog(), nullptr);
    }
    for (const WORD Key : {VK_ESCAPE, VK_RETURN, 0}) {
        Pump();
        HostTicks = 0;
        HostCommands.clear();
        ProgressWindow Long(L"Long work...");
        int Entry = 0;
        for (; Entry < 1000 && Long.GoesOn(Entry, 1000); ++Entry, Sleep(10)) {
            if (Entry != 150) continue;
            const HWND Dialog = ProgressDialog();
            ASSERT_NE(Dialog, nullptr);
            EXPECT_FALSE(IsWindowEnabled(Host));
            EXPECT_GT(SendDlgItemMessageW(Dialog, 102, PBM_GETPOS, 0, 0), 100);
            RECT Middle{}, Area{};
            GetWindowRect(Dialog, &Middle);
            GetWindowRect(Host, &Area);
            EXPECT_NEAR(Middle.left + Middle.right, Area.left + Area.right, 2);
            PostMessageW(Host, WM_COMMAND, 99, 0); // waits until the end
            if (Key != 0)
                Press(Key);
            else
                ClickAt(MiddleOf(GetDlgItem(Dialog, IDCANCEL), {0, 0, 20, 20}), MOUSEEVENTF_LEFTDOWN,
                        MOUSEEVENTF_LEFTUP);
        }
        EXPECT_GT(Entry, 150);
        EXPECT_LT(Entry, 300) << "cancelled soon";
        EXPECT_EQ(HostTicks, 0) << "nothing else runs inside the work";
        EXPECT_EQ(HostCommands, std::vector<int>());
    }
    EXPECT_EQ(ProgressDialog(), nullptr);
    EXPECT_TRUE(IsWindowEnabled(Host));
    EXPECT_EQ(GetFocus(), At(ID_lstBannedNames));
    KillTimer(Host, 3);
}

TEST_F(RealWindow, ARefreshWithTheSamePlayersPaintsNothing) {
    UpdateWindow(At(ID_mfg));
    Pump();
    for (const bool Changed : {false, true}) {
        if (Changed) Simulation::ChangePing(Game.World, 3, 77);
        SendMessageW(GetParent(At(ID_mfg)), WM_COMMAND, ID_mnuRefresh, 0);
        EXPECT_EQ(GetUpdateRect(At(ID_mfg), nullptr, FALSE) != FALSE, Changed);
        EXPECT_FALSE(GetUpdateRect(At(ID_lblTeams), nullptr, FALSE));
    }
}

TEST_F(RealWindow, ARefreshKeepsScrollPositionAndSelection) {
    for (int Slot = 1; Slot <= 16; ++Slot) Game.Join(Slot, "Player" + std::to_string(Slot));
    frmVNT::FormReload();
    ListView_EnsureVisible(At(ID_mfg), 15, FALSE);
    const int Top = ListView_GetTopIndex(At(ID_mfg));
    ASSERT_GT(Top, 0);
    ClickRow(14, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    Pump();
    Simulation::ChangePing(Game.World, 9, 77);
    frmVNT::FormReload();
    EXPECT_EQ(ListView_GetTopIndex(At(ID_mfg)), Top);
    EXPECT_EQ(SelectedRow(), 14);
    // A click beside the rows leaves the highlight where the menu will act.
    RECT Inside{};
    for (int Slot = 4; Slot <= 16; ++Slot) Game.Leave(Slot);
    frmVNT::FormReload();
    GetClientRect(At(ID_mfg), &Inside);
    EXPECT_EQ(ColumnsWidth(), Inside.right) << "the scroll bar is gone, and its room is used";
    ClickRow(1, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    Pump();
    ClickAt(MiddleOf(At(ID_mfg), {40, Inside.bottom - 8, 60, Inside.bottom - 4}), MOUSEEVENTF_LEFTDOWN,
            MOUSEEVENTF_LEFTUP);
    Pump(300);
    EXPECT_EQ(SelectedRow(), 1);
}

TEST_F(RealWindow, TheColumnsFillTheGridAndShowNamesWhole) {
    const std::string Name = "The name is longer than its share, but not too long";
    Game.Join(1, Name);
    for (int Slot = 4; Slot <= 11; ++Slot) Game.Join(Slot, "Player" + std::to_string(Slot));
    frmVNT::FormReload();
    const HWND Frame = GetParent(At(ID_mfg));
    for (const int Width : {Wide, 1200, 560, 900, 520}) {
        MoveWindow(Frame, 0, 0, Width, Tall, TRUE);
        Pump();
        RECT Inside{};
        GetClientRect(At(ID_mfg), &Inside);
        EXPECT_EQ(ColumnsWidth(), Inside.right) << Width;
        EXPECT_GE(ListView_GetColumnWidth(At(ID_mfg), 1), ListView_GetStringWidth(At(ID_mfg), L"The name"))
            << Width;
    }
    MoveWindow(Frame, 0, 0, 900, Tall, TRUE);
    Pump();
    const std::wstring Text(Name.begin(), Name.end());
    EXPECT_GE(ListView_GetColumnWidth(At(ID_mfg), 1), ListView_GetStringWidth(At(ID_mfg), Text.c_str()) + 6);
}

TEST_F(RealWindow, AScreenReaderHearsTeamsAndLabels) {
    for (const bool Runs : {true, false}) {
        SystemParametersInfoW(SPI_SETSCREENREADER, Runs, nullptr, 0);
        SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, 0, 0, SMTO_NORMAL, 1000, nullptr);
        EXPECT_EQ(Header_GetItemCount(Header()), Runs ? 5 : 4);
        EXPECT_EQ(Cell(0, 4), Runs ? L"Blue Team" : L"");
        EXPECT_EQ(Cell(1, 4), Runs ? L"Red Team" : L"");
    }
    for (const ControlRow& Row : Controls()) {
        if (Row.What != Kind::Text && Row.What != Kind::List) continue;
        const HWND Before = GetWindow(At(Row.Id), GW_HWNDPREV);
        wchar_t Class[20] = L"";
        GetClassNameW(Before, Class, 20);
        EXPECT_STREQ(Class, L"Static") << Row.Id;
        EXPECT_NE(GetWindowLongW(Before, GWL_STYLE) & WS_VISIBLE, 0) << "invisible labels are passed over";
        EXPECT_GT(GetWindowTextLengthW(Before), 0) << Row.Id;
    }
}

TEST_F(RealWindow, WhatIsLongerThanItsControlStaysWhole) {
    lstSlaps.Fill({std::wstring(3000, L'x'), L"a\tb & \u0080\u00FF"});
    EXPECT_GT(SendMessageW(At(ID_lstSlaps), LB_GETHORIZONTALEXTENT, 0, 0), 3000);
    EXPECT_EQ(lstSlaps.Item(1), L"a\tb & \u0080\u00FF");
    for (int Name = 0; Name < 50; ++Name) lstBannedNames.Append({L"Name"});
    EXPECT_GT(SendMessageW(At(ID_lstBannedNames), LB_GETTOPINDEX, 0, 0), 30) << "what was added can be seen";
    Game.Join(1, std::string(40, 'W'));
    frmVNT::FormReload();
    RECT Name{};
    ListView_GetSubItemRect(At(ID_mfg), 0, 1, LVIR_BOUNDS, &Name);
    const POINT Middle = MiddleOf(At(ID_mfg), Name);
    for (int Step = 0; Step < 3; ++Step) {
        SetCursorPos(Middle.x + Step, Middle.y);
        Pump();
    }
    Pump(900);
    HWND Tip = FindWindowW(TOOLTIPS_CLASSW, nullptr);
    while (Tip != nullptr && !IsWindowVisible(Tip))
        Tip = FindWindowExW(nullptr, Tip, TOOLTIPS_CLASSW, nullptr);
    EXPECT_NE(Tip, nullptr) << "of a name that is cut";
}

TEST_F(RealWindow, AHostThatCannotHoldItLeavesAWholeWindow) {
    const HWND Frame = GetParent(At(ID_mfg)), Refused = At(ID_stMain); // a window of the frame's own
    Frame::SetParent(0);
    Frame::SetParent(reinterpret_cast<std::intptr_t>(Refused));
    EXPECT_EQ(GetWindowLongW(Frame, GWL_STYLE) & static_cast<LONG>(WS_CHILD | WS_POPUP | WS_VISIBLE),
              static_cast<LONG>(WS_POPUP | WS_VISIBLE));
    EXPECT_EQ(GetAncestor(Frame, GA_ROOT), Frame);
    RECT Area{};
    GetWindowRect(Frame, &Area);
    EXPECT_EQ(Area.right - Area.left, Wide);
    EXPECT_EQ(Outside::Recorded(L"ErrorBox").size(), 1u);
    Open();
    EXPECT_EQ(GetParent(Frame), Host);
}

TEST_F(RealWindow, AnotherScaleLaysItOutAnew) {
    constexpr UINT DpiChangedAfterParent = 0x02E3;
    RECT Before{}, After{};
    GetWindowRect(At(ID_mfg), &Before);
    SendMessageW(At(ID_mfg), WM_SETFONT, 0, 0);
    MoveWindow(At(ID_mfg), 0, 0, 10, 10, FALSE);
    SendMessageW(GetParent(At(ID_mfg)), DpiChangedAfterParent, 0, 0);
    GetWindowRect(At(ID_mfg), &After);
    EXPECT_TRUE(EqualRect(&Before, &After));
    EXPECT_EQ(GetObjectType(reinterpret_cast<HGDIOBJ>(SendMessageW(At(ID_mfg), WM_GETFONT, 0, 0))),
              static_cast<DWORD>(OBJ_FONT));
}

TEST_F(RealWindow, GoesWithoutATraceAndComesBack) {
    WNDCLASSW Class{};
    for (int Round = 0; Round < 3; ++Round) {
        const HWND Frame = GetParent(At(ID_mfg));
        if (Round == 1) { // the host's window goes, with everything in it
            DestroyWindow(Host);
            EXPECT_FALSE(frmVNT::IsLoaded());
            Host = CreateWindowW(L"TestHost", L"Host", WS_POPUP | WS_VISIBLE, 0, 0, Wide, Tall + 30, nullptr,
                                 nullptr, nullptr, nullptr);
        }
        UnLoad();
        EXPECT_FALSE(IsWindow(Frame));
        EXPECT_FALSE(GetClassInfoW(GetModuleHandleW(nullptr), L"frmVNT", &Class));
        EXPECT_FALSE(GetClassInfoW(GetModuleHandleW(nullptr), L"frmVNT.Page", &Class));
        EXPECT_FALSE(frmVNT::IsLoaded());
        frmVNT::UnloadSweepTimer(TestProfile);
        Open();
        EXPECT_EQ(Cell(0, 1), L"Bob");
        EXPECT_EQ(Outside::Reports, Lines());
    }
}

} // namespace
