// The ban lists in the window: add, remove with what is linked, search, details, import.
#include "lists/ban_lists.h"
#include "tests/native/window_fixture.h"

namespace {

// --- Banned names

TEST_F(Window, NamesAreAddedWithTheirTagAndReason) {
    Open();
    const auto Add = [](TextView Name, TextView Reason, int Option) {
        Outside::Journal.clear();
        FakeWindow::Type(ID_txtBannedName, Name);
        FakeWindow::Type(ID_txtBanReason, Reason);
        FakeWindow::Click(ID_optBanned + Option);
        FakeWindow::Click(ID_cmdAddName);
    };
    Add(L"Bob", L"", 0);
    Add(L"clan", L"team killing", 1);
    EXPECT_EQ(FileOf(L"BannedNames.ini"), L"[Players]\r\nBob[1]=2024-05-06 7:08:09[-]None\r\n"
                                          L"clan[2]=2024-05-06 7:08:09[-]team killing\r\n");
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), (Lines{L"[1] Bob", L"[2] clan"}));
    EXPECT_EQ(FakeWindow::ItemData(ID_lstBannedNames, 0), 1);
    EXPECT_EQ(FakeWindow::ItemData(ID_lstBannedNames, 1), 2);
    EXPECT_EQ(FakeWindow::Text(ID_txtBannedName) + FakeWindow::Text(ID_txtBanReason), L"");
    EXPECT_TRUE(FakeWindow::IsOn(ID_optBanned));
    EXPECT_EQ(Boxes(), Lines{L"Box Success Name added successfully."});
    Add(L"[x", L"", 1); // the file takes this key for a section
    EXPECT_EQ(Boxes(), Lines{L"Box Failed! The name could not be stored in the ban list."});
    EXPECT_EQ(FakeWindow::Text(ID_txtBannedName), L"[x") << "to be mended";
    // A clan tag that no file holds: the part that one can hold, if that is wanted.
    const std::wstring Question =
        L"AskNo Add Name \"[ABC]Bob\" cannot be stored as it is. Ban everybody whose name "
        L"contains \"ABC]Bob\" instead?";
    for (const int Option : {0, 1})
        for (const bool Yes : {false, true}) {
            Outside::YesNoAnswers = {Yes};
            Add(L"[ABC]Bob", L"", Option);
            EXPECT_EQ(Boxes(),
                      Yes ? (Lines{Question, L"Box Success Name added successfully."}) : Lines{Question});
            EXPECT_EQ(FakeWindow::Text(ID_txtBannedName), Yes ? L"" : L"[ABC]Bob");
        }
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames).back(), L"[2] ABC]Bob");
    Add(L"", L"", 0);
    EXPECT_TRUE(Outside::Journal.empty()) << "an empty box adds nothing";
}

TEST_F(Window, ANameStaysWithTheProfileThatItWasTypedFor) {
    Open();
    FakeWindow::Type(ID_txtBannedName, L"[ABC]Bob");
    FakeWindow::Type(ID_txtBanReason, L"cheat");
    Outside::YesNoAnswers = {true};
    Outside::WhileBoxIsOpen = [&] { Open(TestProfile, L"Empty"); }; // the same index
    FakeWindow::Click(ID_cmdAddName);
    EXPECT_NE(FileOf(L"BannedNames.ini").find(L"[-]cheat"), std::wstring::npos);
    EXPECT_TRUE(FakeWindow::Items(ID_lstBannedNames).empty());
}

TEST_F(Window, TheListShowsEntriesAndTheirDetails) {
    Outside::PutFile(
        SettingsFile(L"BannedNames.ini"),
        L"[Players]\r\nBob[1]=2024-01-01 1:02:03[-]cheat\r\nuntagged=2024-01-01 1:02:03[-]cheat\r\n"
        L"old[2]=2024-01-01 1:02:03\r\na[1]b[2]=2024-02-02 2:02:02[-]x[-]y\r\n");
    BanIp(L"10.0.0.*");
    Open();
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), (Lines{L"[1] Bob", L"[2] a[1]b"}));
    EXPECT_EQ(FakeWindow::SelectedItem(ID_lstBannedNames), 0);
    EXPECT_EQ(FakeWindow::Text(ID_lblReason), L"cheat");
    FakeWindow::ChooseItem(ID_lstBannedNames, 1);
    EXPECT_EQ(FakeWindow::Text(ID_lblName) + FakeWindow::Text(ID_lblDate), L"a[1]b2024-02-02 2:02:02");
    FakeWindow::ChooseItem(ID_lstBannedIps, 0);
    EXPECT_EQ(FakeWindow::Text(ID_lblIp) + FakeWindow::Text(ID_lblIpDate), L"10.0.0.*2024-01-01 1:02:03");
}

