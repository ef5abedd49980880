// What the host does inside a call of ours, in every call: its helper objects may pump messages.
#include <algorithm>
#include <cstdio>
#include <new>

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
constexpr TextView Changed = L": 5 The profile has changed meanwhile.";

std::wstring OtherFiles() {
    std::wstring All;
    for (const TextView Name : {L"BannedNames.ini", L"BannedIps.ini", L"Slaps.ini", L"BannedReference.ini"})
        All += Outside::FileText(L"C:\\Host\\profiles\\Server2\\settings\\" + std::wstring(Name));
    return All;
}

// Runs Outer with Inner inside its call number At (0: in none), boxes counted with the calls. Returns how
// many there were.
long RunWith(const std::function<void()>& Outer, long At = 0, const std::function<void()>& Inner = {}) {
    long Seen = 0;
    const auto Count = [&] {
        if (++Seen == At) Inner();
    };
    Outside::BeforeCall = [&](TextView) { Count(); };
    Outside::WhileBoxIsOpen = Count;
    Outer();
    Outside::BeforeCall = nullptr;
    Outside::WhileBoxIsOpen = nullptr;
    return Seen;
}

struct Action {
    const char* What;
    std::function<void()> Do;
    const RemoteMember<Long>* Member = nullptr; // of a console's request
};

Action Ask(const char* What, const RemoteMember<Long>& Member, std::wstring Data) {
    return {What, [&Member, Data] { Call(Member, Request(Data)); }, &Member};
}
Action Choose(const char* What, int Entry) {
    return {What, [Entry] { FakeWindow::ChooseForRow(1, Entry); }};
}
Action Press(const char* What, int Button) {
    return {What, [Button] { FakeWindow::Click(Button); }};
}

const Action Actions[] = {
    {"tick", [] { tmrVN_Timer(TestProfile); }},
    {"tick, kernel driver",
     [] {
         Outside::PutIni(PlayersIni, L"BanMethod", L"Server1", L"1");
         mdlVNT::IpListChanged(TestProfile) = true;
         tmrVN_Timer(TestProfile);
     }},
    {"GetPlayersRem", [] { CallGetPlayersRem(Request(L"")); }},
    Ask("punt", PuntPlayerRem, std::wstring(Bob) + L"|10.0.0.7|3"),
    Ask("ban", PuntPlayerRem, std::wstring(Bob) + L"|10.0.0.7|3|x|" + Bob),
    Ask("disarm", ArmPlayerRem, std::wstring(Bob) + L"|Disarm"),
    Ask("kill", ArmPlayerRem, std::wstring(Bob) + L"|Kill"),
    Ask("switch", ArmPlayerRem, std::wstring(Bob) + L"|Switch"),
    Ask("kill for good", ArmPlayerRem, L"QWxpY2U=|KillPerm"),
    Ask("slap", SlapPlayerRem, L"go"),
    Ask("add name", AddBannedRem, L"TWF4WzFd||Name"),
    Ask("add address", AddBannedRem, L"OS45LjkuOQ==||IP"),
    Ask("remove name", RemoveBannedRem, L"RXZl|Name|1"),
    Ask("remove address", RemoveBannedRem, L"MTAuMC4wLjE=|IP|1"),
    Ask("add slap", AddSlapRem, L"new"),
    Ask("edit slap", EditSlapRem, L"one|four"),
    Ask("delete slap", DeleteSlapRem, L"one"),
    Ask("ban method", SetBanMethod, L"0"),
    Ask("idle punt", SetIdlePunt, L"1"),
    Ask("idle limit", SetIdleMax, L"7"),
    Choose("mnuRefresh", ID_mnuRefresh),
    Choose("mnuPunt", ID_mnuPunt),
    Choose("mnuBan1", ID_mnuBan1),
    Choose("mnuBan2", ID_mnuBan2),
    Choose("mnuKill", ID_mnuKill),
    Choose("mnuDisarm", ID_mnuDisarm),
    Choose("mnuRearm", ID_mnuRearm),
    Choose("mnuSwitch", ID_mnuSwitch),
    Choose("mnuSlapItem", ID_mnuSlapItem),
    Press("cmdAddName", ID_cmdAddName),
    Press("cmdRemoveName", ID_cmdRemoveName),
    Press("cmdAddIp", ID_cmdAddIp),
    Press("cmdRemoveIp", ID_cmdRemoveIp),
    Press("cmdSlapAdd", ID_cmdSlapAdd),
    Press("cmdSlapEdit", ID_cmdSlapEdit),
    Press("cmdSlapDelete", ID_cmdSlapDelete),
    {"import",
     [] {
         FakeWindow::MenuChoices = {ID_mnuMerrow300};
         FakeWindow::RightClick(ID_lstBannedIps);
     }},
    {"tmrRefresh", [] { FakeWindow::Tick(ID_tmrRefresh); }},
    {"load", [] { Load(TestProfile, HostWindow, HostData()); }},
};

