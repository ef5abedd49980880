// The real window, driven by mouse and keyboard as the administrator does it. Game and files are those in
// memory, so that what a click did can be read off at once.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include "host/win32/boxes.h"
#include "plugin/lifecycle.h"
#include "tests/fakes/server.h"
#include "tests/wine/input.h"
#include "window/controls.h"
#include "window/frmVNT.h"

namespace Platform {
// The boxes are recorded, not shown: none needs an owner.
void SetOwner(std::intptr_t) noexcept {}
} // namespace Platform

namespace FakeWindow {
// What a new game server begins with; the window in memory is not linked here.
void Reset() { frmVNT::Unload(); }
} // namespace FakeWindow

namespace {

constexpr int Wide = 640, Tall = 480;

// --- The window

std::vector<int> HostCommands;

LRESULT CALLBACK HostProcedure(HWND Window, UINT Message, WPARAM W, LPARAM L) {
    if (Message == WM_COMMAND && L == 0) HostCommands.push_back(LOWORD(W));
    return DefWindowProcW(Window, Message, W, L);
}

HWND Found;
int Sought;
BOOL CALLBACK IsIt(HWND Window, LPARAM) {
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
        SetForegroundWindow(Host);
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
        RECT Place{};
        ListView_GetItemRect(At(ID_mfg), Row, &Place, LVIR_BOUNDS);
        ClickAt(MiddleOf(At(ID_mfg), Place), Down, Up);
    }
    void RightClickRow(int Row) const { ClickRow(Row, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP); }
    void ClickColumn(int Column) const {
        RECT Place{};
        Header_GetItemRect(Header(), Column, &Place);
        ClickAt(MiddleOf(Header(), Place), MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
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
    int SelectedRow() const { return ListView_GetNextItem(At(ID_mfg), -1, LVNI_SELECTED); }

    Server Game;
    HWND Host = nullptr, Box = nullptr;
};

TEST_F(RealWindow, TakesItsPlaceAndLeavesTheHostsFocusAlone) {
    EXPECT_EQ(GetFocus(), Box);
    const HWND Frame = GetParent(At(ID_mfg));
    EXPECT_EQ(GetParent(Frame), Host);
    RECT Place{};
    GetWindowRect(Frame, &Place);
    MapWindowPoints(nullptr, Host, reinterpret_cast<POINT*>(&Place), 2);
    EXPECT_EQ(Place.left, 2);
    EXPECT_EQ(Place.top, 30);
    EXPECT_EQ(Place.right - Place.left, Wide);
    EXPECT_EQ(Place.bottom - Place.top, Tall - 28);
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

TEST_F(RealWindow, TheMenuKeyOpensTheMenuOfTheSelectedRow) {
    Outside::PutIni(SettingsFile(L"Slaps.ini"), L"Messages", L"0", L"R&B is 50%\tbetter");
    Open();
    ClickRow(0, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    Pump(600);
    EXPECT_EQ(GetFocus(), At(ID_mfg));
    Press(VK_DOWN);
    Pump();
    EXPECT_EQ(SelectedRow(), 1);
    WithMenu([&](HMENU Menu) {
        EXPECT_EQ(CaptionAt(GetSubMenu(Menu, 0), 0), L"R&&B is 50% better");
        Press(VK_DOWN);
        Press(VK_RIGHT);
        Press(VK_RETURN);
    });
    Press(VK_APPS);
    Pump(700);
    EXPECT_EQ(Outside::Recorded(L"MSG"), Lines{L"MSG 3 Rita.....R&B is 50%\tbetter"});
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
    EXPECT_EQ(txtSlap.Text(), L"go away");
    EXPECT_TRUE(cmdSlapEdit.Enabled());
    SetFocus(At(ID_cmdSlapEdit));
    Press(VK_SPACE);
    Pump();
    EXPECT_FALSE(cmdSlapEdit.Enabled());
    EXPECT_EQ(GetFocus(), At(ID_cmdSlapAdd)) << "a disabled button must not keep the keys";
}

TEST_F(RealWindow, AnEmptyGridOffersOnlyTheRefresh) {
    RECT Place{};
    Header_GetItemRect(Header(), 1, &Place);
    bool Opened = false;
    const auto Look = [&](HMENU Menu) {
        Opened = true;
        EXPECT_EQ(GetMenuItemCount(Menu), 1);
        Choose(Menu, L"Refresh Player List");
    };
    WithMenu(Look);
    ClickAt(MiddleOf(Header(), Place), MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
    Pump(300);
    EXPECT_FALSE(Opened) << "with players the header has no menu";
    Game.Leave(3);
    Game.Leave(12);
    frmVNT::FormReload();
    WithMenu(Look);
    ClickAt(MiddleOf(Header(), Place), MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
    Game.Join(5, "Eve");
    Pump(700);
    EXPECT_TRUE(Opened);
    EXPECT_EQ(Cell(0, 1), L"Eve");
}

TEST_F(RealWindow, HeaderClicksAndCtrlWithADigitSort) {
    ClickColumn(2);
    EXPECT_EQ(Cell(0, 2), L"10.0.0.7");
    Sleep(GetDoubleClickTime());
    ClickColumn(2);
    EXPECT_EQ(Cell(0, 2), L"10.0.0.10");
    SetFocus(At(ID_mfg));
    Press('4', VK_CONTROL);
    Pump();
    EXPECT_EQ(Cell(0, 3), L"50");
}

TEST_F(RealWindow, TabVisitsEveryControlOfThePageAndEnterActs) {
    stMain.Turn(1);
    SetFocus(At(ID_mfg));
    Pump();
    std::vector<int> Visited;
    for (int Step = 0; Step < 7; ++Step) {
        Press(VK_TAB);
        Pump();
        Visited.push_back(GetDlgCtrlID(GetFocus()));
    }
    EXPECT_EQ(Visited, (std::vector<int>{ID_stMain, ID_lstBannedIps, ID_cmdRemoveIp, ID_txtSearchIp,
                                         ID_cmdSearchIp, ID_txtAddIp, ID_cmdAddIp}));
    SetFocus(At(ID_stMain));
    Press(VK_RIGHT); // the next tab
    Pump();
    EXPECT_TRUE(IsWindowVisible(At(ID_chkIdlePunt)));
    EXPECT_FALSE(IsWindowVisible(At(ID_txtAddIp)));
    Press(VK_LEFT);
    for (int Step = 0; Step < 5; ++Step) Press(VK_TAB);
    Pump();
    ASSERT_EQ(GetFocus(), At(ID_txtAddIp));
    for (const char Letter : std::string("127")) Press(static_cast<WORD>(Letter));
    Press(VK_OEM_PERIOD);
    Press(VK_MULTIPLY);
    Press(VK_RETURN);
    Pump();
    EXPECT_EQ(Outside::Recorded(L"Box"), Lines{L"Box Success IP Address added successfully."});
    EXPECT_EQ(lstBannedIps.Item(0), L"127.*");
    SetFocus(Box);
    Press('A');
    Press(VK_TAB);
    Pump();
    EXPECT_EQ(GetFocus(), Box) << "the host's own controls are the host's affair";
}

TEST_F(RealWindow, AHiddenControlNeverKeepsTheFocus) {
    const std::wstring Before = Outside::FileText(PlayersIni);
    stMain.Turn(2);
    SetFocus(At(ID_txtIdleMax));
    Open(); // the host loads a profile, which turns to the first page
    EXPECT_EQ(GetFocus(), At(ID_stMain));
    Press('9');
    Pump();
    EXPECT_EQ(Outside::FileText(PlayersIni), Before);
    SetFocus(At(ID_txtBannedName));
    frmVNT::Hide();
    EXPECT_EQ(GetFocus(), Host);
}

TEST_F(RealWindow, KeysTurnThePagesRefreshAndRemove) {
    const struct {
        WORD Key, With, With2;
        int Page;
    } Turns[] = {{VK_TAB, VK_CONTROL, 0, 1},        {VK_NEXT, VK_CONTROL, 0, 2},
                 {VK_TAB, VK_CONTROL, VK_SHIFT, 1}, {VK_PRIOR, VK_CONTROL, 0, 0},
                 {VK_PRIOR, VK_CONTROL, 0, 3},      {VK_TAB, VK_CONTROL, 0, 0}};
    SetFocus(At(ID_txtBannedName));
    for (const auto& Turn : Turns) {
        if (Turn.With2 != 0) SendKey(Turn.With2, true);
        Press(Turn.Key, Turn.With);
        if (Turn.With2 != 0) SendKey(Turn.With2, false);
        Pump();
        EXPECT_EQ(SendMessageW(At(ID_stMain), TCM_GETCURSEL, 0, 0), Turn.Page);
        EXPECT_EQ(GetFocus(), At(ID_stMain)) << "the box is on a page that is hidden now";
    }
    BanName(L"Bob[1]");
    BanName(L"Ann[1]");
    Game.Join(5, "Eve");
    frmVNT::FormReload();
    Game.Leave(5);
    SetFocus(At(ID_lstBannedNames));
    Press(VK_F5);
    Pump();
    EXPECT_EQ(ListView_GetItemCount(At(ID_mfg)), 2);
    for (int Name = 0; Name < 2; ++Name) Press(VK_DELETE);
    Pump();
    EXPECT_EQ(lstBannedNames.Count(), 0);
    EXPECT_EQ(Outside::Recorded(L"Box").size(), 2u);
    EXPECT_EQ(GetFocus(), At(ID_lstBannedNames));
}

// A host that has accelerators for the keys of our controls, moves its own focus with the arrows, and looks
// at each message before it takes it.
TEST_F(RealWindow, OurKeysReachOurControlsInAHostThatTranslatesThem) {
    ACCEL Keys[] = {{FVIRTKEY, VK_DELETE, 1},     {FVIRTKEY, VK_ESCAPE, 2}, {FVIRTKEY, VK_LEFT, 3},
                    {FVIRTKEY, VK_F5, 4},         {FVIRTKEY, VK_F7, 5},     {FVIRTKEY | FCONTROL, 'A', 6},
                    {FVIRTKEY | FCONTROL, 'S', 7}};
    const HACCEL Table = CreateAcceleratorTableW(Keys, static_cast<int>(std::size(Keys)));
    const auto PumpAsHost = [&] {
        MSG Message;
        for (const DWORD End = GetTickCount() + 60; GetTickCount() < End; Sleep(1))
            while (PeekMessageW(&Message, nullptr, 0, 0, PM_NOREMOVE) &&
                   PeekMessageW(&Message, nullptr, 0, 0, PM_REMOVE)) {
                if (TranslateAcceleratorW(Host, Table, &Message) || IsDialogMessageW(Host, &Message))
                    continue;
                TranslateMessage(&Message);
                DispatchMessageW(&Message);
            }
    };
    HostCommands.clear();
    stMain.Turn(1);
    SetFocus(At(ID_txtAddIp));
    for (const WORD Key : {WORD('1'), WORD('2'), WORD('3'), WORD(VK_LEFT), WORD(VK_DELETE), WORD(VK_ESCAPE)})
        Press(Key);
    PumpAsHost();
    EXPECT_EQ(txtAddIp.Text(), L"12");
    Press('A', VK_CONTROL);
    Press(VK_F5);
    PumpAsHost();
    EXPECT_EQ(HostCommands, std::vector<int>());
    Press(VK_F7);
    Press('S', VK_CONTROL);
    PumpAsHost();
    EXPECT_EQ(HostCommands, (std::vector<int>{5, 7})) << "what is not ours stays the host's";
    EXPECT_EQ(GetFocus(), At(ID_txtAddIp));
    DestroyAcceleratorTable(Table);
}

TEST_F(RealWindow, TheMenuOfTheKeyboardBringsItsRowIntoView) {
    for (int Slot = 1; Slot <= 16; ++Slot) Game.Join(Slot, "Player" + std::to_string(Slot));
    frmVNT::FormReload();
    SetFocus(At(ID_mfg));
    Press(VK_END);
    Pump();
    ListView_EnsureVisible(At(ID_mfg), 0, FALSE);
    ASSERT_EQ(ListView_GetTopIndex(At(ID_mfg)), 0);
    RECT MenuPlace{};
    WithMenu([&](HMENU) {
        GetWindowRect(FindWindowW(L"#32768", nullptr), &MenuPlace);
        Press(VK_ESCAPE);
    });
    Press(VK_F10, VK_SHIFT);
    Pump(700);
    EXPECT_GT(ListView_GetTopIndex(At(ID_mfg)), 0);
    RECT Grid{};
    GetWindowRect(At(ID_mfg), &Grid);
    EXPECT_LE(MenuPlace.top, Grid.bottom);
    EXPECT_GE(MenuPlace.left, Grid.left);
    EXPECT_EQ(GetFocus(), At(ID_mfg));
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
    for (const bool ByKey : {true, false}) {
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
            if (ByKey)
                Press(VK_ESCAPE);
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

TEST_F(RealWindow, ArrowsChooseAmongOptionButtons) {
    stMain.Turn(2);
    SetFocus(At(ID_optMethod));
    Press(VK_DOWN);
    Pump();
    EXPECT_EQ(Outside::IniValue(PlayersIni, L"BanMethod", L"Server1"), L"1");
    Press(VK_UP);
    Pump();
    EXPECT_EQ(Outside::IniValue(PlayersIni, L"BanMethod", L"Server1"), L"0");
}

TEST_F(RealWindow, OnlyTypingStoresASetting) {
    EXPECT_FALSE(Outside::HasFile(PlayersIni));
    stMain.Turn(2);
    SetFocus(At(ID_txtIdleMax));
    SendMessageW(At(ID_txtIdleMax), EM_SETSEL, 0, -1);
    Press('7');
    Pump();
    EXPECT_EQ(Outside::FileText(PlayersIni), L"[IdleMax]\r\nServer1=7\r\n");
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
    ClickRow(1, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    Pump();
    GetClientRect(At(ID_mfg), &Inside);
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
        int Sum = 0;
        for (int Column = 0; Column < 4; ++Column) Sum += ListView_GetColumnWidth(At(ID_mfg), Column);
        EXPECT_EQ(Sum, Inside.right) << Width;
        EXPECT_GE(ListView_GetColumnWidth(At(ID_mfg), 1), ListView_GetStringWidth(At(ID_mfg), L"The name"))
            << Width;
    }
    MoveWindow(Frame, 0, 0, 900, Tall, TRUE);
    Pump();
    const std::wstring Text(Name.begin(), Name.end());
    EXPECT_GE(ListView_GetColumnWidth(At(ID_mfg), 1), ListView_GetStringWidth(At(ID_mfg), Text.c_str()) + 6);
}

TEST_F(RealWindow, TheWheelScrollsAWindowThatIsTooSmall) {
    const HWND Frame = GetParent(At(ID_mfg));
    MoveWindow(Frame, 0, 0, 480, 200, TRUE);
    RECT Before{}, After{};
    GetWindowRect(At(ID_mfg), &Before);
    for (const int Notches : {-1, 1}) {
        SendMessageW(At(ID_stMain), WM_MOUSEWHEEL, MAKEWPARAM(0, Notches * WHEEL_DELTA), 0);
        GetWindowRect(At(ID_mfg), &After);
        EXPECT_EQ(After.top < Before.top, Notches < 0);
    }
    EXPECT_EQ(After.top, Before.top);
}

TEST_F(RealWindow, AScreenReaderHearsTeamsAndLabels) {
    EXPECT_EQ(Header_GetItemCount(Header()), 4);
    SystemParametersInfoW(SPI_SETSCREENREADER, TRUE, nullptr, 0);
    frmVNT::Unload();
    Open();
    EXPECT_EQ(Header_GetItemCount(Header()), 5);
    EXPECT_EQ(Cell(0, 4), L"Blue Team");
    EXPECT_EQ(Cell(1, 4), L"Red Team");
    SystemParametersInfoW(SPI_SETSCREENREADER, FALSE, nullptr, 0);
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
    const std::wstring Long(3000, L'x');
    Outside::PutIni(SettingsFile(L"Slaps.ini"), L"Messages", L"0", Long);
    frmVNT::FormReload();
    EXPECT_EQ(lstSlaps.Item(0), Long);
    EXPECT_GT(SendMessageW(At(ID_lstSlaps), LB_GETHORIZONTALEXTENT, 0, 0), 3000);
    lstSlaps.Fill({L"a\tb & \u0080\u00FF"});
    EXPECT_EQ(lstSlaps.Item(0), L"a\tb & \u0080\u00FF");
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
