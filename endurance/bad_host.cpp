// A host that makes it as hard as real ones do: floating-point exceptions unmasked, a stack that is aligned
// to four bytes alone, another program's run-time in the process, messages pumped inside every helper call,
// and everything let go in the middle of one. Nothing may be lost, left behind or reported but what it
// caused.
//
//   bad_host.exe [CYCLES]
#include <cstdio>

#include "endurance/census.h"
#include "endurance/driver.h"
#include "sandbox/wrappers/helper_wrappers.h"
#include "tests/wine/support.h"

namespace {

using namespace Support;

int Cycles = 1000;

constexpr unsigned short Unmasked = 0x1372; // invalid, division by zero, overflow

void PumpOnce() {
    for (MSG Message; PeekMessageW(&Message, nullptr, 0, 0, PM_REMOVE);) DispatchMessageW(&Message);
}

constexpr Driver::Step WindowSteps[] = {
    {Driver::Type, ID_txtBannedName, L"Somebody"},        {Driver::Click, ID_cmdAddName, L""},
    {Driver::Select, ID_lstBannedNames, L"[1] Somebody"}, {Driver::Click, ID_cmdRemoveName, L""},
    {Driver::TakeMenuEntry, ID_mnuRefresh, L""},
};

// What one adds another one removes. Names are in Base64, and no slot has 400 digits.
struct Request {
    const wchar_t* Member;
    std::wstring Data;
    Long Answer;
};
const Request Requests[] = {
    {L"AddBannedRem", L"UGF1bFsxXQ==|YmFk|Name", 1}, // Paul[1]
    {L"RemoveBannedRem", L"UGF1bA==|Name", 1},
    {L"AddSlapRem", L"Be nice.", 0},
    {L"DeleteSlapRem", L"Be nice.", 0},
    {L"PuntPlayerRem", L"QWxpY2U=|10.0.0.1|" + std::wstring(400, L'9') + L"|1", 0},
};

// Each time Wine's printing library is loaded, it makes a mutex that it never closes. The file dialogs bring
// it along and the plug-in brings them, so a host that has them already collects none. The dialogs also take
// an index of thread-local storage before the plug-in does; given back, it would be found free below a lost
// one.
struct FileDialogs {
    FileDialogs() { LoadLibraryW(L"comdlg32.dll"); }
};

struct OtherRuntime {
    OtherRuntime() { LoadLibraryW((ProgramFolder() + L"\\other_runtime\\libgcc_s_dw2-1.dll").c_str()); }
};

class BadHost : private FileDialogs,
                private OtherRuntime,
                private LaidOut,
                private HelperWrappers::Installed,
                public PluginTest {
protected:
    BadHost()
        : Server(L"bad", L"--build standard --port 32123 --filter engine.state",
                 "0 join 1 Alice 10.0.0.1\n0 join 2 Carol 172.16.9.9\n") {
        WriteText(L"profiles\\bad\\settings\\Slaps.ini", "[Messages]\r\n0=Hello.\r\n");
        HelperWrappers::OnCall = [this](const HelperWrappers::Call& Made) {
            PumpOnce();
            if (CallsLeft != 0 && --CallsLeft == 0) LetGo();
            SetControlWord(Unmasked); // as the host's own run-time does
            return Made.PassOn();
        };
    }
    ~BadHost() override {
        HelperWrappers::OnCall = nullptr;
        SetControlWord(WordBefore);
    }

    void TickUnderBothMethods() {
        for (const wchar_t* const Method : {L"1", L"0"}) {
            Remote(L"SetBanMethod", 1, Given, Method);
            Sweep(1);
        }
    }
    // Sweeps until one of its helper calls is the one in which everything goes.
    void UnloadInTheMiddle(int Calls) {
        CallsLeft = Calls;
        while (Early != nullptr) Sweep(1);
        CoFreeUnusedLibrariesEx(0, 0);
        EXPECT_EQ(GetModuleHandleW(L"qrvVNT.dll"), nullptr);
    }
    void Cycle(int Number) {
        if (Early == nullptr) CreatePlugin();
        SetControlWord(Unmasked);
        Load(1, Given);
        Driver::CountLabels(Frame());
        TickUnderBothMethods();
        for (const Driver::Step& WindowStep : WindowSteps)
            WindowStep.Do(Frame(), WindowStep.Id, WindowStep.Text);
        int Reports = static_cast<int>(ErrorLog().size());
        for (const Request& Sent : Requests)
            EXPECT_EQ(Remote(Sent.Member, 1, Given, Sent.Data), Sent.Answer) << Sent.Member;
        // The last one was refused, and that is all there is to report.
        EXPECT_EQ(static_cast<int>(ErrorLog().size()), ++Reports) << ErrorLog().back();
        Late.Call(L"HideInterface");
        UnloadInTheMiddle(1 + Number % 40);
        EXPECT_EQ(ControlWord(), Unmasked);
        // What a tick was reading belongs to no profile any more: that much the host has caused.
        const std::vector<std::string> Log = ErrorLog();
        for (std::size_t At = static_cast<std::size_t>(Reports); At < Log.size(); ++At)
            EXPECT_NE(Log[At].find("Subscript out of range"), std::string::npos) << Log[At];
        WriteText(L"logs\\errors.log", "");
    }

    GameServer Server;
    Profile Given{L"bad", StandardGame, &Server};
    const unsigned short WordBefore = ControlWord();
    int CallsLeft = 0; // until everything goes; 0 is never
};

// How much more there may be of a kind after all cycles with so many labels; -1 is printed alone.
long MayGrowBy(const Census::Kind& Counter, long Labels) {
    const std::string Name = Counter.Name;
    if (Name == "heap blocks") return Counter.Slack + Labels;
    return Name == "handles" || Name == "windows" || Name == "menus" || Name == "GDI objects" ? Counter.Slack
                                                                                              : -1;
}

} // namespace

