// The embedded window over its life: placed, shown, hidden, shown for another profile, gone and back.
#include "tests/wine/input.h"
#include "tests/wine/support.h"

#include <commctrl.h>

namespace {

using namespace Support;

class Lifecycle : public PluginTest {
protected:
    // The grid's texts, row by row.
    std::vector<std::wstring> Rows() const {
        const HWND Grid = Control(ID_mfg);
        std::vector<std::wstring> Found(static_cast<std::size_t>(SendMessageW(Grid, LVM_GETITEMCOUNT, 0, 0)));
        for (std::size_t Row = 0; Row < Found.size(); ++Row)
            for (int Column = 0; Column < 4; ++Column) {
                wchar_t Text[64] = L"";
                LVITEMW Item{};
                Item.iSubItem = Column;
                Item.pszText = Text;
                Item.cchTextMax = 64;
                SendMessageW(Grid, LVM_GETITEMTEXTW, Row, reinterpret_cast<LPARAM>(&Item));
                Found[Row] += (Column == 0 ? L"" : L" ") + std::wstring(Text);
            }
        return Found;
    }
};

} // namespace

TEST_F(Lifecycle, LoadHideLoadDisableUnloadLoad) {
    const GameServer First(L"first", L"--build standard", "100 join 7 Alice 10.0.0.1 blue 42\n");
    const GameServer Second(L"second", L"--build affiliate",
                            "100 join 3 Rita 192.168.0.1 red 55\n100 join 12 Tom 10.0.0.3 blue 60\n");
    ASSERT_TRUE(First.Await("join", "Alice") && Second.Await("join", "Tom"));
    Load(1, {L"first", StandardGame, &First});
    const HWND Window = Frame();
    ASSERT_TRUE(Window);
    EXPECT_EQ(GetParent(Window), Area);
    EXPECT_TRUE(IsWindowVisible(Window));
    RECT Bounds{};
    GetWindowRect(Window, &Bounds);
    MapWindowPoints(nullptr, Area, reinterpret_cast<POINT*>(&Bounds), 2);
    const HDC Screen = GetDC(nullptr);
    const int PerInch = GetDeviceCaps(Screen, LOGPIXELSY);
    ReleaseDC(nullptr, Screen);
    const RECT Expected{2, 30, 2 + 700 * 15 * PerInch / 1440, 2 + 600 * 15 * PerInch / 1440};
    EXPECT_TRUE(EqualRect(&Bounds, &Expected)) << Bounds.right << " " << Bounds.bottom;
    const std::vector<std::wstring> Alice{L"07 Alice 10.0.0.1 42"};
    EXPECT_EQ(Rows(), Alice);

    Late.Call(L"HideInterface");
    EXPECT_FALSE(IsWindowVisible(Window));
    Load(2, {L"second", AffiliateGame, &Second});
    EXPECT_EQ(Frame(), Window) << "one window serves all profiles";
    EXPECT_TRUE(IsWindowVisible(Window));
    EXPECT_EQ(Rows(), (std::vector<std::wstring>{L"03 Rita 192.168.0.1 55", L"12 Tom 10.0.0.3 60"}));
    ASSERT_EQ(Early->DisableProfile(2), S_OK);
    ASSERT_EQ(Early->DisableProfile(2), S_OK) << "nothing left to stop";
    EXPECT_TRUE(IsWindow(Window)) << "disabling a profile leaves the window";
    Early->UnLoadInterface(nullptr);
    EXPECT_FALSE(IsWindow(Window));
    Early->UnLoadInterface(nullptr);
    EXPECT_EQ(Frame(), nullptr);
    Load(1, {L"first", StandardGame, &First});
    EXPECT_EQ(Rows(), Alice);
    EXPECT_TRUE(ErrorLog().empty()) << ErrorLog().front();
}

TEST_F(Lifecycle, HostWindowThatIsNone) {
    const Automation::Value Data = ProfileData({L"none"});
    for (const LONG Handle : {0L, 12345678L})
        EXPECT_EQ(Early->LoadInterface(1, Handle, *Data, nullptr), S_OK);
    EXPECT_EQ(ReportsOf("LoadInterface"), 1) << "a timer that runs already";
    EXPECT_EQ(Frame(), nullptr);
    const HWND Window = FindWindowW(L"frmVNT", nullptr);
    EXPECT_TRUE(IsWindowVisible(Window)) << "it shows by itself";
    EXPECT_NO_THROW(Late.Call(L"HideInterface"));
    EXPECT_FALSE(IsWindowVisible(Window));
    Load(1, {L"none"});
    EXPECT_EQ(Frame(), Window);
    EXPECT_EQ(GetParent(Window), Area);
}

TEST_F(Lifecycle, HostWindowGoesFirst) {
    Load(1, {L"early"});
    const HWND Window = Frame();
    ASSERT_TRUE(Window);
    DestroyWindow(Area);
    EXPECT_FALSE(IsWindow(Window));
    Area = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 720, 660, nullptr,
                           nullptr, nullptr, nullptr);
    EXPECT_EQ(Early->DisableProfile(1), S_OK);
    Load(1, {L"early"});
    EXPECT_TRUE(IsWindowVisible(Frame()));
}

// Helper objects that are missing: a report, and the plug-in still answers. Its box goes with it.
TEST(WithoutHelpers, ThePluginStillAnswers) {
    const Automation::Apartment Com;
    BaseFolder();
    const std::wstring Key = L"Software\\Classes\\qrvMFM.clsMFD";
    ASSERT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, Key.c_str()), ERROR_SUCCESS);
    {
        const Automation::Object Plugin = Automation::Create(L"qrvVNT.clsPlugin");
        Pump(600); // closes no box
        EXPECT_EQ(Automation::AsLines(*Plugin.Call(L"GetPrivis")).size(), 8u);
        EXPECT_NE(FindWindowW(L"#32770", L"DLL Error!"), nullptr);
    }
    EXPECT_EQ(FindWindowW(L"#32770", L"DLL Error!"), nullptr);
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(L"qrvVNT.dll"), nullptr);
}
