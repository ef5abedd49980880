// What the host does inside a call of ours, in every call: its helper objects may pump messages.
#include <algorithm>

#include "enforcement/permanent_lists.h"
#include "enforcement/sweep.h"
#include "lists/slap_messages.h"
#include "sandbox/game/records.h"
#include "tests/native/window_fixture.h"
#include "window/ids.h"

namespace {

constexpr const wchar_t* Bob = L"Qm9i"; // in Base64
constexpr Long Other = TestProfile + 1;
constexpr Long OtherProcess = 4712;
constexpr TextView ListFiles[] = {L"BannedNames.ini", L"BannedIps.ini", L"Slaps.ini", L"BannedReference.ini"};

std::wstring OtherFile(TextView Name) {
    return L"C:\\Host\\profiles\\Server2\\settings\\" + std::wstring(Name);
}
std::wstring OtherFiles() {
    std::wstring All;
    for (const TextView Name : ListFiles) All += Outside::FileText(OtherFile(Name));
    return All;
}

// Does Outer, again and again, with Inner inside its first call, its second, and so on; and what is needed
// before and looked at after. A prefix leaves other calls alone.
void InEveryCall(const std::function<void()>& Before, const std::function<void()>& Outer,
                 const std::function<void()>& Inner, const std::function<void()>& After,
                 TextView Prefix = {}) {
    long Seen = 1;
    for (long At = 1; Seen >= At; ++At) {
        SCOPED_TRACE(testing::Message() << "call " << At);
        Before();
        Seen = 0;
        Outside::BeforeCall = [&](TextView Name) {
            if (Name.starts_with(Prefix) && ++Seen == At) Inner();
        };
        Outer();
        Outside::BeforeCall = nullptr;
        if (Seen >= At) After();
    }
}

class Interrupted : public Window {
protected:
    Interrupted() {
        Second.Memory = Owned.Memory;
        Second.Setup = Game.World.Setup;
    }
    // Two servers with players in the same slots, and lists for both; the first one's window is open.
    void Begin() {
        FakeWindow::Reset();
        Outside::Reports.clear();
        Outside::Journal.clear();
        for (Simulation::Game* World : {&Game.World, &Second}) Simulation::Start(*World);
        Outside::AttachGame(OtherProcess, &Second);
        Game.Join(1, "Alice", "10.0.0.1");
        Game.Join(3, "Bob", "10.0.0.7");
        for (const int Slot : {1, 3}) Simulation::Join(Second, Slot, "Xena", "10.1.0.1", 1, 50);
        for (auto* const List : {&mdlVNT::KillPermList, &mdlVNT::DisarmPermList})
            (*List)(TestProfile) = NameList();
        Outside::PutFile(SettingsFile(L"BannedNames.ini"),
                         L"[Players]\r\nAlice[1]=d[-]r\r\nEve[1]=d[-]r\r\n");
        Outside::PutFile(SettingsFile(L"BannedIps.ini"), L"[IpAddresses]\r\n10.0.0.1=d\r\n");
        Outside::PutFile(SettingsFile(L"Slaps.ini"), L"[Messages]\r\n0=one\r\n1=two\r\n2=three\r\n");
        Outside::PutFile(OtherFile(L"BannedNames.ini"), L"[Players]\r\nEve[1]=d[-]r\r\n");
        Outside::PutFile(OtherFile(L"BannedIps.ini"), L"[IpAddresses]\r\n10.0.0.2=d\r\n");
        Outside::PutFile(OtherFile(L"Slaps.ini"), L"[Messages]\r\n0=uno\r\n1=dos\r\n2=tres\r\n");
        Open();
    }
    static void LoadOther() { Load(Other, 77, HostData(L"Server2", L"DF", 99)); } // its server has ended

    PrivateMemory Owned;
    Simulation::Game Second;
};

const std::function<void()> Requests[] = {
    [] { tmrVN_Timer(TestProfile); },
    [] { Call(PuntPlayerRem, Request(std::wstring(Bob) + L"|10.0.0.7|3|x|" + Bob)); },
    [] { Call(ArmPlayerRem, Request(std::wstring(Bob) + L"|Disarm")); },
    [] { Call(ArmPlayerRem, Request(std::wstring(Bob) + L"|Kill")); },
    [] { Call(AddBannedRem, Request(L"TWF4WzFd||Name")); },
    [] { Call(RemoveBannedRem, Request(L"RXZl|Name|1")); }, // Eve
    [] { Call(AddSlapRem, Request(L"new")); },
    [] { Call(EditSlapRem, Request(L"one|four")); },
    [] { Call(DeleteSlapRem, Request(L"one")); }};

void TypeEverything() {
    FakeWindow::Type(ID_txtBannedName, L"Bob");
    FakeWindow::Type(ID_txtAddIp, L"10.0.0.7");
    FakeWindow::DoubleClick(ID_lstSlaps, 0);
    FakeWindow::Type(ID_txtSlap, L"Hello.");
}

std::vector<std::function<void()>> WindowActions() {
    std::vector<std::function<void()>> Actions;
    for (const int Button : {ID_cmdAddName, ID_cmdRemoveName, ID_cmdAddIp, ID_cmdRemoveIp, ID_cmdSlapAdd,
                             ID_cmdSlapEdit, ID_cmdSlapDelete})
        Actions.emplace_back([Button] { FakeWindow::Click(Button); });
    for (const int Entry : {ID_mnuRefresh, ID_mnuPunt, ID_mnuBan2, ID_mnuKill})
        Actions.emplace_back([Entry] { FakeWindow::ChooseForRow(1, Entry); });
    return Actions;
}

} // namespace

