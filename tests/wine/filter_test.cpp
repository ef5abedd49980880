// The packet-filter library against the stand-in for the filtering engine: what reaches the engine, what
// becomes of it when calls fail, and that nothing of it stays behind.
#include <algorithm>
#include <filesystem>
#include <memory>

#include "tests/wine/filter_library.h"

namespace {

using namespace Support;
namespace fs = std::filesystem;

constexpr Long Stopped = 1, Running = 3;
constexpr Long Bad = 0x4200000A, Worse = 0x4300000A, Next = 0x4400000A; // 10.0.0.66, .67, .68

using Rules = std::vector<std::string>;

std::wstring LibraryPath() { return BaseFolder() + L"\\qrvudpfw.dll"; }

bool IsUnloaded() {
    return PumpUntil([] { return GetModuleHandleW(LibraryPath().c_str()) == nullptr; });
}

class Filter : public testing::Test {
protected:
    // The thread of the test before keeps the library, and its session, for a moment.
    static std::wstring UnloadedLibrary() {
        EXPECT_TRUE(IsUnloaded());
        return LibraryPath();
    }
    // Blocks the first address and waits until the engine has it.
    void StartBlocking() const {
        Library.LoadAndStart();
        Library.Block(Bad, 32123);
        ASSERT_TRUE(StandIn::AwaitRules({"10.0.0.66 32123"}));
        ASSERT_TRUE(Library.AwaitState(Running));
    }
    // What the plug-in does at a tick that finds the filter stopped.
    void ExpectAfterAnotherAttempt(const Rules& Wanted) const {
        Library.LoadAndStart();
        EXPECT_TRUE(StandIn::AwaitRules(Wanted));
        EXPECT_TRUE(Library.AwaitState(Running));
    }
    const FilterLibrary Library{UnloadedLibrary()};
};

bool HasNoSession() { return ReadEngineState(StandIn::StateFile()).Sessions.empty(); }

// Of a file in UTF-16 with a mark at its beginning.
std::string FileText(const std::wstring& Path) {
    const std::string Wide = ReadText(Path);
    std::string Text;
    for (std::size_t At = 2; At < Wide.size(); At += 2) Text += Wide[At];
    return Text;
}

std::string Shown(const FilterLibrary& Library) {
    const auto Show = reinterpret_cast<void(CALLBACK*)(HWND, HINSTANCE, const wchar_t*, int)>(
        reinterpret_cast<void*>(GetProcAddress(Library.Module, "ShowStateW")));
    Show(nullptr, Library.Module, (BaseFolder() + L"\\state.txt").c_str(), 0);
    return FileText(L"state.txt");
}

// The command of a process of its own with rules of its own.
std::wstring Client(const std::wstring& Arguments) {
    return L"\"" + ProgramFolder() + L"\\filter_client.exe\" \"" + LibraryPath() + L"\" " + Arguments;
}

} // namespace

TEST_F(Filter, RulesReachTheEngineInItsByteOrderOnceEach) {
    EXPECT_EQ(Library.State(), Stopped);
    Library.Block(Bad, 32123); // before the driver is loaded: kept for later
    Library.LoadAndStart();
    Library.Block(Bad, 32123);
    Library.Block(0x04030201, -1);
    Library.Block(-1, -32768);
    const Rules Wanted{"1.2.3.4 65535", "10.0.0.66 32123", "255.255.255.255 32768"};
    EXPECT_TRUE(StandIn::AwaitRules(Wanted));
    EXPECT_TRUE(Library.AwaitState(Running));
    EXPECT_EQ(Library.IsServiceRunning("IpFilterDriver"), Running);
    EXPECT_EQ(Library.IsServiceRunning("Spooler"), 0);
    EXPECT_EQ(Library.IsServiceRunning(nullptr), 0);
}

TEST_F(Filter, StoppingEndsTheSessionAndTheThread) {
    for (const char* Service : {"DrvFltIp2", "IpFilterDriver"}) {
        StartBlocking();
        Library.StopDriver("Spooler");
        EXPECT_EQ(Library.State(), Running);
        Library.StopDriver(Service);
        Library.UnloadDriver(Service);
        EXPECT_EQ(Library.State(), Stopped);
        EXPECT_TRUE(PumpUntil(HasNoSession));
    }
    ExpectAfterAnotherAttempt({}); // rules are gone with the driver that had them
}

