// The real window with the keyboard alone, and where the focus is.
#include "tests/wine/window_fixture.h"

namespace {

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

TEST_F(RealWindow, HeaderClicksAndCtrlWithADigitSort) {
    Game.Join(5, "Ann", "10.0.0.1", 1, 140);
    Open();
    ClickColumn(2);
    EXPECT_EQ(Cell(0, 2), L"10.0.0.1");
    Sleep(GetDoubleClickTime());
    ClickColumn(2);
    EXPECT_EQ(Cell(0, 2), L"10.0.0.10");
    SetFocus(At(ID_mfg));
    Press('4', VK_CONTROL);
    Pump();
    EXPECT_EQ(Cell(0, 0) + Cell(1, 0) + Cell(2, 0), L"030512") << "ties by their slots";
}

std::wstring Clipboard() {
    std::wstring Text;
    OpenClipboard(nullptr);
    if (const HANDLE Memory = GetClipboardData(CF_UNICODETEXT)) {
        Text = static_cast<const wchar_t*>(GlobalLock(Memory));
        GlobalUnlock(Memory);
    }
    CloseClipboard();
    return Text;
}

TEST_F(RealWindow, EnterOpensTheMenuAndCtrlCCopies) {
    Game.Join(5, "Ann", "10.0.0.1", 1, 140);
    BanName(L"Eve[2]");
    Open();
    SetFocus(At(ID_lstBannedNames));
    Press('C', VK_CONTROL);
    Pump();
    EXPECT_EQ(Clipboard(), L"[2] Eve");
    SetFocus(At(ID_mfg));
    mfg.Select(0);
    Press(VK_DOWN);
    Press('C', VK_CONTROL);
    Pump();
    EXPECT_EQ(Clipboard(), L"05\tAnn\t10.0.0.1\t140");
    WithMenu([](HMENU Menu) { Choose(Menu, L"Punt Player"); });
    Press(VK_RETURN);
    Pump(700);
    EXPECT_EQ(Commands(), Lines{L"punt 05"});
    EXPECT_EQ(SelectedRow(), -1);
    WithMenu([](HMENU) { Press(VK_ESCAPE); });
    Press(VK_F10, VK_SHIFT);
    Pump(700);
    EXPECT_FALSE(InMenu);
    EXPECT_EQ(SelectedRow(), 1) << "where the selection stood";
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
    for (const bool HasTabStop : {false, true}) {
        if (HasTabStop) SetWindowLongW(Box, GWL_STYLE, WS_CHILD | WS_VISIBLE | WS_TABSTOP);
        for (const bool Back : {false, true}) {
            SetFocus(At(Back ? ID_mfg : ID_cmdAddIp));
            Press(VK_TAB, Back ? VK_SHIFT : 0);
            Pump();
            EXPECT_EQ(GetFocus(), HasTabStop ? Box : Host) << "the plug-in is left";
        }
    }
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

TEST_F(RealWindow, OnlyWhatIsChosenAndTypedIsStored) {
    const auto Stored = [](TextView Name) { return Outside::IniValue(PlayersIni, Name, L"Server1"); };
    EXPECT_FALSE(Outside::HasFile(PlayersIni));
    stMain.Turn(2);
    SetFocus(At(ID_optMethod));
    for (const WORD Key : {VK_DOWN, VK_UP}) {
        Press(Key);
        Pump();
        EXPECT_EQ(Stored(L"BanMethod"), Key == VK_DOWN ? L"1" : L"0");
    }
    SetFocus(At(ID_txtIdleMax));
    SendMessageW(At(ID_txtIdleMax), EM_SETSEL, 0, -1);
    Press('7');
    Press('A');
    Pump();
    EXPECT_EQ(txtIdleMax.Text(), L"7a");
    SetFocus(Box);
    EXPECT_EQ(txtIdleMax.Text(), L"7") << "the value that holds";
    EXPECT_EQ(Stored(L"IdleMax"), L"7");
    EXPECT_EQ(Stored(L"RefreshInterval"), L"");
}

} // namespace
