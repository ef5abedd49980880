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
        TakeForeground(Host);
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

// An error box leaves the host usable: the focus goes back to where it was last, not to where it was first.
TEST_F(Boxes, AnErrorBoxReturnsTheFocusItInterrupted) {
    const HWND Other =
        CreateWindowW(L"Edit", L"", WS_CHILD | WS_VISIBLE, 90, 0, 80, 20, Host, nullptr, nullptr, nullptr);
    Platform::PostErrorBox(L"It failed.", L"Error");
    InBox = [&](HWND Box) {
        EXPECT_TRUE(IsWindowEnabled(Host));
        SetActiveWindow(Host);
        SetFocus(Other);
        SetActiveWindow(Box);
        Press(VK_RETURN);
    };
    SetTimer(Host, 7, 100, LookForBox);
    Pump(600);
    EXPECT_EQ(GetFocus(), Other);
    Platform::CloseErrorBoxes();
}

} // namespace