class Interrupted : public Window {
protected:
    Interrupted() {
        Second.Memory = Owned.Memory;
        Second.Setup = Game.World.Setup;
    }
    // Two servers with players in the same slots, and lists for both; the first one's window is open and
    // filled in.
    void Begin() {
        FakeWindow::Reset();
        mdlVNT::ClearProfile(TestProfile);
        SetProfileData(TestProfile, HostData());
        for (Simulation::Game* World : {&Game.World, &Second}) Simulation::Start(*World);
        Outside::AttachGame(OtherProcess, &Second);
        Game.Join(1, "Alice", "10.0.0.1");
        Game.Join(3, "Bob", "10.0.0.7");
        for (const int Slot : {1, 3})
            Simulation::Join(Second, Slot, Slot == 1 ? "Alice" : "Bob", "10.1.0.1", 1, 50);
        for (const TextView Server : {L"Server1", L"Server2"}) {
            const std::wstring Folder = L"C:\\Host\\profiles\\" + std::wstring(Server) + L"\\settings\\";
            const bool IsFirst = Server == L"Server1";
            Outside::PutFile(Folder + L"BannedNames.ini",
                             IsFirst ? L"[Players]\r\nAlice[1]=d[-]r\r\nEve[1]=d[-]r\r\n"
                                     : L"[Players]\r\nEve[1]=d[-]r\r\n");
            Outside::PutFile(Folder + L"BannedIps.ini", IsFirst ? L"[IpAddresses]\r\n10.0.0.1=d\r\n"
                                                                : L"[IpAddresses]\r\n10.0.0.2=d\r\n");
            Outside::PutFile(Folder + L"BannedReference.ini", L"[Eve]\r\n0=10.0.0.1\r\n1=10.0.0.2\r\n");
            Outside::PutFile(Folder + L"Slaps.ini", IsFirst ? L"[Messages]\r\n0=one\r\n1=two\r\n2=three\r\n"
                                                            : L"[Messages]\r\n0=uno\r\n1=dos\r\n2=tres\r\n");
        }
        Outside::RemoveAll(L"C:\\Host\\profiles\\Server1\\adminlogs");
        Outside::RemoveAll(PlayersIni);
        Outside::PutIni(PlayersIni, L"IdlePunt", L"Server1", L"1");
        Outside::PutIni(PlayersIni, L"AutoRefresh", L"Server1", L"1");
        Outside::PutFile(L"C:\\ban.txt", L"10.9.8.7           Trent                cheat\r\n");
        Outside::OpenFileAnswer = L"C:\\ban.txt";
        Outside::YesNoAnswers =
            Outside::TextAnswers.empty() ? std::vector<bool>{true} : std::vector<bool>{true};
        Outside::TextAnswers = {L"cheat"};
        Open();
        Outside::Reports.clear();
        FakeWindow::Type(ID_txtBannedName, L"Bob");
        FakeWindow::Type(ID_txtAddIp, L"10.0.0.7");
        FakeWindow::DoubleClick(ID_lstSlaps, 0);
        FakeWindow::Type(ID_txtSlap, L"Hello.");
        mdlVNT::KillPermList(TestProfile).Add(L"Bob", L"Bob");
    }
    static void LoadOther() {
        Load(Other, HostWindow, HostData(L"Server2", L"DF", 99));
    } // its server has ended

