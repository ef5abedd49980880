// Settings, slap messages and the life of the window.
#include "tests/native/window_fixture.h"
#include "window/settings_tab.h"

namespace {

// --- Settings

TEST_F(Window, StoredSettingsAreShownAndNothingElseIsWritten) {
    const auto Shown = [] {
        return std::wstring(FakeWindow::IsOn(ID_optMethod + 1) ? L"1" : L"0") +
               (FakeWindow::IsOn(ID_chkIdlePunt) ? L" 1 " : L" 0 ") + FakeWindow::Text(ID_txtIdleMax) +
               (FakeWindow::IsOn(ID_chkRefresh) ? L" 1 " : L" 0 ") + FakeWindow::Text(ID_txtRefreshInterval);
    };
    Open();
    EXPECT_EQ(Shown(), L"0 0 5 0 30");
    EXPECT_FALSE(Outside::HasFile(PlayersIni));
    // Method, idle punt, its minutes, refresh, its seconds; and what is shown.
    const std::pair<TextView, TextView> Table[] = {{L"1/1/10/1/60", L"1 1 10 1 60"},
                                                   {L"0/0/05/0/0.5", L"0 0 5 0 5"},
                                                   {L"2/yes/0/on/0", L"0 0 5 0 5"},
                                                   {L"////", L"0 0 5 0 5"},
                                                   {L"0/1/x/0/1.5", L"0 1 5 0 1.5"}};
    const Lines Keys{L"BanMethod", L"IdlePunt", L"IdleMax", L"AutoRefresh", L"RefreshInterval"};
    for (const auto& [Stored, AsShown] : Table) {
        const Lines Values = Split(Stored, L"/");
        for (std::size_t At = 0; At < Keys.size(); ++At)
            Outside::PutIni(PlayersIni, Keys[At], L"Server1", Values[At]);
        const std::wstring Before = Outside::FileText(PlayersIni);
        Open();
        EXPECT_EQ(Shown(), AsShown);
        EXPECT_EQ(Outside::FileText(PlayersIni) == Before, !Values[0].empty());
        EXPECT_EQ(Outside::IniValue(PlayersIni, L"BanMethod", L"Server1"),
                  Values[0].empty() ? L"0" : Values[0]);
        EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrRefresh) != 0, FakeWindow::IsOn(ID_chkRefresh));
    }
}

TEST_F(Window, EachSettingIsStoredAtOnce) {
    Open();
    const auto Stored = [](TextView Name) { return Outside::IniValue(PlayersIni, Name, L"Server1"); };
    const std::tuple<int, TextView, TextView> Clicks[] = {{ID_optMethod + 1, L"BanMethod", L"1"},
                                                          {ID_optMethod, L"BanMethod", L"0"},
                                                          {ID_chkIdlePunt, L"IdlePunt", L"1"},
                                                          {ID_chkIdlePunt, L"IdlePunt", L"0"}};
    for (const auto& [Button, Name, Value] : Clicks) {
        FakeWindow::Click(Button);
        EXPECT_EQ(Stored(Name), Value);
    }
    for (const auto& [Typed, Kept] :
         {std::pair(L"12", L"12"), std::pair(L"12x", L"12"), std::pair(L"", L"12"), std::pair(L"0", L"0")}) {
        FakeWindow::Type(ID_txtIdleMax, Typed);
        FakeWindow::Type(ID_txtRefreshInterval, Typed);
        EXPECT_EQ(Stored(L"IdleMax"), Kept);
        EXPECT_EQ(Stored(L"RefreshInterval"), Kept);
    }
    EXPECT_TRUE(Outside::Reports.empty());
}

TEST_F(Window, TheRefreshTimerTakesANewIntervalAtItsNextTick) {
    Open();
    FakeWindow::Type(ID_txtRefreshInterval, L"2");
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrRefresh), 0);
    FakeWindow::Click(ID_chkRefresh);
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrRefresh), 2000);
    EXPECT_EQ(Outside::IniValue(PlayersIni, L"AutoRefresh", L"Server1"), L"1");
    FakeWindow::Type(ID_txtRefreshInterval, L"7");
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrRefresh), 2000);
    Game.Join(3, "Bob");
    FakeWindow::Tick(ID_tmrRefresh);
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrRefresh), 7000);
    EXPECT_EQ(FakeWindow::Rows().size(), 1u);
    FakeWindow::Click(ID_chkRefresh);
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrRefresh), 0);
    for (const auto& [Text, Milliseconds] :
         {std::pair(L"1", 1000), std::pair(L"0.5", 30000), std::pair(L"", 30000), std::pair(L"-3", 30000),
          std::pair(L"1.2345", 1234), std::pair(L"x", 30000), std::pair(L"99999999", 2147483647)})
        EXPECT_EQ(RefreshMilliseconds(Text), Milliseconds) << Text;
}

