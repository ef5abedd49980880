// The tabs against controls in memory: lists, settings and slap messages, their files and their texts.
#include <gtest/gtest.h>

#include "game/mdlVNT.h"
#include "plugin/lifecycle.h"
#include "tests/fakes/fake_toolkit.h"
#include "tests/native/server.h"
#include "window/frmVNT.h"
#include "window/layout.h"
#include "window/refresh_interval.h"

namespace {

class Tabs : public testing::Test {
protected:
    void SetUp() override { FakeWindow::Reset(); }
    void TearDown() override { FakeWindow::Reset(); }

    void Open(Long Index = Profile, TextView Folder = L"Server1") {
        LoadInterface(Index, FakeWindow::KnownHostWindow, HostData(Folder));
        Outside::Journal.clear();
    }
    void PutLink(TextView Name, TextView Key, TextView Address) {
        Outside::PutIni(SettingsFile(L"BannedReference.ini"), Name, Key, Address);
    }

    Server Game;
};

std::wstring FileOf(TextView Name) { return Outside::FileText(SettingsFile(Name)); }
Lines Boxes() {
    Lines Found;
    for (const std::wstring& Each : Outside::Journal)
        if (Each.starts_with(L"Box") || Each.starts_with(L"Ask")) Found.push_back(Each);
    return Found;
}

// --- Banned names

TEST_F(Tabs, NamesAreAddedWithTheirTagAndReason) {
    const struct {
        TextView Name, Reason;
        int Option;
        TextView Entry, Item;
    } Table[] = {
        {L"Bob", L"", 0, L"Bob[1]=2024-05-06 7:08:09[-]None", L"[1] Bob"},
        {L"[clan", L"team killing", 1, L"", L""}, // the file takes this key for a section
        {L"clan", L"team killing", 1, L"clan[2]=2024-05-06 7:08:09[-]team killing", L"[2] clan"},
    };
    Open();
    for (const auto& Row : Table) {
        Outside::Journal.clear();
        FakeWindow::Type(ID_txtBannedName, Row.Name);
        FakeWindow::Type(ID_txtBanReason, Row.Reason);
        FakeWindow::Click(ID_optBanned + Row.Option);
        FakeWindow::Click(ID_cmdAddName);
        if (Row.Item.empty()) {
            EXPECT_EQ(Boxes(), Lines{L"Box Failed! The name could not be stored in the ban list."});
            EXPECT_EQ(FakeWindow::Text(ID_txtBannedName), Row.Name) << "to be mended";
            continue;
        }
        EXPECT_NE(FileOf(L"BannedNames.ini").find(Row.Entry), std::wstring::npos);
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames).back(), Row.Item);
        EXPECT_EQ(FakeWindow::ItemData(ID_lstBannedNames,
                                       static_cast<int>(FakeWindow::Items(ID_lstBannedNames).size()) - 1),
                  Row.Option + 1);
        EXPECT_EQ(FakeWindow::Text(ID_txtBannedName) + FakeWindow::Text(ID_txtBanReason), L"");
        EXPECT_TRUE(FakeWindow::IsOn(ID_optBanned));
        EXPECT_EQ(Boxes(), Lines{L"Box Success Name added successfully."});
    }
    Outside::Journal.clear();
    FakeWindow::Click(ID_cmdAddName);
    EXPECT_TRUE(Outside::Journal.empty()) << "an empty box adds nothing";
}

TEST_F(Tabs, TheListShowsEntriesAndTheirDetails) {
    const auto Put = [](TextView Key, TextView Value) {
        Outside::PutIni(SettingsFile(L"BannedNames.ini"), L"Players", Key, Value);
    };
    Put(L"Bob[1]", L"2024-01-01 1:02:03[-]cheat");
    Put(L"untagged", L"2024-01-01 1:02:03[-]cheat");
    Put(L"old[2]", L"2024-01-01 1:02:03");
    Put(L"a[1]b[2]", L"2024-02-02 2:02:02[-]x[-]y");
    BanIp(L"10.0.0.*");
    Open();
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), (Lines{L"[1] Bob", L"[2] a[1]b"}));
    EXPECT_EQ(FakeWindow::SelectedItem(ID_lstBannedNames), 0);
    FakeWindow::ChooseItem(ID_lstBannedNames, 1);
    EXPECT_EQ(FakeWindow::Text(ID_lblName), L"a[1]b");
    EXPECT_EQ(FakeWindow::Text(ID_lblDate), L"2024-02-02 2:02:02");
    FakeWindow::ChooseItem(ID_lstBannedNames, 0);
    EXPECT_EQ(FakeWindow::Text(ID_lblReason), L"cheat");
    FakeWindow::ChooseItem(ID_lstBannedIps, 0);
    EXPECT_EQ(FakeWindow::Text(ID_lblIp), L"10.0.0.*");
    EXPECT_EQ(FakeWindow::Text(ID_lblIpDate), L"2024-01-01 1:02:03");
}