TEST(FilterModule, IsUnloadedOnlyAfterItsThread) {
    for (int Round = 0; Round < 20; ++Round) {
        const FilterLibrary Library(LibraryPath());
        Library.LoadAndStart();
        Library.Block(Bad, 32123);
        // Every second time the thread is still waiting for the end of the calls.
        EXPECT_TRUE(Round % 2 != 0 || StandIn::AwaitRules({"10.0.0.66 32123"}));
    }
    EXPECT_TRUE(IsUnloaded());
    EXPECT_TRUE(HasNoSession());
}

// Whatever goes wrong at the first attempt, the rules are there after the next one, without being sent anew.
TEST_F(Filter, FailuresWhileTheSessionIsOpened) {
    for (const char* Words : {"FwpmEngineOpen0 1753", "FwpmTransactionBegin0 2150760466",
                              "FwpmProviderAdd0 5", "FwpmSubLayerAdd0 5", "FwpmTransactionCommit0 1722",
                              "FwpmFilterAdd0 8", "denied", "stopped", "full 0"}) {
        Library.Block(Bad, 32123);
        {
            const StandIn::Switch Failing(Words);
            Library.LoadAndStart();
            EXPECT_TRUE(Library.AwaitState(Stopped)) << Words;
            EXPECT_EQ(StandIn::Rules(), Rules{}) << Words;
        }
        SCOPED_TRACE(Words);
        ExpectAfterAnotherAttempt({"10.0.0.66 32123"});
        // Loaded again too soon, the thread would keep its session.
        Library.StopDriver("DrvFltIp2");
        EXPECT_TRUE(PumpUntil(HasNoSession));
    }
}

TEST_F(Filter, FailuresOfAChangeLeaveWhatWasBlocked) {
    for (const char* Words : {"FwpmTransactionBegin0 2150760466", "FwpmFilterAdd0 8",
                              "FwpmFilterDeleteById0 5", "FwpmTransactionCommit0 5", "full 1", "denied",
                              "stopped", "FwpmTransactionCommit0 5\nFwpmTransactionAbort0 5"}) {
        SCOPED_TRACE(Words);
        Library.Clear();
        StartBlocking();
        const bool IsSessionLost =
            std::string(Words).find("stopped") == 0 || std::string(Words).find("Abort") != std::string::npos;
        {
            const StandIn::Switch Failing(Words);
            Library.Clear();
            for (const Long Address : {Worse, Next}) Library.Block(Address, 32123);
            EXPECT_TRUE(Library.AwaitState(Stopped));
            EXPECT_EQ(StandIn::Rules(), IsSessionLost ? Rules{} : Rules{"10.0.0.66 32123"});
        }
        ExpectAfterAnotherAttempt({"10.0.0.67 32123", "10.0.0.68 32123"});
    }
}

TEST_F(Filter, ALostSessionIsNoticedAndReplaced) {
    StartBlocking();
    fs::remove(StandIn::StateFile());
    EXPECT_TRUE(Library.AwaitState(Stopped));
    ExpectAfterAnotherAttempt({"10.0.0.66 32123"});
    // A session that the engine has aborted and does not close: the next one is opened beside it.
    const StandIn::Switch Failing("FwpmSubLayerGetByKey0 2150760464\nFwpmEngineClose0 5");
    EXPECT_TRUE(Library.AwaitState(Stopped));
    const StandIn::Switch Refusing("FwpmEngineClose0 5");
    ExpectAfterAnotherAttempt({"10.0.0.66 32123", "10.0.0.66 32123"});
    fs::remove(StandIn::StateFile());
}

// Another program's transaction, such as a firewall's that is being set up: calls wait for its end, time out,
// and nothing is lost.
TEST_F(Filter, ABusyEngineCostsNoRule) {
    StartBlocking();
    const StandIn::Switch Impatient("patience 200");
    {
        const StandIn::Lock Other;
        const auto IsLost = [&] { return Library.State() != Running || StandIn::Rules().size() != 1; };
        EXPECT_FALSE(PumpUntil(IsLost, 3000));
        Library.Block(Worse, 32123);
        EXPECT_TRUE(Library.AwaitState(Stopped));
        EXPECT_EQ(StandIn::Rules(), Rules{"10.0.0.66 32123"});
    }
    ExpectAfterAnotherAttempt({"10.0.0.66 32123", "10.0.0.67 32123"});
}