// --- Slap messages

// Its messages, the selected one, the text box, and whether it can be edited.
std::wstring SlapTab() {
    return Join(FakeWindow::Items(ID_lstSlaps), L"/") + L" " + ToText(FakeWindow::SelectedItem(ID_lstSlaps)) +
           L" " + FakeWindow::Text(ID_txtSlap) + (FakeWindow::IsEnabled(ID_cmdSlapEdit) ? L"*" : L"");
}

void TypeSlap(TextView Text) {
    FakeWindow::Type(ID_txtSlap, Text);
    FakeWindow::PressEnter(ID_txtSlap);
}

TEST_F(Window, SlapMessagesAreAddedEditedDeletedAndSent) {
    Open();
    for (const TextView Text : {L"one", L"50% & [1] = ;|", L"three "}) TypeSlap(Text);
    EXPECT_EQ(Boxes(), Lines(3, L"Box Success Slap message added successfully."));
    EXPECT_EQ(FileOf(L"Slaps.ini"), L"[Messages]\r\n0=one\r\n1=50% & [1] = ;|\r\n2=three \r\n");
    Game.Join(3, "Bob");
    const auto Choose = [](int Item) { return [=] { FakeWindow::ChooseItem(ID_lstSlaps, Item); }; };
    const auto DoubleClick = [](int Item) { return [=] { FakeWindow::DoubleClick(ID_lstSlaps, Item); }; };
    const auto Delete = [] { FakeWindow::PressDelete(ID_lstSlaps); };
    const std::pair<std::function<void()>, TextView> Steps[] = {
        {DoubleClick(0), L"one/50% & [1] = ;|/three 0 one*"},
        {Choose(2), L"one/50% & [1] = ;|/three 2 "},
        {Choose(0), L"one/50% & [1] = ;|/three 0 "},
        // Enter stands for a double click, and does nothing when the box is empty.
        {[] { FakeWindow::PressEnter(ID_lstSlaps); }, L"one/50% & [1] = ;|/three 0 one*"},
        {[] { TypeSlap(L"first"); }, L"first/50% & [1] = ;|/three 0 "},
        {[] { FakeWindow::PressEnter(ID_txtSlap); }, L"first/50% & [1] = ;|/three 0 "},
        {Choose(1), L"first/50% & [1] = ;|/three 1 "},
        {[] { FakeWindow::Type(ID_txtSlap, L"half typed"); }, L"first/50% & [1] = ;|/three 1 half typed"},
        {[] { FakeWindow::Click(ID_cmdSlapDelete); }, L"first/three 1 half typed"},
        {DoubleClick(1), L"first/three 1 three*"},
        {Delete, L"first 0 "}, // what was edited is gone
        {Delete, L" -1 "},
    };
    for (const auto& [Do, Shown] : Steps) {
        Do();
        EXPECT_EQ(SlapTab(), Shown);
    }
    EXPECT_EQ(Outside::Reports, Lines());
    FakeWindow::Click(ID_cmdSlapDelete); // nothing is left to delete
    EXPECT_EQ(Outside::Reports, Lines{L"cmdSlapDelete: 5 Invalid procedure call or argument"});
    Outside::PutFile(SettingsFile(L"Slaps.ini"), L"[Messages]\r\n0=first\r\n1=50% & [1] = ;|\r\n");
    Open();
    for (const int Message : {0, 1}) FakeWindow::ChooseForRow(0, ID_mnuSlapItem + Message);
    EXPECT_EQ(Outside::Journal, (Lines{L"MSG 3 Bob.....first", L"MSG 3 Bob.....50% & [1] = ;|"}));
}

// --- The window's life