TEST_F(Window, RemovingANameCanTakeItsAddressesAlong) {
    const std::wstring Question = L"AskNo Remove Banned Name Would you like to remove all associated IP "
                                  L"Addresses with this name aswell?";
    for (const bool Yes : {false, true}) {
        for (const TextView Entry : {L"Ann[1]", L"Bob[1]"}) BanName(Entry);
        for (const TextView Entry : {L"10.0.0.70", L"10.0.0.7", L"10.0.0.9"}) BanIp(Entry);
        PutLink(L"Bob", L"0", L"10.0.0.7");
        Open();
        mdlVNT::IpListChanged(TestProfile) = false;
        FakeWindow::ChooseItem(ID_lstBannedNames, 1);
        Outside::YesNoAnswers = {Yes};
        FakeWindow::Click(ID_cmdRemoveName);
        EXPECT_EQ(Boxes(), (Lines{Question, L"Box Success Name Removed Successfully."}));
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), Lines{L"[1] Ann"});
        EXPECT_EQ(FakeWindow::SelectedItem(ID_lstBannedNames), 0);
        EXPECT_EQ(FakeWindow::Text(ID_lblName), L"Ann");
        EXPECT_EQ(FileOf(L"BannedNames.ini").find(L"Bob"), std::wstring::npos);
        EXPECT_FALSE(mdlVNT::IpListChanged(TestProfile));
        // The list loses the first item that begins with the address, the file the address itself.
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps),
                  Yes ? (Lines{L"10.0.0.7", L"10.0.0.9"}) : (Lines{L"10.0.0.70", L"10.0.0.7", L"10.0.0.9"}));
        EXPECT_EQ(Outside::IniValue(SettingsFile(L"BannedIps.ini"), L"IpAddresses", L"10.0.0.7").empty(),
                  Yes);
        EXPECT_FALSE(Outside::IniValue(SettingsFile(L"BannedIps.ini"), L"IpAddresses", L"10.0.0.70").empty());
    }
    for (const TextView Entry : {L"Bob[1]", L"Cid[1]"}) BanName(Entry);
    frmVNT::FormReload();
    FakeWindow::ChooseItem(ID_lstBannedNames, 1);
    for (const TextView Neighbour : {L"Ann", L"Cid", L""}) {
        FakeWindow::PressDelete(ID_lstBannedNames);
        EXPECT_EQ(FakeWindow::Text(ID_lblName), Neighbour);
    }
    EXPECT_EQ(FakeWindow::Text(ID_lblDate) + FakeWindow::Text(ID_lblReason), L"");
    Outside::Journal.clear();
    FakeWindow::Click(ID_cmdRemoveName);
    EXPECT_TRUE(Outside::Journal.empty()) << "an empty list has nothing to remove";
}

// --- Banned addresses

TEST_F(Window, AddressesAreCheckedAndAdded) {
    Open();
    for (const TextView Text : {L"10.0.0.7", L"127.0.*", L"-5.1.1.1", L"10.0.0.7"}) {
        mdlVNT::IpListChanged(TestProfile) = false;
        Outside::Journal.clear();
        FakeWindow::Type(ID_txtAddIp, Text);
        FakeWindow::PressEnter(ID_txtAddIp);
        EXPECT_EQ(Boxes(), Lines{L"Box Success IP Address added successfully."});
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps).back(), Text);
        EXPECT_EQ(FakeWindow::Text(ID_txtAddIp), L"");
        EXPECT_TRUE(mdlVNT::IpListChanged(TestProfile));
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

TEST_F(Window, RemovingAnAddressCanTakeItsNamesAlong) {
    const std::wstring Question = L"AskNo Remove Banned IP Address Would you like to remove all associated "
                                  L"names with this IP Address aswell?";
    for (const bool Yes : {false, true}) {
        Outside::RemoveAll(L"C:\\Host\\profiles\\Server1\\settings");
        for (const TextView Entry : {L"Bobby[1]", L"Bob[1]", L"Bob[2]", L"Ann[1]"}) BanName(Entry);
        for (const TextView Entry : {L"10.0.0.7", L"10.0.0.9"}) BanIp(Entry);
        PutLink(L"Bob", L"0", L"10.0.0.7");
        PutLink(L"Bob", L"1", L"10.0.0.8");
        PutLink(L"Ann", L"0", L"10.0.0.7");
        Open();
        mdlVNT::IpListChanged(TestProfile) = false;
        Outside::YesNoAnswers = {Yes};
        FakeWindow::Click(ID_cmdRemoveIp);
        EXPECT_EQ(Boxes(), (Lines{Question, L"Box Success IP Address Removed Successfully."}));
        EXPECT_TRUE(mdlVNT::IpListChanged(TestProfile));
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps), Lines{L"10.0.0.9"});
        // Bobby goes from the list, as the first that begins like Bob; Bob goes from the file.
        EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames),
                  Yes ? (Lines{L"[1] Bob", L"[2] Bob"})
                      : (Lines{L"[1] Bobby", L"[1] Bob", L"[2] Bob", L"[1] Ann"}));
    }
    EXPECT_EQ(GetBannedNames(TestProfile), (Lines{L"[1] Bobby", L"[2] Bob"}));
    EXPECT_EQ(FileOf(L"BannedReference.ini"), L"[Bob]\r\n0=10.0.0.8\r\n");
}