    // Does the action with Inner inside each of the calls of an undisturbed run. Returns how many there are.
    long InEveryCall(const std::function<void()>& Outer, const std::function<void()>& Inner,
                     const std::function<void()>& After) {
        Begin();
        const long Calls = RunWith(Outer);
        for (long At = 1; At <= Calls; ++At) {
            SCOPED_TRACE(testing::Message() << "call " << At << " of " << Calls);
            Begin();
            RunWith(Outer, At, Inner);
            EXPECT_EQ(Work::Depth(), 0);
            After();
        }
        return Calls;
    }
    void ExpectSecondServerUntouched(const std::wstring& Files) {
        for (const int Slot : {1, 3}) {
            EXPECT_TRUE(Second.Players[Slot].Present);
            EXPECT_GT(Simulation::ReadLong(Second.Memory,
                                           Simulation::EntityAt(Second, Slot) + Layout::Entity::LifeState),
                      1);
            const auto Record = Simulation::RecordAt(Second, Slot);
            EXPECT_EQ(Simulation::ReadLong(Second.Memory, Record + Layout::Statistics::Armed), 1);
            EXPECT_EQ(Simulation::ReadLong(Second.Memory, Record + Layout::Statistics::Team), 1);
        }
        EXPECT_EQ(OtherFiles(), Files);
        EXPECT_EQ(Outside::IniValue(PlayersIni, L"IdleMax", L"Server2"), L"");
    }

    PrivateMemory Owned;
    Simulation::Game Second;
};

struct Interruption {
    const char* What;
    std::function<void()> Do; // empty: the action once more
};
const Interruption Interruptions[] = {
    {"another server", [] { SetProfileData(TestProfile, HostData(L"Server2", L"DF", OtherProcess)); }},
    {"disabled", [] { Disable(TestProfile); }},
    {"unloaded", UnLoad},
    {"another profile loaded", [] { Load(Other, HostWindow, HostData(L"Server2", L"DF", OtherProcess)); }},
    {"the same again", {}},
};

} // namespace

TEST_F(Interrupted, NothingReachesAnotherServerAndNothingIsReportedForIt) {
    Begin();
    const std::wstring Files = OtherFiles();
    long Combinations = 0;
    for (const Action& Tried : Actions) {
        for (const Interruption& Between : Interruptions) {
            SCOPED_TRACE(testing::Message() << Tried.What << ", " << Between.What);
            const bool IsAgain = !Between.Do, IsExchange = &Between == &Interruptions[0];
            const long Calls = InEveryCall(Tried.Do, IsAgain ? Tried.Do : Between.Do, [&] {
                ExpectSecondServerUntouched(Files);
                // A request is refused; all other work ends without a word.
                if (IsExchange && Tried.Member != nullptr) {
                    EXPECT_EQ(Outside::Reports,
                              Lines{std::wstring(Tried.Member->Name) + std::wstring(Changed)});
                    EXPECT_EQ(Outside::FileText(L"C:\\Host\\profiles\\Server1\\adminlogs\\2024-05-06.txt"),
                              L"");
                } else if (!IsAgain) {
                    for (const std::wstring& Report : Outside::Reports)
                        EXPECT_TRUE(Report.starts_with(L"LoadInterface: 360") || Report.ends_with(Changed))
                            << Report;
                }
                // Whatever it was, the next tick does its job.
                Outside::PutFile(SettingsFile(L"BannedNames.ini"), L"[Players]\r\nAlice[1]=d[-]r\r\n");
                Outside::PutIni(PlayersIni, L"BanMethod", L"Server1", L"0");
                SetProfileData(TestProfile, HostData());
                tmrVN_Timer(TestProfile);
                EXPECT_FALSE(Game.World.Players[1].Present);
            });
            EXPECT_GT(Calls, 0);
            Combinations += Calls;
        }
    }
    std::printf("%ld interruptions of %zu actions\n", Combinations, std::size(Actions));
}

TEST_F(Interrupted, AConsoleGetsNoListsOfAnotherServer) {
    std::wstring Reply;
    InEveryCall([&] { Reply = CallGetPlayersRem(Request(L"")); }, Interruptions[0].Do,
                [&] { EXPECT_EQ(Reply, L""); });
    // Two at once would share their files.
    std::wstring Inner;
    InEveryCall([&] { Reply = CallGetPlayersRem(Request(L"")); },
                [&] { Inner = CallGetPlayersRem(Request(L"")); },
                [&] {
                    EXPECT_NE(Reply.find(L"three"), std::wstring::npos);
                    EXPECT_TRUE(Inner.empty() == (Outside::Reports.size() == 1)) << Inner.size();
                });
}