TEST_F(BadHost, GoesThroughItsCycles) {
    ASSERT_TRUE(Server.Await("join", "Carol"));
    Driver::AnswerBoxes();
    for (int Warm = 0; Warm < 3; ++Warm) Cycle(Warm);
    const std::vector<long> Before = Census::Take();
    const long LabelsBefore = Driver::Labels;
    const DWORD Index = TlsAlloc();
    TlsFree(Index);
    for (int Number = 0; Number < Cycles && !HasFailure(); ++Number) {
        Cycle(Number);
        if (Number % 100 == 99) std::printf("%d cycles\n", Number + 1), std::fflush(stdout);
    }
    const std::vector<long> After = Census::Take();
    const long Labels = Driver::Labels - LabelsBefore;
    std::printf("%ld labels\n", Labels);
    for (std::size_t At = 0; At < After.size(); ++At) {
        std::printf("%s %ld, then %ld\n", Census::Kinds[At].Name, Before[At], After[At]);
        const long Growth = MayGrowBy(Census::Kinds[At], Labels);
        EXPECT_TRUE(Growth < 0 || After[At] <= Before[At] + Growth) << Census::Kinds[At].Name;
    }
    EXPECT_EQ(TlsAlloc(), Index) << "an index of thread-local storage";
    EXPECT_EQ(Server.Count("dropped"), 0) << "nobody was banned";
    EXPECT_EQ(ReadText(L"profiles\\bad\\settings\\Slaps.ini"), "[Messages]\r\n0=Hello.\r\n");
    EXPECT_EQ(ReadText(L"profiles\\bad\\settings\\BannedNames.ini").find('='), std::string::npos);
}

int main(int Count, char** Words) {
    testing::InitGoogleTest(&Count, Words);
    if (Count > 1) Cycles = std::atoi(Words[1]);
    Census::Begin();
    return RUN_ALL_TESTS();
}