TEST_F(Tabs, RemovingANameCanTakeItsAddressesAlong) {
    const std::wstring Question =
        L"Ask Remove Banned Name Would you like to remove all associated IP Addresses with this name aswell?";
    for (const bool Yes : {false, true}) {
        for (const TextView Each : {L"Ann[1]", L"Bob[1]"}) BanName(Each);
        for (const TextView Each : {L"10.0.0.70", L"10.0.0.7", L"10.0.0.9"}) BanIp(Each);
        PutLink(L"Bob", L"0", L"10.0.0.7");
        Open();
        mdlVNT::IpListChanged(Profile) = false;
        FakeWindow::ChooseItem(ID_lstBannedNames, 1);
        Outside::YesNoAnswers = {Yes};
        FakeWindow::Click(ID_cmdRemoveName);
        EXPECT_EQ(Boxes(), (Lines{Question, L"Box Success Name Removed Successfully."}));
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), Lines{L"[1] Ann"});
        EXPECT_EQ(FakeWindow::SelectedItem(ID_lstBannedNames), 0);
        EXPECT_EQ(FakeWindow::Text(ID_lblName), L"Ann");
        EXPECT_EQ(FileOf(L"BannedNames.ini").find(L"Bob"), std::wstring::npos);
        EXPECT_FALSE(mdlVNT::IpListChanged(Profile));
        // The list loses the first item that begins with the address, the file the address itself.
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps),
                  Yes ? (Lines{L"10.0.0.7", L"10.0.0.9"}) : (Lines{L"10.0.0.70", L"10.0.0.7", L"10.0.0.9"}));
        EXPECT_EQ(Outside::IniValue(SettingsFile(L"BannedIps.ini"), L"IpAddresses", L"10.0.0.7").empty(),
                  Yes);
        EXPECT_FALSE(Outside::IniValue(SettingsFile(L"BannedIps.ini"), L"IpAddresses", L"10.0.0.70").empty());
    }
    FakeWindow::Click(ID_cmdRemoveName);
    EXPECT_TRUE(FakeWindow::Items(ID_lstBannedNames).empty());
    EXPECT_EQ(FakeWindow::Text(ID_lblName) + FakeWindow::Text(ID_lblDate) + FakeWindow::Text(ID_lblReason),
              L"");
    Outside::Journal.clear();
    FakeWindow::Click(ID_cmdRemoveName);
    EXPECT_TRUE(Outside::Journal.empty()) << "an empty list has nothing to remove";
}

// --- Banned addresses

TEST_F(Tabs, AddressesAreCheckedAndAdded) {
    Open();
    for (const TextView Text : {L"10.0.0.7", L"127.0.*", L"-5.1.1.1", L"10.0.0.7"}) {
        mdlVNT::IpListChanged(Profile) = false;
        Outside::Journal.clear();
        FakeWindow::Type(ID_txtAddIp, Text);
        FakeWindow::PressEnter(ID_txtAddIp);
        EXPECT_EQ(Boxes(), Lines{L"Box Success IP Address added successfully."});
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps).back(), Text);
        EXPECT_EQ(FakeWindow::Text(ID_txtAddIp), L"");
        EXPECT_TRUE(mdlVNT::IpListChanged(Profile));
    }
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps).size(), 4u) << "twice in the list, once in the file";
    const std::wstring Before = FileOf(L"BannedIps.ini");
    for (const TextView Text : {L"10.0.0", L"10.*.0.1", L"256.1.1.1", L" "}) {
        Outside::Journal.clear();
        FakeWindow::Type(ID_txtAddIp, Text);
        FakeWindow::Click(ID_cmdAddIp);
        EXPECT_EQ(Boxes(), Lines{L"Box Failed! IP Address format is invalid."});
        EXPECT_EQ(FakeWindow::Text(ID_txtAddIp), Text);
    }
    EXPECT_EQ(FileOf(L"BannedIps.ini"), Before);
}