// --- Search

TEST_F(Window, SearchGoesOnFromTheSelectedItem) {
    for (const TextView Entry : {L"Ann[1]", L"Bob[1]", L"Bobby[2]", L"Cid[1]"}) BanName(Entry);
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

// A line of the other manager's ban file.
std::wstring ForeignLine(std::wstring Address, std::wstring Name, TextView Reason) {
    Address.resize(19, L' ');
    Name.resize(21, L' ');
    return Address + Name + std::wstring(Reason) + L"\r\n";
}

void ImportBans() {
    FakeWindow::MenuChoices = {ID_mnuMerrow300};
    FakeWindow::RightClick(ID_lstBannedNames);
}

TEST_F(Window, ImportedEntriesAppearInTheListsAlsoWhenItBreaksOff) {
    const std::wstring Bob = ForeignLine(L"10.0.0.5", L"Bob;", L"cheat.");
    Outside::PutFile(L"C:\\ban.txt",
                     Bob + ForeignLine(L"", L"*Eve;", L"x.") + ForeignLine(L"10.0.0.6", L"", L""));
    Open();
    FakeWindow::MenuChoices = {ID_mnuMerrow300};
    FakeWindow::RightClick(ID_lstBannedIps); // Cancel
    EXPECT_EQ(Boxes(), Lines{L"AskOpenFile Locate Merrows OstraSM Ban File Text Documents (*.txt)|*.txt"});
    Outside::OpenFileAnswer = L"C:\\ban.txt";
    ImportBans();
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), (Lines{L"[1] Bob", L"[2] *Eve"}));
    EXPECT_EQ(FakeWindow::ItemData(ID_lstBannedNames, 1), 2);
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps), Lines{L"10.0.0.5"});
    EXPECT_TRUE(Outside::Recorded(L"Box").empty()) << "it broke off, which is not told";
    Outside::PutFile(L"C:\\ban.txt", Bob);
    ImportBans();
    EXPECT_EQ(Outside::Recorded(L"Box"),
              Lines{L"Box Success Ban File Parsed Successfully\r\n\r\nTotal Items Found: 2\r\nTotal Items "
                    L"Added: 1\r\nTotal Items Skipped: 1\r\nTotal Invalid Items: 0"});
    EXPECT_FALSE(FakeWindow::HourglassIsShown());
}

// --- Cancel

TEST_F(Window, CancelEndsLongWorkAfterTheCurrentEntry) {
    std::wstring File;
    for (const TextView Digit : {L"1", L"2", L"3", L"4", L"5"})
        File += ForeignLine(L"10.0.0." + std::wstring(Digit), L"Bob;", L"cheat.");
    Outside::PutFile(L"C:\\ban.txt", File);
    Outside::OpenFileAnswer = L"C:\\ban.txt";
    Open();
    FakeWindow::CancelAfter = 3;
    ImportBans();
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps), (Lines{L"10.0.0.1", L"10.0.0.2", L"10.0.0.3"}));
    EXPECT_EQ(Boxes().back(),
              L"Box Success Ban File Parsed in Part\r\n\r\nTotal Items Found: 6\r\nTotal Items Added: "
              L"6\r\nTotal Items Skipped: 0\r\nTotal Invalid Items: 0\r\n\r\nCancelled after 3 of 5.");

    frmVNT::FormReload();
    FakeWindow::CancelAfter = 2;
    Outside::YesNoAnswers = {true};
    FakeWindow::Click(ID_cmdRemoveName);
    EXPECT_EQ(Boxes().back(), L"Box Success Name Removed Successfully.\r\n\r\nCancelled after 2 of 3.");
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps), Lines{L"10.0.0.3"});
    EXPECT_EQ(FakeWindow::Text(ID_lblIp), L"10.0.0.3") << "the details follow the selection";
    EXPECT_NE(FileOf(L"BannedReference.ini").find(L"10.0.0.3"), std::wstring::npos) << "the link stays";
}

} // namespace