TEST_F(Window, AnotherProfileShowsNothingOfTheOneBefore) {
    BanName(L"Bob[1]");
    BanIp(L"10.0.0.7");
    Outside::PutIni(SettingsFile(L"Slaps.ini"), L"Messages", L"0", L"go away");
    Game.Join(3, "Bob");
    Open();
    FakeWindow::ChooseRow(0);
    FakeWindow::DoubleClick(ID_lstSlaps, 0);
    constexpr int TextBoxes[] = {ID_txtSearch,   ID_txtBannedName, ID_txtBanReason,
                                 ID_txtSearchIp, ID_txtAddIp,      ID_txtSlap};
    for (const int Id : TextBoxes) FakeWindow::Type(Id, L"typed");
    FakeWindow::Click(ID_optBanned + 1);
    Open(); // the same one again
    EXPECT_EQ(FakeWindow::Text(ID_txtSearch) + FakeWindow::Text(ID_txtBanReason), L"typedtyped");
    // Another folder is another profile, with the same index, too.
    Open(TestProfile, L"Empty");
    for (const int Id : TextBoxes) EXPECT_EQ(FakeWindow::Text(Id), L"") << Id;
    EXPECT_TRUE(FakeWindow::IsOn(ID_optBanned));
    EXPECT_TRUE(FakeWindow::Items(ID_lstBannedNames).empty());
    Open();
    Open(6, L"Empty");
    for (const int List : {ID_lstBannedNames, ID_lstBannedIps, ID_lstSlaps})
        EXPECT_TRUE(FakeWindow::Items(List).empty()) << List;
    for (const int Label : {ID_lblName, ID_lblDate, ID_lblReason, ID_lblIp, ID_lblIpDate, ID_txtSlap})
        EXPECT_EQ(FakeWindow::Text(Label), L"") << Label;
    EXPECT_FALSE(FakeWindow::IsEnabled(ID_cmdSlapEdit));
    EXPECT_EQ(FakeWindow::SelectedRow(), -1);
    FakeWindow::RightClickRow(0);
    EXPECT_EQ(FakeWindow::LastMenu()[0], L"Punt Player");
    Load(7, 77, HostData(L"Ended", L"DF", 99)); // no such process
    EXPECT_TRUE(FakeWindow::Rows().empty());
    // The same profile again: what has no file stays as it was.
    Open();
    Outside::RemoveAll(L"C:\\Host\\profiles\\Server1\\settings");
    Open();
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), Lines{L"[1] Bob"});
    EXPECT_EQ(FakeWindow::Items(ID_lstSlaps), Lines{L"go away"});
}

TEST_F(Window, HidingStopsTheRefreshAndLeavesTheSweepsRunning) {
    Open();
    FakeWindow::Click(ID_chkRefresh);
    Open(6, L"Server2");
    Open();
    EXPECT_EQ(Outside::Reports, Lines{L"LoadInterface: 360 Object already loaded"});
    EXPECT_TRUE(FakeWindow::IsShown());
    HideInterface();
    EXPECT_FALSE(FakeWindow::IsShown());
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrRefresh), 0);
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrVN + 6), 5000);
    Disable(6);
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrVN + 6), 0);
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrVN + TestProfile), 5000);
    // The host's window may go without a word; the next load begins anew.
    FakeWindow::HostDestroysItsWindow();
    EXPECT_FALSE(frmVNT::IsLoaded());
    Outside::Reports.clear();
    Open();
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrVN + TestProfile), 5000);
    FakeWindow::TimersLeft = 0;
    Open(7, L"Server3");
    EXPECT_EQ(Outside::Reports, Lines{L"LoadInterface: 7 Out of memory"});
    FakeWindow::TimersLeft = 1000;
    Outside::Reports.clear();
}

TEST_F(Window, TwipsBecomePixelsExactly) {
    Pdat Data = HostData();
    Data[PdatElement::AreaWidth] = {L"", 10001, true};
    Data[PdatElement::AreaHeight] = {L"", 7199, true};
    for (const auto& [Dpi, Width, Height] : {std::tuple(96, 666, 451), {110, 763, 521}, {192, 1333, 931}}) {
        FakeWindow::PixelsPerInch = Dpi;
        Load(TestProfile, 77, Data);
        const Rect Area = FakeWindow::Area();
        EXPECT_EQ(std::tuple(Area.X, Area.Y, Area.Width, Area.Height), std::tuple(2, 30, Width, Height))
            << Dpi;
    }
}

} // namespace