TEST_F(Tabs, RemovingAnAddressCanTakeItsNamesAlong) {
    const std::wstring Question = L"Ask Remove Banned IP Address Would you like to remove all associated "
                                  L"names with this IP Address aswell?";
    for (const bool Yes : {false, true}) {
        Outside::RemoveAll(L"C:\\Host\\profiles\\Server1\\settings");
        for (const TextView Each : {L"Bobby[1]", L"Bob[1]", L"Bob[2]", L"Ann[1]"}) BanName(Each);
        for (const TextView Each : {L"10.0.0.7", L"10.0.0.9"}) BanIp(Each);
        PutLink(L"Bob", L"0", L"10.0.0.7");
        PutLink(L"Bob", L"1", L"10.0.0.8");
        PutLink(L"Ann", L"0", L"10.0.0.7");
        Open();
        mdlVNT::IpListChanged(Profile) = false;
        Outside::YesNoAnswers = {Yes};
        FakeWindow::Click(ID_cmdRemoveIp);
        EXPECT_EQ(Boxes(), (Lines{Question, L"Box Success IP Address Removed Successfully."}));
        EXPECT_TRUE(mdlVNT::IpListChanged(Profile));
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps), Lines{L"10.0.0.9"});
        // Bobby goes from the list, as the first that begins like Bob; Bob goes from the file.
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames),
                  Yes ? (Lines{L"[1] Bob", L"[2] Bob"})
                      : (Lines{L"[1] Bobby", L"[1] Bob", L"[2] Bob", L"[1] Ann"}));
    }
    const std::wstring Names = FileOf(L"BannedNames.ini");
    EXPECT_EQ(Names.find(L"Bob[1]"), std::wstring::npos);
    EXPECT_EQ(Names.find(L"Ann[1]"), std::wstring::npos);
    EXPECT_NE(Names.find(L"Bob[2]"), std::wstring::npos);
    EXPECT_NE(Names.find(L"Bobby[1]"), std::wstring::npos);
    EXPECT_EQ(FileOf(L"BannedReference.ini"), L"[Bob]\r\n0=10.0.0.8\r\n");
}

TEST_F(Tabs, ABoxMayOutliveTheWindowAndTheProfile) {
    for (const TextView Each : {L"10.0.0.7", L"10.0.0.9"}) BanIp(Each);
    Open();
    Outside::YesNoAnswers = {true};
    Outside::WhileBoxIsOpen = [] { UnLoadInterface(); };
    FakeWindow::Click(ID_cmdRemoveIp);
    EXPECT_FALSE(frmVNT::IsLoaded());
    EXPECT_TRUE(Outside::IniValue(SettingsFile(L"BannedIps.ini"), L"IpAddresses", L"10.0.0.7").empty());
    EXPECT_TRUE(Outside::Reports.empty());
}

// --- Search

TEST_F(Tabs, SearchGoesOnFromTheSelectedItem) {
    for (const TextView Each : {L"Ann[1]", L"Bob[1]", L"Bobby[2]", L"Cid[1]"}) BanName(Each);
    const std::wstring NotFound = L"Box Failed! Name not found!";
    const std::wstring Again =
        L"Ask Search Failed Name not found!\r\n\r\nThe search was not started from the beginning of the "
        L"list.\r\nWould you like to search again from the beginning of the list?";
    Open();
    const struct {
        int Selected;
        TextView Text;
        bool Yes;
        int Then;
        Lines Boxes;
    } Table[] = {
        {0, L"Ann", false, 0, {}}, // the first item is looked at again
        {0, L"Bob", false, 1, {}},
        {1, L"Bob", false, 2, {}},
        {2, L"Bob", false, 2, {Again}},
        {2, L"Bob", true, 1, {Again}},
        {2, L"bob", true, 0, {Again, NotFound}},
        {0, L"bob", false, 0, {NotFound}},
        {3, L"", false, 3, {}}, // past the end everything is empty
        {1, L"", false, 2, {}},
    };
    for (const auto& Row : Table) {
        FakeWindow::ChooseItem(ID_lstBannedNames, Row.Selected);
        FakeWindow::Type(ID_txtSearch, Row.Text);
        Outside::YesNoAnswers = {Row.Yes};
        Outside::Journal.clear();
        FakeWindow::PressEnter(ID_txtSearch);
        EXPECT_EQ(FakeWindow::SelectedItem(ID_lstBannedNames), Row.Then) << Row.Selected;
        EXPECT_EQ(Boxes(), Row.Boxes);
    }
    FakeWindow::Type(ID_txtSearch, L"Cid");
    FakeWindow::Click(ID_cmdSearchName);
    EXPECT_EQ(FakeWindow::TopItem(ID_lstBannedNames), 3);
    FakeWindow::Type(ID_txtSearchIp, L"10.");
    FakeWindow::Click(ID_cmdSearchIp);
    EXPECT_EQ(Boxes(), Lines{L"Box Failed! IP Address not found!"});
}