// Whatever the filter's thread does at that moment, waits for another program's transaction included.
TEST(FilterModule, AHostEndsAtOnceAtEveryPlaceOfItsLife) {
    for (const bool IsBusy : {false, true}) {
        const auto Other = IsBusy ? std::make_unique<StandIn::Lock>() : nullptr;
        for (int Life = 1; Life < 1300; Life += 200) {
            std::vector<std::unique_ptr<Process>> Hosts;
            for (int Beside = 0; Beside < 4; ++Beside)
                Hosts.push_back(std::make_unique<Process>(
                    Client(std::to_wstring(Life + 50 * Beside) + L" 32124 10.0.0.66")));
            for (const auto& Host : Hosts) EXPECT_TRUE(Host->EndsWithin(8000)) << Life;
        }
    }
    EXPECT_TRUE(PumpUntil(HasNoSession));
}

// In a folder without the stand-in the system's engine is asked, whatever else has its name there.
TEST(FilterModule, ASystemLibrarysNameInItsFolderMeansNothing) {
    const fs::path Folder = fs::path(BaseFolder()) / L"alone";
    fs::create_directories(Folder);
    fs::copy_file(LibraryPath(), Folder / L"qrvudpfw.dll");
    fs::copy_file(fs::path(BaseFolder()) / L"sandbox_engine.dll", Folder / L"fwpuclnt.dll");
    const FilterLibrary Library((Folder / L"qrvudpfw.dll").wstring());
    Library.LoadAndStart();
    EXPECT_TRUE(PumpUntil([&] { return Library.State() == Stopped || Library.State() == Running; }));
    EXPECT_FALSE(fs::exists(Folder / L"engine.state"));
    EXPECT_EQ(Shown(Library).find("alone"), std::string::npos);
}

TEST_F(Filter, TwoProcessesAndTheEndOfOne) {
    const StandIn::Switch Older("FWPM_FILTER_FLAG_INDEXED 2150760478"); // as Windows 7 may be
    StartBlocking();
    const Process Other(Client(L"0 32124 10.0.0.66 10.0.0.67"));
    ASSERT_TRUE(StandIn::AwaitRules({"10.0.0.66 32123", "10.0.0.66 32124", "10.0.0.67 32124"}));
    Other.Kill();
    EXPECT_EQ(StandIn::Rules(), Rules{"10.0.0.66 32123"});
    Library.Block(Worse, 32123);
    EXPECT_TRUE(StandIn::AwaitRules({"10.0.0.66 32123", "10.0.0.67 32123"}));
}

TEST_F(Filter, ShowsItsState) {
    EXPECT_NE(Shown(Library).find("No process has rules there."), std::string::npos);
    Library.LoadAndStart();
    for (const Long Address : {Bad, Worse}) Library.Block(Address, 32123);
    Library.Block(Bad, -1);
    ASSERT_TRUE(StandIn::AwaitRules({"10.0.0.66 32123", "10.0.0.66 65535", "10.0.0.67 32123"}));
    WriteText(L"engine.drops",
              std::to_string(ReadEngineState(StandIn::StateFile()).Filters.begin()->first) + " 999999\n");
    const std::string Text = Shown(Library);
    for (const char* Part :
         {"elevated: ", "\\sandbox_engine.dll, which is the sandbox's", "reachable\r\n", "filter_test.exe",
          "Port 32123, blocked addresses: 2\r\n  10.0.0.66\r\n  10.0.0.67\r\n",
          "Port 65535, blocked addresses: 1\r\n  10.0.0.66\r\n", "remembers: 1\r\n"})
        EXPECT_NE(Text.find(Part), std::string::npos) << Part << "\nin " << Text;
    const StandIn::Switch Failing("denied");
    const std::string Denied = Shown(Library);
    for (const char* Part :
         {"not reachable. FwpmFilterCreateEnumHandle0 failed with error 5", " This view needs an elevated"})
        EXPECT_NE(Denied.find(Part), std::string::npos) << Denied;
    RunProgram(L"rundll32 \"" + LibraryPath() + L"\",ShowState \"" + BaseFolder() + L"\\as typed.txt\"");
    EXPECT_EQ(FileText(L"as typed.txt"), Denied);
}