TEST_F(Interrupted, AnIndexThatIsGivenToAnotherServerTakesNothingAlong) {
    std::vector<std::function<void()>> Actions = WindowActions();
    Actions.insert(Actions.end(), std::begin(Requests), std::end(Requests));
    for (std::size_t Row = 0; Row < Actions.size(); ++Row) {
        SCOPED_TRACE(testing::Message() << "action " << Row);
        std::wstring Before;
        InEveryCall(
            [&] {
                Begin();
                TypeEverything();
                mdlVNT::KillPermList(TestProfile).Add(L"Bob", L"Bob");
                Before = OtherFiles();
            },
            Actions[Row], [] { SetProfileData(TestProfile, HostData(L"Server2", L"DF", OtherProcess)); },
            [&] {
                for (const int Slot : {1, 3}) {
                    EXPECT_TRUE(Second.Players[Slot].Present);
                    EXPECT_GT(Simulation::ReadLong(Second.Memory, Simulation::EntityAt(Second, Slot) +
                                                                      Layout::Entity::LifeState),
                              1);
                    EXPECT_EQ(Simulation::ReadLong(Second.Memory, Simulation::RecordAt(Second, Slot) +
                                                                      Layout::Statistics::Armed),
                              1);
                }
                EXPECT_EQ(OtherFiles(), Before);
            });
    }
}

TEST_F(Interrupted, AConsoleGetsNoListsOfAnotherServer) {
    std::wstring Reply;
    InEveryCall([&] { Begin(); }, [&] { Reply = CallGetPlayersRem(Request(L"")); },
                [] { SetProfileData(TestProfile, HostData(L"Server2", L"DF", OtherProcess)); },
                [&] { EXPECT_EQ(Reply.find(L"uno"), std::wstring::npos); });
}

TEST_F(Interrupted, AProfileThatIsLoadedShowsWhatIsItsOwn) {
    std::vector<std::function<void()>> Actions = WindowActions();
    Actions.emplace_back([&] { Load(TestProfile + 2, 77, HostData(L"Server3")); });
    for (std::size_t Row = 0; Row < Actions.size(); ++Row) {
        SCOPED_TRACE(testing::Message() << "action " << Row);
        InEveryCall(
            [&] {
                Begin();
                TypeEverything();
            },
            Actions[Row], LoadOther,
            [&] {
                EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), Lines{L"[1] Eve"});
                EXPECT_EQ(FakeWindow::Text(ID_lblName), L"Eve");
                EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps), Lines{L"10.0.0.2"});
                EXPECT_EQ(FakeWindow::Items(ID_lstSlaps), (Lines{L"uno", L"dos", L"tres"}));
                EXPECT_TRUE(FakeWindow::Rows().empty());
                EXPECT_EQ(mdlVNT::CurrentProfile, Other);
            });
    }
}

// A load that was overtaken fills nothing any more: a click would go to the other profile's files.
TEST_F(Interrupted, AClickGoesToTheProfileThatIsShown) {
    for (long Loaded = 1; Loaded < 110; ++Loaded)
        for (long Click = Loaded + 1; Click < 110; ++Click) {
            Begin();
            long Seen = 0;
            Outside::BeforeCall = [&](TextView) {
                const long Number = ++Seen;
                if (Number == Loaded) std::exchange(Seen, -1000), LoadOther(), Seen = Number;
                if (Number != Click || mdlVNT::CurrentProfile != Other) return;
                EXPECT_LT(FakeWindow::Items(ID_lstBannedNames).size(), 2u) << Loaded << ", " << Click;
                EXPECT_EQ(std::ranges::count(FakeWindow::Items(ID_lstSlaps), L"one"), 0)
                    << Loaded << ", " << Click;
            };
            Load(TestProfile, 77, HostData());
            Outside::BeforeCall = nullptr;
        }
}