// --- Import

TEST_F(Tabs, ImportedEntriesAppearInTheListsAlsoWhenItBreaksOff) {
    const auto Line = [](std::wstring Address, std::wstring Name, TextView Reason) {
        Address.resize(19, L' ');
        Name.resize(21, L' ');
        return Address + Name + std::wstring(Reason) + L"\r\n";
    };
    Outside::PutFile(L"C:\\ban.txt", Line(L"10.0.0.5", L"Bob;", L"cheat.") + Line(L"", L"*Eve;", L"x.") +
                                         Line(L"10.0.0.6", L"", L""));
    Open();
    FakeWindow::MenuChoices = {ID_mnuMerrow300};
    FakeWindow::RightClick(ID_lstBannedIps); // Cancel
    EXPECT_EQ(Boxes(), Lines{L"AskOpenFile Locate Merrows OstraSM Ban File Text Documents (*.txt)|*.txt"});
    Outside::OpenFileAnswer = L"C:\\ban.txt";
    FakeWindow::MenuChoices = {ID_mnuMerrow300};
    FakeWindow::RightClick(ID_lstBannedNames);
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), (Lines{L"[1] Bob", L"[2] *Eve"}));
    EXPECT_EQ(FakeWindow::ItemData(ID_lstBannedNames, 1), 2);
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps), Lines{L"10.0.0.5"});
    EXPECT_TRUE(Outside::Recorded(L"Box").empty()) << "it broke off, which is not told";
    Outside::PutFile(L"C:\\ban.txt", Line(L"10.0.0.5", L"Bob;", L"cheat."));
    FakeWindow::MenuChoices = {ID_mnuMerrow300};
    FakeWindow::RightClick(ID_lstBannedNames);
    EXPECT_EQ(Outside::Recorded(L"Box"),
              Lines{L"Box Success Ban File Parsed Successfully\r\n\r\nTotal Items Found: 2\r\nTotal Items "
                    L"Added: 1\r\nTotal Items Skipped: 1\r\nTotal Invalid Items: 0"});
    EXPECT_FALSE(FakeWindow::HourglassIsShown());
}

// --- Settings

TEST_F(Tabs, StoredSettingsAreShownAndNothingElseIsWritten) {
    const auto Shown = [] {
        return std::wstring(FakeWindow::IsOn(ID_optMethod + 1) ? L"1" : L"0") +
               (FakeWindow::IsOn(ID_chkIdlePunt) ? L" 1 " : L" 0 ") + FakeWindow::Text(ID_txtIdleMax) +
               (FakeWindow::IsOn(ID_chkRefresh) ? L" 1 " : L" 0 ") + FakeWindow::Text(ID_txtRefreshInterval);
    };
    Open();
    EXPECT_EQ(Shown(), L"0 0 5 0 30");
    EXPECT_FALSE(Outside::HasFile(PlayersIni));
    const struct {
        TextView Method, Idle, Minutes, Refresh, Seconds, Shown;
    } Table[] = {
        {L"1", L"1", L"10", L"1", L"60", L"1 1 10 1 60"}, {L"0", L"0", L"05", L"0", L"0.5", L"0 0 5 0 5"},
        {L"2", L"yes", L"0", L"on", L"0", L"0 0 5 0 5"},  {L"", L"", L"", L"", L"", L"0 0 5 0 5"},
        {L"0", L"1", L"x", L"0", L"1.5", L"0 1 5 0 1.5"},
    };
    for (const auto& Row : Table) {
        for (const auto& [Name, Value] :
             {std::pair(L"BanMethod", Row.Method), std::pair(L"IdlePunt", Row.Idle),
              std::pair(L"IdleMax", Row.Minutes), std::pair(L"AutoRefresh", Row.Refresh),
              std::pair(L"RefreshInterval", Row.Seconds)})
            Outside::PutIni(PlayersIni, Name, L"Server1", Value);
        const std::wstring Before = Outside::FileText(PlayersIni);
        Open();
        EXPECT_EQ(Shown(), Row.Shown);
        if (!Row.Method.empty()) {
            EXPECT_EQ(Outside::FileText(PlayersIni), Before);
        }
        EXPECT_EQ(Outside::IniValue(PlayersIni, L"BanMethod", L"Server1"),
                  Row.Method.empty() ? L"0" : Row.Method);
        EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrRefresh) != 0, FakeWindow::IsOn(ID_chkRefresh));
    }
}