TEST_F(Interrupted, AProfileThatIsLoadedShowsWhatIsItsOwn) {
    for (const Action& Tried : Actions) {
        if (Tried.Member != nullptr) continue;
        SCOPED_TRACE(Tried.What);
        InEveryCall(Tried.Do, LoadOther, [&] {
            tmrVN_Timer(Other); // a reload that was due inside other work
            EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), Lines{L"[1] Eve"});
            EXPECT_EQ(FakeWindow::Text(ID_lblName), L"Eve");
            EXPECT_EQ(FakeWindow::Items(ID_lstBannedIps), Lines{L"10.0.0.2"});
            EXPECT_EQ(FakeWindow::Items(ID_lstSlaps), (Lines{L"uno", L"dos", L"tres"}));
            EXPECT_TRUE(FakeWindow::Rows().empty());
            EXPECT_EQ(mdlVNT::CurrentProfile, Other);
        });
    }
}

// While the window is read for a profile, what is clicked and typed is not done: it would go to another one's
// files.
TEST_F(Interrupted, NothingIsDoneInAWindowThatIsBeingRead) {
    Begin();
    const std::wstring Files = OtherFiles();
    InEveryCall([] { Load(Other, HostWindow, HostData(L"Server2")); },
                [] {
                    FakeWindow::Type(ID_txtIdleMax, FakeWindow::Text(ID_txtIdleMax) + L"1");
                    for (const int Button : {ID_cmdAddName, ID_cmdRemoveName, ID_cmdAddIp, ID_cmdSlapAdd})
                        FakeWindow::Click(Button);
                },
                [&] {
                    EXPECT_EQ(OtherFiles(), Files);
                    EXPECT_EQ(Outside::IniValue(PlayersIni, L"IdleMax", L"Server2"), L"");
                    EXPECT_EQ(FakeWindow::Text(ID_txtIdleMax), L"5");
                });
}

TEST_F(Interrupted, AClickOnTheListsOfAProfileThatIsNoMoreShowsThePresentOne) {
    Begin();
    const std::wstring Files = OtherFiles();
    CallGetPlayersRem(RemoteRequest{TestProfile, HostData(L"Server2"), HostValue{}});
    FakeWindow::Click(ID_cmdRemoveName);
    EXPECT_EQ(OtherFiles(), Files);
    EXPECT_EQ(FakeWindow::Items(ID_lstBannedNames), Lines{L"[1] Eve"});
}

TEST_F(Interrupted, AProfileThatIsClosedOrHiddenInsideItsLoadStaysSo) {
    const std::function<void()> Closings[] = {UnLoad, [] { Disable(TestProfile); },
                                              [] { FakeWindow::HostDestroysItsWindow(); }, HideInterface};
    for (const std::function<void()>& Close : Closings) {
        const bool Hides = &Close == &Closings[3];
        InEveryCall(
            [] {
                Disable(TestProfile);
                Load(TestProfile, HostWindow, HostData());
            },
            Close,
            [&] {
                EXPECT_EQ(FakeWindow::IntervalOf(ID_tmrVN + TestProfile) != 0, Hides);
                EXPECT_EQ(Outside::Reports, Lines());
                EXPECT_TRUE(!Hides || FakeWindow::IntervalOf(ID_tmrRefresh) == 0);
                EXPECT_TRUE(!Hides || !FakeWindow::IsShown());
            });
    }
}

TEST_F(Interrupted, AHostThatLoadsAnotherProfileInEveryCallComesToAnEnd) {
    Begin();
    Long Next = Other;
    Outside::BeforeCall = [&](TextView) {
        Load(Next = Next == Other ? TestProfile : Other, HostWindow, HostData());
    };
    Load(TestProfile, HostWindow, HostData());
    Outside::BeforeCall = nullptr;
    tmrVN_Timer(TestProfile);
    FakeWindow::Tick(ID_tmrVN + TestProfile);
    EXPECT_EQ(FakeWindow::Items(ID_lstSlaps).size(), 3u);
}