TEST_F(Interrupted, AClickOnTheListsOfAProfileThatIsNoMoreShowsThePresentOne) {
    Begin();
    FakeWindow::ChooseItem(ID_lstBannedNames, 1); // Eve, whom both have banned
    CallGetPlayersRem(RemoteRequest{TestProfile, HostData(L"Server2"), HostValue{}});
    FakeWindow::Click(ID_cmdRemoveName);
    EXPECT_NE(Outside::FileText(OtherFile(L"BannedNames.ini")).find(L"Eve"), std::wstring::npos);
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), Lines{L"[1] Eve"});
}

// What is typed while a profile is being loaded belongs to that one, and so does the text it is typed into.
TEST_F(Interrupted, ASettingIsNotMadeOfAnotherProfilesText) {
    InEveryCall(
        [&] {
            Begin();
            Outside::PutIni(PlayersIni, L"IdleMax", L"Server1", L"30");
            Outside::PutIni(PlayersIni, L"IdleMax", L"Server2", L"5");
            Open();
        },
        [] { Load(Other, 77, HostData(L"Server2")); },
        [] { FakeWindow::Type(ID_txtIdleMax, FakeWindow::Text(ID_txtIdleMax) + L"1"); },
        [] { EXPECT_EQ(Outside::IniValue(PlayersIni, L"IdleMax", L"Server2"), L"1"); }, L"Read");
}

TEST_F(Interrupted, AProfileThatIsClosedOrHiddenInsideItsLoadStaysSo) {
    const std::function<void()> Closings[] = {UnLoad, [] { Disable(TestProfile); },
                                              [] { FakeWindow::HostDestroysItsWindow(); }, HideInterface};
    for (const std::function<void()>& Close : Closings) {
        const bool Hides = &Close == &Closings[3];
        InEveryCall(
            [&] {
                Begin();
                Disable(TestProfile);
                Outside::PutIni(PlayersIni, L"AutoRefresh", L"Server1", L"1");
            },
            [] { Load(TestProfile, 77, HostData()); }, Close,
            [&] {
                EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrVN + TestProfile) != 0, Hides);
                for (const std::wstring& Report : Outside::Reports)
                    EXPECT_FALSE(Report.starts_with(L"LoadInterface"));
                EXPECT_TRUE(!Hides || FakeWindow::IntervalOf(ID_tmrRefresh) == 0);
                EXPECT_TRUE(!Hides || !FakeWindow::IsShown());
            });
    }
}

TEST_F(Interrupted, AWindowThatWentComesBackWhole) {
    InEveryCall([&] { Begin(); }, [] { FakeWindow::Command(ID_mnuRefresh); },
                [] {
                    Load(TestProfile, 77, HostData());
                    UnLoad();
                    CallGetPlayersRem(Request(L""));
                },
                [] {
                    Load(TestProfile, 77, HostData());
                    EXPECT_EQ(FakeWindow::Rows().size(), 2u);
                });
}

// Of two changes at once the second is refused.
TEST_F(Interrupted, NoSlapMessageIsLost) {
    InEveryCall([&] { Begin(); }, Requests[6], [] { Call(AddSlapRem, Request(L"four")); },
                [] { EXPECT_EQ(ReadSlaps(TestProfile)->size() + Outside::Reports.size(), 5u); });
    InEveryCall([&] { Begin(); }, Requests[7], [] { Call(DeleteSlapRem, Request(L"two")); },
                [] {
                    const Lines Left = ReadSlaps(TestProfile).value();
                    EXPECT_EQ(std::ranges::count(Left, L"three"), 1);
                });
}

TEST_F(Interrupted, APermanentKillGivenInsideATickStays) {
    InEveryCall(
        [&] {
            Begin();
            mdlVNT::KillPermList(TestProfile).Add(L"Bob", L"Bob");
        },
        Requests[0],
        [&] {
            Game.Join(7, "Rita", "10.0.0.9");
            EXPECT_EQ(Call(ArmPlayerRem, Request(L"Uml0YQ==|KillPerm")), 1);
        },
        [] { EXPECT_TRUE(InKillPermList(TestProfile, L"Rita")); });
}

TEST_F(Interrupted, TheSummaryCountsEachPlayerOnce) {
    InEveryCall([&] { Begin(); }, [] { FakeWindow::Command(ID_mnuRefresh); },
                [] { CallGetPlayersRem(Request(L"")); },
                [] { EXPECT_EQ(FakeWindow::Text(ID_lblTeams), L"Blue Team: 2, Red Team: 0"); });
}

TEST_F(Interrupted, TheSlapThatWasChosenIsSentOrNone) {
    Begin();
    FakeWindow::WhileNextMenuIsOpen = [] {
        Call(DeleteSlapRem, Request(L"one"));
        Load(TestProfile, 77, HostData());
    };
    FakeWindow::ChooseForRow(0, ID_mnuSlapItem);
    EXPECT_EQ(Outside::Recorded(L"MSG"), Lines());
}