TEST_F(Tabs, EachSettingIsStoredAtOnce) {
    Open();
    const auto Stored = [](TextView Name) { return Outside::IniValue(PlayersIni, Name, L"Server1"); };
    FakeWindow::Click(ID_optMethod + 1);
    EXPECT_EQ(Stored(L"BanMethod"), L"1");
    FakeWindow::Click(ID_optMethod);
    EXPECT_EQ(Stored(L"BanMethod"), L"0");
    FakeWindow::Click(ID_chkIdlePunt);
    EXPECT_EQ(Stored(L"IdlePunt"), L"1");
    FakeWindow::Click(ID_chkIdlePunt);
    EXPECT_EQ(Stored(L"IdlePunt"), L"0");
    for (const auto& [Typed, Kept] :
         {std::pair(L"12", L"12"), std::pair(L"12x", L"12"), std::pair(L"", L"12"), std::pair(L"0", L"0")}) {
        FakeWindow::Type(ID_txtIdleMax, Typed);
        FakeWindow::Type(ID_txtRefreshInterval, Typed);
        EXPECT_EQ(Stored(L"IdleMax"), Kept);
        EXPECT_EQ(Stored(L"RefreshInterval"), Kept);
    }
    EXPECT_TRUE(Outside::Reports.empty());
}

