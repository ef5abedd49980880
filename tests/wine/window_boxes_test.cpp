// The real boxes and dialogs: where they stand, what Enter answers, and the focus after them.
#include <windows.h>

#include "host/platform.h"
#include "host/win32/boxes.h"
#include "tests/wine/input.h"

namespace {

HWND Host, Edit;

RECT BoxArea;
std::function<void(HWND)> InBox;

// A timer procedure: a box has a message loop of its own.
void CALLBACK LookForBox(HWND Window, UINT, UINT_PTR Id, DWORD) {
    const HWND Box = GetActiveWindow();
    if (Box == Host || Box == nullptr || !IsWindowVisible(Box)) return;
    KillTimer(Window, Id);
    GetWindowRect(Box, &BoxArea);
    InBox(Box);
}

// The font's name and height.
std::wstring FontOf(HWND Window) {
    LOGFONTW Font{};
    GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(Window, WM_GETFONT, 0, 0)), sizeof Font, &Font);
    return Font.lfFaceName + (L" " + std::to_wstring(Font.lfHeight));
}

class Boxes : public testing::Test {
protected:
    void SetUp() override {
        Host = CreateWindowW(L"Static", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 300, 200, 620, 500,
                             nullptr, nullptr, nullptr, nullptr);
        const HWND Frame = CreateWindowW(L"Static", L"", WS_CHILD | WS_VISIBLE, 0, 0, 500, 300, Host, nullptr,
                                         nullptr, nullptr);
        Edit = CreateWindowW(L"Edit", L"", WS_CHILD | WS_VISIBLE, 0, 0, 80, 20, Frame, nullptr, nullptr,
                             nullptr);
        SetForegroundWindow(Host);
        SetFocus(Edit);
        Pump(100);
        Platform::SetOwner(reinterpret_cast<std::intptr_t>(Frame));
    }
    void TearDown() override {
        Platform::SetOwner(0);
        DestroyWindow(Host);
    }
    // Opens a box and presses the key in it.
    template <class F> auto With(WORD Key, F&& Open) {
        InBox = [=](HWND) { Press(Key); };
        SetTimer(Host, 7, 100, LookForBox);
        return Open();
    }
    static void ExpectInTheMiddle() {
        RECT Area{};
        GetWindowRect(Host, &Area);
        EXPECT_NEAR(BoxArea.left + BoxArea.right, Area.left + Area.right, 2);
        EXPECT_NEAR(BoxArea.top + BoxArea.bottom, Area.top + Area.bottom, 2);
        EXPECT_EQ(GetFocus(), Edit);
    }
};

TEST_F(Boxes, StandInTheMiddleAndLeaveTheFocusWhereItWas) {
    With(VK_RETURN, [] { Platform::ShowBox(Platform::BoxIcon::Information, L"Done.", L"Success"); });
    ExpectInTheMiddle();
    for (const auto Default : {Platform::Answer::Yes, Platform::Answer::No}) {
        EXPECT_EQ(With(VK_RETURN, [&] { return Platform::AskYesNo(L"Really?", L"Question", Default); }),
                  Default == Platform::Answer::Yes);
        ExpectInTheMiddle();
    }
    for (const WORD Key : {VK_RETURN, VK_ESCAPE}) {
        EXPECT_EQ(With(Key, [] { return Platform::AskText(L"Why?", L"Reason"); }), L"");
        ExpectInTheMiddle();
    }
    EXPECT_FALSE(With(VK_ESCAPE, [] { return Platform::AskOpenFile(L"Open", L"Text (*.txt)|*.txt"); }));
    EXPECT_EQ(GetFocus(), Edit);
}

TEST_F(Boxes, TheReasonBoxHasTheFontOfMessages) {
    NONCLIENTMETRICSW Metrics{};
    Metrics.cbSize = sizeof Metrics;
    ASSERT_TRUE(SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof Metrics, &Metrics, 0));
    InBox = [&](HWND Box) {
        EXPECT_EQ(FontOf(GetWindow(Box, GW_CHILD)),
                  Metrics.lfMessageFont.lfFaceName +
                      (L" " + std::to_wstring(Metrics.lfMessageFont.lfHeight)));
        for (const char Letter : std::string("OK")) Press(static_cast<WORD>(Letter));
        Press(VK_RETURN);
    };
    SetTimer(Host, 7, 100, LookForBox);
    EXPECT_EQ(Platform::AskText(L"Why?", L"Reason"), L"ok");
}

// --- The error box

HWND ErrorBox() {
    const HWND Window = FindWindowW(L"#32770", L"Error");
    return IsWindowVisible(Window) ? Window : nullptr;
}

std::wstring TextOf(HWND Window) {
    wchar_t Text[4000] = L"";
    GetWindowTextW(Window, Text, static_cast<int>(std::size(Text)));
    return Text;
}

std::wstring BoxText() { return TextOf(GetDlgItem(ErrorBox(), 0xFFFF)); }

RECT AreaOf(HWND Window) {
    RECT Area{};
    GetWindowRect(Window, &Area);
    return Area;
}

// Returns as soon as the box is there: it holds up no message loop.
bool AwaitErrorBox(bool Stands = true) {
    for (int Round = 0; Round < 100 && (ErrorBox() != nullptr) != Stands; ++Round) Pump(20);
    return (ErrorBox() != nullptr) == Stands;
}

