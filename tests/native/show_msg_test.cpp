// What a report says, where it goes, and that it never fails itself.
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "enforcement/sweep.h"
#include "game/show_msg.h"
#include "plugin/lifecycle.h"
#include "tests/fakes/fake_toolkit.h"
#include "tests/fakes/server.h"

namespace {

TEST(Reports, CarryLineNumberDescriptionAndProcedure) {
    Server Game;
    int Line = 0;
    Trapped(L"GetPing", TestProfile, [&] {
        Line = __LINE__ + 1;
        Fail(13);
    });
    const std::wstring Details = L"ErrorBoxToFront Server: Server1\r\nError Line: " + std::to_wstring(Line) +
                                 L"\r\nError 13: Type mismatch\r\nDLL: qrvVNT.dll\r\nFunction/Sub: GetPing";
    EXPECT_EQ(Outside::Journal, Lines{Details + L"\r\n\r\nError Report Sent: No"});
    EXPECT_EQ(Outside::Reports, Lines{L"GetPing: 13 Type mismatch"});
}

TEST(Reports, AreSentOnlyWhenTheSettingIsTheNumberOne) {
    struct Row {
        TextView Setting;
        bool Arrives;
        TextView Sent;
    };
    const Row Table[] = {{L"1", true, L"Yes"},      {L"1.0", true, L"Yes"}, {L" 1 ", true, L"Yes"},
                         {L"1", false, L"Failed!"}, {L"yes", true, L"No"},  {L"0", true, L"No"},
                         {L"", true, L"No"},        {L"11", true, L"No"}};
    for (const Row& Case : Table) {
        Server Game;
        Outside::PutIni(L"C:\\Host\\settings\\config.ini", L"Settings", L"ReportErrors", Case.Setting);
        Outside::ReportsArrive = Case.Arrives;
        Trapped(L"AnyProcedure", TestProfile, [] { Fail(9); });
        const Lines Boxes = Outside::Recorded(L"ErrorBox");
        ASSERT_EQ(Boxes.size(), 1u);
        EXPECT_TRUE(Boxes[0].ends_with(L"\r\n\r\nError Report Sent: " + std::wstring(Case.Sent)));
        EXPECT_EQ(Outside::Recorded(L"SendErrorReport 9 qrvVNT.dll ").size(), Case.Sent == L"No" ? 0u : 1u);
    }
}

// What an administrator reads behind the number; scripts and other tools know the same texts.
TEST(Reports, DescribeTheErrorsByTheirUsualTexts) {
    const std::pair<Long, TextView> Table[] = {
        {5, L"Invalid procedure call or argument"},
        {6, L"Overflow"},
        {7, L"Out of memory"},
        {9, L"Subscript out of range"},
        {13, L"Type mismatch"},
        {48, L"Error in loading DLL"},
        {51, L"Internal error"},
        {53, L"File not found"},
        {68, L"Device unavailable"},
        {75, L"Path/File access error"},
        {76, L"Path not found"},
        {91, L"Object variable not set"},
        {360, L"Object already loaded"},
        {429, L"ActiveX component can't create object"},
        {438, L"Object doesn't support this property or method"},
        {449, L"Argument not optional"},
        {453, L"Can't find DLL entry point"},
        {457, L"This key is already associated with an element of this collection"},
        {1004, L"Application-defined or object-defined error"}};
    for (const auto& [Number, Text] : Table) EXPECT_EQ(ErrorDescription(Number), Text);
}

TEST(Reports, EveryKindOfExceptionEndsInTheTrap) {
    Server Game;
    EXPECT_FALSE(Trapped(L"A", TestProfile, [] { throw std::bad_alloc(); }));
    EXPECT_FALSE(Trapped(L"B", TestProfile, [] { throw std::runtime_error("odd"); }));
    EXPECT_FALSE(Trapped(L"C", TestProfile, [] { throw 42; }));
    EXPECT_TRUE(Trapped(L"D", TestProfile, [] {}));
    EXPECT_EQ(Outside::Reports, (Lines{L"A: 7 ", L"B: 51 odd", L"C: 51 "}));
}

TEST(Boxes, EachKindHasItsTitle) {
    Server Game;
    ShowMsg(MsgKind::Error, L"a", TestProfile);
    ShowMsg(MsgKind::Success, L"b", TestProfile);
    ShowMsg(MsgKind::Failed, L"c", TestProfile);
    ShowMsg(MsgKind::ActionRequired, L"d", TestProfile);
    EXPECT_EQ(Outside::Journal,
              (Lines{L"Box Error! a", L"Box Success b", L"Box Failed! c", L"Box Action Required! d"}));
    EXPECT_TRUE(Outside::Reports.empty());
}

// An evening with eight servers, of which one has ended and one hangs.
TEST(Reports, OneBoxForAnOutageAndOneForEachFailureOfWhatWasAskedFor) {
    Server Game;
    Game.Join(1, "Alice");
    for (Long Profile = 1; Profile <= 8; ++Profile)
        SetProfileData(Profile,
                       HostData(L"Server" + ToText(Profile), L"DF", Profile == 2 ? 4242 : ProcessRef));
    Outside::PutFile(L"C:\\Host\\profiles\\Server3\\settings\\BannedNames.ini",
                     L"[Players]\r\nAlice[1]=d[-]r\r\n");
    Load(3, HostWindow, HostData(L"Server3"));
    const auto Evening = [&](int Ticks, bool Hangs) {
        Outside::BeforeCall = [=](TextView Name) {
            if (Name != L"AddMsg" || !Hangs) return;
            Outside::Elapsed += 250;
            Fail(1001, L"The game takes no messages.");
        };
        for (int Tick = 0; Tick < Ticks; ++Tick)
            for (Long Profile = 1; Profile <= 8; ++Profile) tmrVN_Timer(Profile);
    };
    Outside::Journal.clear();
    Evening(50, true);
    EXPECT_EQ(Outside::Recorded(L"ErrorBox ").size(), 2u); // tmrVN of Server2, PuntPlayer of Server3
    EXPECT_EQ(Outside::Reports.size(), 100u);              // the log has all of them
    FakeWindow::ChooseForRow(0, ID_mnuPunt);
    EXPECT_EQ(Outside::Recorded(L"ErrorBoxToFront Server: Server3\r\n").size(), 1u);
    // It works again, and then does not: that is another outage.
    Evening(1, false);
    Game.Join(1, "Alice");
    Evening(50, true);
    EXPECT_EQ(Outside::Recorded(L"ErrorBox ").size(), 3u);
    Outside::BeforeCall = nullptr;
}

TEST(Reports, WhatNobodyHasToDoAnythingAboutIsOnlyLogged) {
    Server Game;
    Load(TestProfile, HostWindow, HostData());
    Load(TestProfile, HostWindow, HostData());
    Outside::FilterMissing = true;
    UnLoad();
    EXPECT_EQ(Outside::Reports, (Lines{L"LoadInterface: 360 Object already loaded",
                                       L"UnLoadInterface: 48 Error in loading DLL"}));
    EXPECT_EQ(Outside::Recorded(L"ErrorBox"), Lines());
}

} // namespace