TEST_F(Tabs, TheRefreshTimerTakesANewIntervalAtItsNextTick) {
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

TEST_F(Tabs, SlapMessagesAreAddedEditedDeletedAndSent) {
    Open();
    for (const TextView Text : {L"one", L"50% & [1] = ;|", L"three"}) {
        FakeWindow::Type(ID_txtSlap, Text);
        FakeWindow::PressEnter(ID_txtSlap);
    }
    EXPECT_EQ(Boxes(), Lines(3, L"Box Success Slap message added successfully."));
    EXPECT_EQ(FileOf(L"Slaps.ini"), L"[Messages]\r\n0=one\r\n1=50% & [1] = ;|\r\n2=three\r\n");
    EXPECT_FALSE(FakeWindow::IsEnabled(ID_cmdSlapEdit));
    FakeWindow::DoubleClick(ID_lstSlaps, 0);
    EXPECT_TRUE(FakeWindow::IsEnabled(ID_cmdSlapEdit));
    EXPECT_EQ(FakeWindow::Text(ID_txtSlap), L"one");
    FakeWindow::ChooseItem(ID_lstSlaps, 2);
    EXPECT_EQ(FakeWindow::Text(ID_txtSlap), L"");
    EXPECT_FALSE(FakeWindow::IsEnabled(ID_cmdSlapEdit));
    FakeWindow::ChooseItem(ID_lstSlaps, 0);
    FakeWindow::PressEnter(ID_lstSlaps); // stands for a double click
    FakeWindow::Type(ID_txtSlap, L"first");
    FakeWindow::PressEnter(ID_txtSlap);
    EXPECT_FALSE(FakeWindow::IsEnabled(ID_cmdSlapEdit));
    EXPECT_EQ(FileOf(L"Slaps.ini"), L"[Messages]\r\n0=first\r\n1=50% & [1] = ;|\r\n2=three\r\n");

    Game.Join(3, "Bob");
    Outside::Journal.clear();
    FakeWindow::RightClickRow(0);
    FakeWindow::MenuChoices = {ID_mnuRefresh};
    FakeWindow::RightClickRow(0);
    FakeWindow::ChooseForRow(1, ID_mnuSlapItem + 1);
    EXPECT_EQ(Outside::Journal, Lines{L"MSG 3 Bob.....50% & [1] = ;|"});

    FakeWindow::ChooseItem(ID_lstSlaps, 1);
    FakeWindow::Click(ID_cmdSlapDelete);
    EXPECT_EQ(FileOf(L"Slaps.ini"), L"[Messages]\r\n0=first\r\n1=three\r\n");
    EXPECT_EQ(FakeWindow::Items(ID_lstSlaps), (Lines{L"first", L"three"}));
    FakeWindow::Click(ID_cmdSlapDelete); // nothing is selected any more
    EXPECT_EQ(Outside::Reports, Lines{L"cmdSlapDelete: 5 Invalid procedure call or argument"});
    EXPECT_EQ(FileOf(L"Slaps.ini"), L"[Messages]\r\n0=first\r\n1=three\r\n");
    for (int Left = 2; Left > 0; --Left) {
        FakeWindow::DoubleClick(ID_lstSlaps, 0);
        FakeWindow::Click(ID_cmdSlapDelete);
        EXPECT_FALSE(FakeWindow::IsEnabled(ID_cmdSlapEdit)) << "what was edited is gone";
    }
    FakeWindow::RightClickRow(1);
    EXPECT_EQ(FakeWindow::LastMenu()[0], L"Punt Player") << "without messages there is no sub-menu";
}

// --- The window's life

TEST_F(Tabs, AnotherProfileShowsNothingOfTheOneBefore) {
    BanName(L"Bob[1]");
    BanIp(L"10.0.0.7");
    Outside::PutIni(SettingsFile(L"Slaps.ini"), L"Messages", L"0", L"go away");
    Game.Join(3, "Bob");
    Open();
    FakeWindow::ChooseRow(1);
    FakeWindow::DoubleClick(ID_lstSlaps, 0);
    Open(6, L"Empty");
    for (const int List : {ID_lstBannedNames, ID_lstBannedIps, ID_lstSlaps})
        EXPECT_TRUE(FakeWindow::Items(List).empty()) << List;
    for (const int Label : {ID_lblName, ID_lblDate, ID_lblReason, ID_lblIp, ID_lblIpDate, ID_txtSlap})
        EXPECT_EQ(FakeWindow::Text(Label), L"") << Label;
    EXPECT_FALSE(FakeWindow::IsEnabled(ID_cmdSlapEdit));
    EXPECT_EQ(FakeWindow::SelectedRow(), 0);
    FakeWindow::RightClickRow(1);
    EXPECT_EQ(FakeWindow::LastMenu()[0], L"Punt Player");
    // The same profile again: what has no file stays as it was.
    Open();
    Outside::RemoveAll(L"C:\\Host\\profiles\\Server1\\settings");
    Open();
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), Lines{L"[1] Bob"});
    EXPECT_EQ(FakeWindow::Items(ID_lstSlaps), Lines{L"go away"});
}

TEST_F(Tabs, HidingStopsTheRefreshAndLeavesTheSweepsRunning) {
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
    DisableProfile(6);
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrVN + 6), 0);
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrVN + Profile), 5000);
    // The host's window may go without a word; the next load begins anew.
    FakeWindow::HostDestroysItsWindow();
    EXPECT_FALSE(frmVNT::IsLoaded());
    Outside::Reports.clear();
    Open();
    EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrVN + Profile), 5000);
    FakeWindow::TimersLeft = 0;
    Open(7, L"Server3");
    EXPECT_EQ(Outside::Reports, Lines{L"LoadInterface: 7 Out of memory"});
    Outside::Reports.clear();
    LoadInterface(8, 1234, HostData());
    EXPECT_EQ(Outside::Reports, Lines{L"LoadInterface: 5 Invalid procedure call or argument"});
}

// --- Odd names