TEST_F(Boxes, AnErrorBoxTakesNoKeyThatWasNotMeantForIt) {
    const HWND Other =
        CreateWindowW(L"Edit", L"", WS_CHILD | WS_VISIBLE, 90, 0, 80, 20, Host, nullptr, nullptr, nullptr);
    Platform::PostErrorBox(L"first", L"Error", false);
    Platform::PostErrorBox(L"second", L"Error", false);
    for (const char Letter : std::string("SPAM NO")) {
        Press(static_cast<WORD>(Letter));
        Pump(30);
    }
    ASSERT_TRUE(AwaitErrorBox());
    EXPECT_EQ(GetFocus(), Edit);
    EXPECT_TRUE(IsWindowEnabled(Host));
    EXPECT_EQ(GetWindow(ErrorBox(), GW_OWNER), Host);
    EXPECT_EQ(TextOf(Edit), L"spam no");
    EXPECT_EQ(BoxText(), L"first");
    Platform::PostErrorBox(L"third", L"Error", false);
    Pump(200);
    EXPECT_EQ(BoxText(), L"first") << "one at a time";
    Platform::PostErrorBox(L"asked for", L"Error", true);
    Pump(200);
    EXPECT_EQ(BoxText(), L"asked for");
    SetFocus(Other);
    for (const WORD Key : {VK_RETURN, VK_ESCAPE, VK_SPACE}) {
        Platform::PostErrorBox(L"first", L"Error", false);
        ASSERT_TRUE(AwaitErrorBox());
        EXPECT_EQ(GetFocus(), Other);
        RECT Inside{};
        GetClientRect(ErrorBox(), &Inside);
        ClickAt(MiddleOf(ErrorBox(), {2, Inside.bottom - 6, 8, Inside.bottom - 2}), MOUSEEVENTF_LEFTDOWN,
                MOUSEEVENTF_LEFTUP);
        Pump();
        EXPECT_EQ(GetFocus(), GetDlgItem(ErrorBox(), IDOK));
        Press(VK_TAB);
        Pump();
        EXPECT_EQ(GetFocus(), GetDlgItem(ErrorBox(), 0xFFFF));
        Press('C', VK_CONTROL);
        if (Key == VK_SPACE) Press(VK_TAB);
        Press(Key);
        EXPECT_TRUE(AwaitErrorBox(false)) << Key;
        EXPECT_EQ(GetFocus(), Other) << Key;
    }
    SendMessageW(Other, WM_PASTE, 0, 0);
    EXPECT_EQ(TextOf(Other), L"first");
}

TEST_F(Boxes, AnErrorBoxWaitsForAMenuAndAQuestion) {
    SetTimer(Host, 99, 300, LookForMenu);
    InMenu = [](HMENU) {
        EXPECT_EQ(ErrorBox(), nullptr);
        Press(VK_ESCAPE);
    };
    Platform::PostErrorBox(L"failed", L"Error", false);
    const HMENU Menu = CreatePopupMenu();
    AppendMenuW(Menu, MF_STRING, 1, L"Entry");
    TrackPopupMenu(Menu, TPM_RETURNCMD, 400, 300, 0, Host, nullptr);
    EXPECT_FALSE(InMenu) << "the menu was open for some time";
    DestroyMenu(Menu);
    EXPECT_TRUE(AwaitErrorBox());
    Platform::CloseErrorBoxes();
    InBox = [](HWND) {
        EXPECT_EQ(ErrorBox(), nullptr);
        Press(VK_RETURN);
    };
    Platform::PostErrorBox(L"failed", L"Error", false);
    SetTimer(Host, 7, 400, LookForBox);
    Platform::AskYesNo(L"Really?", L"Question", Platform::Answer::No);
    EXPECT_TRUE(AwaitErrorBox());
    EXPECT_EQ(GetFocus(), Edit);
}

TEST_F(Boxes, AnErrorBoxGoesWithItsOwnerAndWithTheWindow) {
    for (const bool IsShown : {false, true}) {
        Platform::PostErrorBox(L"failed", L"Error", false);
        EXPECT_EQ(IsShown && AwaitErrorBox(), IsShown);
        Platform::SetOwner(0);
        Pump(300);
        EXPECT_EQ(ErrorBox(), nullptr);
    }
    Platform::SetOwner(reinterpret_cast<std::intptr_t>(Edit));
    Platform::PostErrorBox(L"failed", L"Error", false);
    ASSERT_TRUE(AwaitErrorBox());
    DestroyWindow(Host);
    EXPECT_EQ(ErrorBox(), nullptr);
    Platform::PostErrorBox(L"without a window", L"Error", false);
    EXPECT_TRUE(AwaitErrorBox());
    Platform::CloseErrorBoxes();
}

TEST_F(Boxes, ALongErrorFitsTheScreen) {
    std::wstring Text =
        L"Line with some words that are not short, so that it is wrapped somewhere in the box";
    LONG Tall = 0;
    for (int Round = 0; Round < 6; ++Round, Text += L"\r\n" + Text) {
        Platform::PostErrorBox(Text, L"Error", true);
        ASSERT_TRUE(AwaitErrorBox());
        Pump(200);
        const RECT Area = AreaOf(ErrorBox()), Button = AreaOf(GetDlgItem(ErrorBox(), IDOK));
        EXPECT_GE(Area.bottom - Area.top, Tall);
        EXPECT_LT(Area.bottom - Area.top, GetSystemMetrics(SM_CYSCREEN) * 2 / 3);
        EXPECT_LT(Button.bottom, Area.bottom);
        EXPECT_LE(AreaOf(GetDlgItem(ErrorBox(), 0xFFFF)).bottom, Button.top);
        Tall = Area.bottom - Area.top;
        const bool Scrolls = (GetWindowLongW(GetDlgItem(ErrorBox(), 0xFFFF), GWL_STYLE) & WS_VSCROLL) != 0;
        EXPECT_EQ(Scrolls, Round == 5) << Round;
    }
    Platform::CloseErrorBoxes();
}

} // namespace
