// Hosts that do more inside a call than they were asked for.
#include "sandbox/wrappers/helper_wrappers.h"
#include "tests/wine/support.h"

namespace {

using namespace Support;

bool IsLoaded() { return GetModuleHandleW(L"qrvVNT.dll") != nullptr; }

// Another plug-in of the host has brought its run-time into the process.
struct OtherRuntime {
    OtherRuntime() {
        EXPECT_TRUE(LoadLibraryW((ProgramFolder() + L"\\other_runtime\\libgcc_s_dw2-1.dll").c_str()));
    }
};

// Its helper objects come behind wrappers, which the tests give something to do.
class Hosts : private OtherRuntime, private LaidOut, private HelperWrappers::Installed, public PluginTest {
protected:
    ~Hosts() override { HelperWrappers::OnCall = nullptr; }
};

} // namespace

// Helpers declare their parameters as their makers like: a typed error object, an array by reference.
TEST_F(Hosts, ThatRefuseAnArgumentsTypeAreAskedOnceMore) {
    WriteText(L"settings\\config.ini", "[Settings]\r\nReportErrors=1\r\n");
    std::vector<VARTYPE> Reports;
    int Logged = 0;
    HelperWrappers::OnCall = [&](const HelperWrappers::Call& Made) -> HRESULT {
        const VARIANT& Second = Made.Parameters->rgvarg[Made.Parameters->cArgs > 1 ? 1 : 0];
        if (Made.Name == L"LogError" && Second.vt == VT_DISPATCH && Second.pdispVal != nullptr)
            return DISP_E_TYPEMISMATCH;
        if (Made.Name == L"LogError") ++Logged;
        if (Made.Name == L"SendErrorReport") Reports.push_back(Second.vt);
        return Made.Name == L"SendErrorReport" && (Second.vt & VT_BYREF) == 0 ? DISP_E_TYPEMISMATCH
                                                                              : Made.PassOn();
    };
    EXPECT_EQ(Remote(L"AddBannedRem", 1, {L"refused"}, L"%%%|QQ==|Name"), 0);
    EXPECT_EQ(Logged, 1);
    EXPECT_EQ(Reports, (std::vector<VARTYPE>{VT_ARRAY | VT_VARIANT, VT_ARRAY | VT_VARIANT | VT_BYREF}));
}

// Every rounding may be raised in a host, which finds its settings again after each kind of call.
TEST_F(Hosts, ThatRaiseEveryRoundingGetTheirAnswer) {
    constexpr unsigned short AllRaised = 0x1340;
    const unsigned short Before = ControlWord();
    const GameServer Server(L"rounding", L"--build standard", "0 join 1 Alice 10.0.0.1\n");
    ASSERT_TRUE(Server.Await("join"));
    const Profile Given{L"rounding", StandardGame, &Server};
    Load(1, Given);
    Remote(L"SetIdlePunt", 1, Given, L"1");
    const HWND Minutes = Control(ID_txtIdleMax);
    constexpr WPARAM Changed = MAKEWPARAM(ID_txtIdleMax, EN_CHANGE);
    SetWindowTextW(Minutes, L"2.3"); // the system's own text box does not bear it
    const std::function<void()> Calls[] = {
        [&] { Remote(L"SetIdleMax", 1, Given, L"1.1"); }, [&] { Sweep(1); },
        [&] { Sweep(1); }, // now the player is idle
        [&] { SendMessageW(GetParent(Minutes), WM_COMMAND, Changed, reinterpret_cast<LPARAM>(Minutes)); }};
    for (const std::function<void()>& Call : Calls) {
        SetControlWord(AllRaised);
        Call();
        const unsigned short Left = ControlWord();
        SetControlWord(Before);
        EXPECT_EQ(Left, AllRaised);
    }
    EXPECT_NE(ReadText(L"Plugins\\Players.ini").find("rounding=2.3"), std::string::npos) << "typed last";
}

// The first failure that is thrown inside the DLL used to end such a host.
TEST_F(Hosts, ThatHoldAnotherRuntimeGetTheirAnswer) {
    EXPECT_EQ(Remote(L"AddBannedRem", 1, {L"other"}, L"%%%|QQ==|Name"), 0);
    EXPECT_EQ(ReportsOf("AddBannedRem"), 1);
}

// The host pumps messages inside a helper call, and one of them closes it: in a tick, and in a member.
TEST_F(Hosts, ThatUnloadInTheMiddleOfACallDoSoAfterIt) {
    const GameServer Server(L"middle", L"--build standard", "0 join 1 Alice 10.0.0.1\n");
    ASSERT_TRUE(Server.Await("join"));
    const Profile Given{L"middle", StandardGame, &Server};
    const std::function<void()> Calls[] = {
        [&] { Sweep(1); },
        [&] {
            BSTR Players = nullptr;
            EXPECT_EQ(Early->GetPlayersRem(1, *ProfileData(Given), *Automation::Missing(), &Players), S_OK);
            SysFreeString(Players);
        }};
    for (const std::function<void()>& Call : Calls) {
        if (Early == nullptr) CreatePlugin();
        Load(1, Given);
        const HWND Window = Frame();
        bool WasLoaded = false;
        HelperWrappers::OnCall = [&](const HelperWrappers::Call& Made) {
            if (Early != nullptr && Made.Name == L"ReadStr") {
                LetGo();
                WasLoaded = IsLoaded();
            }
            return Made.PassOn();
        };
        Call();
        HelperWrappers::OnCall = nullptr;
        EXPECT_EQ(Early, nullptr) << "a name was read";
        EXPECT_TRUE(WasLoaded);
        EXPECT_FALSE(IsWindow(Window));
        CoFreeUnusedLibrariesEx(0, 0);
        EXPECT_FALSE(IsLoaded());
        EXPECT_FALSE(PumpUntil([] { return !BoxesSeen().empty(); }, 300)) << "nothing is left to be shown";
    }
}
