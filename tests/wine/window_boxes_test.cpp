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
        InBox = [=](HWND) {
            Press('O');
            Press(Key);
        };
        SetTimer(Host, 7, 100, LookForBox);
        EXPECT_EQ(Platform::AskText(L"Why?", L"Reason"), Key == VK_RETURN ? L"o" : L"");
        ExpectInTheMiddle();
    }
    EXPECT_FALSE(With(VK_ESCAPE, [] { return Platform::AskOpenFile(L"Open", L"Text (*.txt)|*.txt"); }));
    EXPECT_EQ(GetFocus(), Edit);
}

// --- The error box

HWND ErrorBox() {
    const HWND Window = FindWindowW(L"#32770", L"Error");
    return IsWindowVisible(Window) ? Window : nullptr;
}

HWND Part(int Id) { return GetDlgItem(ErrorBox(), Id); }

std::wstring TextOf(HWND Window) {
    wchar_t Text[100] = L"";
    GetWindowTextW(Window, Text, 100);
    return Text;
}

// Returns while the box stands: it holds up no message loop.
bool Post(const std::wstring& Text, bool ToFront = false) {
    Platform::PostErrorBox(Text, L"Error", ToFront);
    Pump(250);
    return ErrorBox() != nullptr;
}

constexpr int TextId = 0xFFFF;

TEST_F(Boxes, AnErrorBoxTakesNoKeyThatWasNotMeantForIt) {
    const HWND Other =
        CreateWindowW(L"Edit", L"", WS_CHILD | WS_VISIBLE, 90, 0, 80, 20, Host, nullptr, nullptr, nullptr);
    Platform::PostErrorBox(L"first", L"Error", false);
    for (const char Letter : std::string("SPAM NO")) {
        Press(static_cast<WORD>(Letter));
        Pump(30);
    }
    EXPECT_TRUE(Post(L"second"));
    EXPECT_EQ(TextOf(Part(TextId)), L"first") << "one at a time";
    EXPECT_EQ(TextOf(Edit), L"spam no");
    EXPECT_EQ(GetFocus(), Edit);
    EXPECT_TRUE(IsWindowEnabled(Host));
    EXPECT_EQ(GetWindow(ErrorBox(), GW_OWNER), Host);
    EXPECT_NE(GetWindowLongW(ErrorBox(), GWL_EXSTYLE) & WS_EX_NOACTIVATE, 0)
        << "no window manager may either";
    Post(L"asked for", true);
    EXPECT_EQ(TextOf(Part(TextId)), L"asked for");
    Platform::CloseErrorBoxes();
    SetFocus(Other);
    for (const WORD Key : {VK_RETURN, VK_ESCAPE, VK_SPACE}) {
        ASSERT_TRUE(Post(L"first"));
        EXPECT_EQ(GetFocus(), Other);
        RECT Inside{};
        GetClientRect(ErrorBox(), &Inside);
        ClickAt(MiddleOf(ErrorBox(), {2, Inside.bottom - 6, 8, Inside.bottom - 2}), MOUSEEVENTF_LEFTDOWN,
                MOUSEEVENTF_LEFTUP);
        Pump();
        Press(VK_TAB);
        Pump();
        EXPECT_EQ(GetFocus(), Part(TextId));
        Press('C', VK_CONTROL);
        if (Key == VK_SPACE) Press(VK_TAB);
        Press(Key);
        Pump();
        EXPECT_EQ(ErrorBox(), nullptr) << Key;
        EXPECT_EQ(GetFocus(), Other) << Key;
    }
    SendMessageW(Other, WM_PASTE, 0, 0);
    EXPECT_EQ(TextOf(Other), L"first");
}

TEST_F(Boxes, AnErrorBoxWaitsForAMenuAndAQuestion) {
    const auto Look = [](auto) {
        EXPECT_EQ(ErrorBox(), nullptr);
        Press(VK_ESCAPE);
    };
    Platform::PostErrorBox(L"failed", L"Error", false);
    InMenu = Look;
    SetTimer(Host, 99, 300, LookForMenu);
    const HMENU Menu = CreatePopupMenu();
    AppendMenuW(Menu, MF_STRING, 1, L"Entry");
    TrackPopupMenu(Menu, TPM_RETURNCMD, 400, 300, 0, Host, nullptr);
    DestroyMenu(Menu);
    EXPECT_TRUE(Post(L""));
    Platform::CloseErrorBoxes();
    Platform::PostErrorBox(L"failed", L"Error", false);
    InBox = Look;
    SetTimer(Host, 7, 400, LookForBox);
    Platform::AskText(L"Why?", L"Reason");
    EXPECT_TRUE(Post(L""));
    EXPECT_EQ(GetFocus(), Edit);
    Platform::CloseErrorBoxes();
}

TEST_F(Boxes, AnErrorBoxGoesWithItsOwnerAndWithTheWindow) {
    EXPECT_TRUE(Post(L"failed"));
    Platform::PostErrorBox(L"waits", L"Error", true);
    Platform::SetOwner(0);
    Pump(250);
    EXPECT_EQ(ErrorBox(), nullptr);
    Platform::SetOwner(reinterpret_cast<std::intptr_t>(Edit));
    EXPECT_TRUE(Post(L"failed"));
    DestroyWindow(Host);
    EXPECT_EQ(ErrorBox(), nullptr);
    EXPECT_TRUE(Post(L"without a window"));
    Platform::CloseErrorBoxes();
}

TEST_F(Boxes, ALongErrorFitsTheScreen) {
    std::wstring Text = L"Some words that are not short, so that they are wrapped somewhere in the box";
    for (int Round = 0; Round < 6; ++Round, Text += L"\r\n" + Text) {
        ASSERT_TRUE(Post(Text, true));
        RECT Area{}, Button{}, Words{};
        GetWindowRect(ErrorBox(), &Area);
        GetWindowRect(Part(IDOK), &Button);
        GetWindowRect(Part(TextId), &Words);
        EXPECT_LT(Area.bottom - Area.top, GetSystemMetrics(SM_CYSCREEN) * 2 / 3);
        EXPECT_LT(Button.bottom, Area.bottom);
        EXPECT_LE(Words.bottom, Button.top);
        EXPECT_EQ((GetWindowLongW(Part(TextId), GWL_STYLE) & WS_VSCROLL) != 0, Round == 5) << Round;
    }
    Platform::CloseErrorBoxes();
}

} // namespace