// Of two changes at once the second is refused.
TEST_F(Interrupted, NoSlapMessageAndNoLinkIsLost) {
    const auto Add = [](const wchar_t* Text) { return [=] { Call(AddSlapRem, Request(Text)); }; };
    InEveryCall(Add(L"new"), Add(L"four"),
                [] { EXPECT_EQ(ReadSlaps(TestProfile)->size() + Outside::Reports.size(), 5u); });
    InEveryCall([] { Call(EditSlapRem, Request(L"one|four")); }, [] { Call(DeleteSlapRem, Request(L"two")); },
                [] { EXPECT_EQ(std::ranges::count(ReadSlaps(TestProfile).value(), L"three"), 1); });
    const auto Ban = [](const wchar_t* Address) {
        return [=] { Call(PuntPlayerRem, Request(L"RXZl|" + std::wstring(Address) + L"|3|x")); };
    };
    const auto Links = [] {
        return Split(Outside::FileText(SettingsFile(L"BannedReference.ini")), L"=").size() - 1;
    };
    InEveryCall(Ban(L"10.0.0.3"), Ban(L"10.0.0.4"), [&] {
        const bool IsRefused = std::ranges::any_of(Outside::Reports, [](const std::wstring& Report) {
            return Report.starts_with(L"AddBanReference: 5");
        });
        EXPECT_EQ(Links(), IsRefused ? 3u : 4u);
    });
    InEveryCall(
        [] { Call(RemoveBannedRem, Request(L"RXZl|Name|1")); }, Ban(L"10.0.0.4"),
        [&] {
            // Banned before the removal reached the links, while it ran (without a link, and that is said),
            // or after it.
            const bool IsBanned =
                !Outside::IniValue(SettingsFile(L"BannedIps.ini"), L"IpAddresses", L"10.0.0.4").empty();
            EXPECT_EQ(Links() + Outside::Reports.size(), IsBanned ? 1u : 0u);
        });
}

TEST_F(Interrupted, APermanentKillGivenInsideATickStays) {
    InEveryCall(
        Actions[0].Do,
        [&] {
            Game.Join(7, "Rita", "10.0.0.9");
            EXPECT_EQ(Call(ArmPlayerRem, Request(L"Uml0YQ==|KillPerm")), 1);
        },
        [] { EXPECT_TRUE(InKillPermList(TestProfile, L"Rita")); });
}

TEST_F(Interrupted, TheSummaryCountsEachPlayerOnce) {
    InEveryCall([] { FakeWindow::Command(ID_mnuRefresh); }, [] { CallGetPlayersRem(Request(L"")); },
                [] { EXPECT_EQ(FakeWindow::Text(ID_lblTeams), L"Blue Team: 2, Red Team: 0"); });
}

TEST_F(Interrupted, TheSlapThatWasChosenIsSentOrNone) {
    Begin();
    FakeWindow::WhileNextMenuIsOpen = [] {
        Call(DeleteSlapRem, Request(L"one"));
        Load(TestProfile, HostWindow, HostData());
    };
    FakeWindow::ChooseForRow(0, ID_mnuSlapItem);
    EXPECT_EQ(Outside::Recorded(L"MSG"), Lines());
}

// A server that hangs must not keep the sweeps of the others waiting.
TEST_F(Interrupted, ATickOfAnotherProfileRunsInsideATick) {
    Begin();
    SetProfileData(Other, HostData(L"Server1", L"DF", OtherProcess));
    RunWith(Actions[0].Do, 3, [] { tmrVN_Timer(Other), tmrVN_Timer(TestProfile); });
    EXPECT_EQ(Commands().size(), 3u); // the first one's by name and address, the other one's by name
    EXPECT_FALSE(Second.Players[1].Present);
}

// A host may swallow a system exception of its own, with all frames of ours that lie between.
namespace {
[[gnu::noinline]] void LeaveWithoutATrace(Work::Kind What, TextView File) {
    alignas(Work) static unsigned char Room[sizeof(Work)];
    new (Room) Work(What, TestProfile, File);
}
} // namespace

TEST_F(Interrupted, FramesThatAreGoneHoldNothingUp) {
    Begin();
    for (const auto& [What, File] : {std::pair<Work::Kind, std::wstring>{Work::Kind::Tick, {}},
                                     {Work::Kind::FileChange, SettingsFile(L"Slaps.ini")},
                                     {Work::Kind::Reply, SettingsFile(L"").substr(0, 33)},
                                     {Work::Kind::Reload, {}},
                                     {Work::Kind::Click, {}},
                                     {Work::Kind::GridHold, {}}}) {
        LeaveWithoutATrace(What, File);
        EXPECT_TRUE(Work::Runs(What));
        const Work FromTheHost(Work::Kind::HostCall, 0);
        EXPECT_FALSE(Work::Runs(What));
    }
    // One that lives stays, whatever the host calls below it.
    const Work Lives(Work::Kind::Tick, TestProfile);
    [] { const Work Deeper(Work::Kind::HostCall, 0); }();
    UnLoad();
    EXPECT_TRUE(Work::Runs(Work::Kind::Tick, TestProfile));
}