TEST_F(Tabs, OddNamesArriveEverywhereAsTheyAre) {
    std::wstring High;
    for (wchar_t Letter = 128; Letter < 256; ++Letter) High += Letter;
    for (const std::wstring& Name :
         {std::wstring(L"50% off"), std::wstring(L"R&B"), std::wstring(L"\"quoted\""), std::wstring(L"a[1]b"),
          std::wstring(L"x|y;z"), std::wstring(L"tab\there"), High.substr(0, 40), High.substr(88)}) {
        FakeWindow::Reset();
        Outside::RemoveAll(L"C:\\Host\\profiles\\Server1\\settings");
        Game.Join(3, std::string(Name.begin(), Name.end()), "10.0.0.7");
        Open();
        FakeWindow::ChooseForRow(1, ID_mnuBan2);
        EXPECT_EQ(Outside::Recorded(L"MSG"),
                  Lines{L"MSG 3 " + Name + L" has been banned by the Server Admin!"});
        EXPECT_TRUE(Outside::Recorded(L"Box").empty());
        frmVNT::FormReload();
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), Lines{L"[1] " + Name});
        EXPECT_EQ(FakeWindow::Text(ID_lblName), Name);
        FakeWindow::Type(ID_txtSearch, Name);
        FakeWindow::Click(ID_cmdSearchName);
        EXPECT_TRUE(Boxes().empty());
        Outside::YesNoAnswers = {true};
        FakeWindow::Click(ID_cmdRemoveName);
        EXPECT_EQ(FileOf(L"BannedNames.ini"), L"[Players]\r\n");
        EXPECT_EQ(FileOf(L"BannedIps.ini"), L"[IpAddresses]\r\n");
        EXPECT_TRUE(FakeWindow::Items(ID_lstBannedIps).empty());
    }
    EXPECT_EQ(Outside::Reports, Lines());
}

// --- Layout

bool Overlap(const Rect& A, const Rect& B) {
    return A.X < B.X + B.Width && B.X < A.X + A.Width && A.Y < B.Y + B.Height && B.Y < A.Y + A.Height;
}
bool Contains(const Rect& Outer, const Rect& Inner) {
    return Inner.X >= Outer.X && Inner.Y >= Outer.Y && Inner.X + Inner.Width <= Outer.X + Outer.Width &&
           Inner.Y + Inner.Height <= Outer.Y + Outer.Height;
}

TEST_F(Tabs, TheLayoutShowsEveryControlWholeAtEverySize) {
    const auto Size96 = SmallestLayout();
    EXPECT_LE(Size96.Width, 480);
    EXPECT_LE(Size96.Height, 372);
    for (const int Dpi : {96, 120, 144, 192}) {
        FakeWindow::PixelsPerInch = Dpi;
        for (const auto& [Width, Height] :
             {std::pair(0, 0), std::pair(480, 372), std::pair(700, 400), std::pair(480, 900),
              std::pair(1200, 900), std::pair(2400, 1700)}) {
            std::map<int, Rect> Where;
            for (const Placed& Each : LayOut(Width * Dpi / 96, Height * Dpi / 96))
                EXPECT_TRUE(Where.emplace(Each.Id, Each.Where).second) << Each.Id;
            for (const ControlRow& Row : Controls()) {
                if (Row.What == Kind::HiddenLabel) continue;
                ASSERT_EQ(Where.count(Row.Id), 1u) << Row.Id;
                const Rect& Place = Where[Row.Id];
                EXPECT_GT(Place.Width, 0) << Row.Id;
                EXPECT_GT(Place.Height, 0) << Row.Id;
                if (Row.Parent != 0) {
                    const Rect& Page = Where[Row.Parent];
                    EXPECT_TRUE(Contains({0, 0, Page.Width, Page.Height}, Place))
                        << Row.Id << " at " << Width;
                }
                if (Row.What == Kind::Push || Row.What == Kind::Option || Row.What == Kind::Check) {
                    EXPECT_GT(Place.Width, Measure::TextWidth(Row.Caption)) << Row.Id;
                } else if (Row.What == Kind::Caption) {
                    EXPECT_GE(Place.Height, Measure::TextHeight(Row.Caption, Place.Width)) << Row.Id;
                }
            }
            for (const ControlRow& A : Controls())
                for (const ControlRow& B : Controls()) {
                    const bool Holds = A.What == Kind::Frame || A.What == Kind::Tab || A.What == Kind::Page;
                    if (A.Id == B.Id || A.Parent != B.Parent || Where.count(A.Id) == 0 ||
                        Where.count(B.Id) == 0 || B.What == Kind::Page || B.What == Kind::Tab)
                        continue;
                    const bool Fine =
                        !Overlap(Where[A.Id], Where[B.Id]) ||
                        (Holds ? Contains(Where[A.Id], Where[B.Id]) : Contains(Where[B.Id], Where[A.Id]));
                    EXPECT_TRUE(Fine)
                        << A.Id << " and " << B.Id << " at " << Width << " x " << Height << ", " << Dpi;
                }
        }
    }
}

} // namespace
