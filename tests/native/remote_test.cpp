// Remote requests: data in; calls, files, log line and result out.
#include <gtest/gtest.h>

#include <algorithm>

#include "enforcement/sweep.h"
#include "game/mdlVNT.h"
#include "host/memory_helper.h"
#include "plugin/remote.h"
#include "tests/fakes/server.h"

namespace {

constexpr TextView LogFile = L"C:\\Host\\profiles\\Server1\\adminlogs\\2024-05-06.txt";

// What a console sends: each {text} as Base64.
std::wstring Sent(TextView Data) {
    std::wstring Request;
    while (!Data.empty()) {
        const auto Open = std::min(Data.find(L'{'), Data.size());
        Request += Data.substr(0, Open);
        Data.remove_prefix(Open);
        if (Data.empty()) break;
        const auto Close = Data.find(L'}');
        Request += MemoryHelper::Enc64(Data.substr(1, Close - 1));
        Data.remove_prefix(Close + 1);
    }
    return Request;
}

// A server with Bob in slot 3 and some entries in the lists.
struct RemoteServer : Server {
    RemoteServer() {
        Join(3, "Bob", "10.0.0.7");
        SetLife(3, 2);
        BanName(L"Eve[1]");
        BanName(L"Eve[2]");
        BanIp(L"1.1.1.1");
        BanIp(L"2.2.2.2");
        Outside::PutFile(SettingsFile(L"BannedReference.ini"), L"[Eve]\r\n0=1.1.1.1\r\n1=2.2.2.2\r\n");
        Outside::PutFile(SettingsFile(L"Slaps.ini"), L"[Messages]\r\n0=one\r\n1=two\r\n");
        Outside::Journal.clear();
    }
};

// What a member does with its data: the result, the line between the time and " from admin1" (empty: none),
// and all effects but the log's folder. "@" is the time stamp.
struct RequestCase {
    const RemoteMember<Long>& Member;
    TextView Data; // as Sent takes it
    Long Result;
    std::wstring Line, Effects;
};

const RequestCase RequestCases[] = {
    {PuntPlayerRem, L"{Bob}|10.0.0.7|3", 1, L"Punt Player #3 (Name: Bob, IP: 10.0.0.7)", L"CMD 1 punt 03"},
    {PuntPlayerRem, L"{Bob}|10.0.0.7|3|x", 1, L"Ban Player #3 (Name: Bob, IP: 10.0.0.7)",
     L"Write [Bob] 0=10.0.0.7; Write [Players] Bob[1]=@[-]None; Write [IpAddresses] 10.0.0.7=@; CMD 1 punt "
     L"03"},
    {PuntPlayerRem, L"{Bob}|10.0.0.7|3||{why|not}", 1, L"Ban Player #3 (Name: Bob, IP: 10.0.0.7)",
     L"Write [Bob] 0=10.0.0.7; Write [Players] Bob[1]=@[-]why|not; Write [IpAddresses] 10.0.0.7=@; CMD 1 "
     L"punt 03"},
    {PuntPlayerRem, L"Qm\r\n9i|10.0.0.7| 07 |x|{a}\n", 1, L"Ban Player # 07  (Name: Bob, IP: 10.0.0.7)",
     L"Write [Bob] 0=10.0.0.7; Write [Players] Bob[1]=@[-]a; Write [IpAddresses] 10.0.0.7=@; CMD 1 punt 07"},
    {PuntPlayerRem, L"{Bob}|5.*=|3|x", 1, L"Ban Player #3 (Name: Bob, IP: 5.*=)",
     L"Write [Players] Bob[1]=@[-]None; CMD 1 punt 03"},
    {PuntPlayerRem, L"{Bob}|10.0.0.7|3|||", 1, L"Ban Player #3 (Name: Bob, IP: 10.0.0.7)", L""},
    {ArmPlayerRem, L"{Bob}|Kill|", 1, L"Kill Player (Bob)",
     L"WriteLong 1; MSG 3 Bob has been 'Killed' by the Server Admin!"},
    {ArmPlayerRem, L"{Nobody}|Kill", 1, L"Kill Player (Nobody)", L""},
    {ArmPlayerRem, L"{Bob}|Switch", 1, L"Switch Player Team (Bob)", L"WriteLong 2"},
    {ArmPlayerRem, L"{Bob}|KillPerm", 1, L"Kill Player Permanently (Bob)", L""},
    {ArmPlayerRem, L"{Bob}|DisarmPerm", 1, L"Disarm Player Permanently (Bob)", L""},
    {ArmPlayerRem, L"{Bob}|Disarm", 1, L"Disarm Player (Bob)",
     L"WriteLong 0; MSG 3 Bob has been 'Disarmed' by the Server Admin!"},
    {ArmPlayerRem, L"{Bob}|Dance", 1, L"Dance Player (Bob)", L""},
    {SlapPlayerRem, L"go|away", 0, L"Slap Player (Message: go|away)", L"MSG 1 go|away"},
    {AddSlapRem, L"three", 0, L"Add Slap Message (Message: three)", L"Write [Messages] 2=three"},
    {DeleteSlapRem, L"one", 0, L"Delete Slap Message (Message: one)",
     L"Write [Messages] 0=two; Write [Messages] 1=(null)"},
    {DeleteSlapRem, L"ONE", 0, L"Delete Slap Message (Message: ONE)", L""},
    {EditSlapRem, L"two|2|b", 0, L"Edit Slap Message (Old Message: two, New Message: 2|b)",
     L"Write [Messages] 1=2|b"},
    {SetBanMethod, L"2", 0, L"Change Ban Method (New Method: Kernel Driver)",
     L"WriteProfile [BanMethod] Server1=2"},
    {SetBanMethod, L"0", 0, L"Change Ban Method (New Method: Game Command Line)",
     L"WriteProfile [BanMethod] Server1=0"},
    {SetBanMethod, L"fast", 0, L"", L"WriteProfile [BanMethod] Server1=fast"},
    {SetIdlePunt, L"1", 0, L"Enable Idle Punt", L"WriteProfile [IdlePunt] Server1=1"},
    {SetIdlePunt, L"0", 0, L"Disable Idle Punt", L"WriteProfile [IdlePunt] Server1=0"},
    {SetIdleMax, L"0.5", 0, L"Set Idle Max Time (Minutes: 0.5)", L"WriteProfile [IdleMax] Server1=0.5"},
    {AddBannedRem, L"{x=[1]}|{r}|Name", 0, L"", L""},
    {AddBannedRem, L"{fr[2]}|{r}|Name", 1, L"Add Banned Name (fr[2])", L"Write [Players] fr[2]=@[-]r"},
    {AddBannedRem, L"{9.9.*}||IP", 1, L"Add Banned IP (9.9.*)", L"Write [IpAddresses] 9.9.*=@"},
    {AddBannedRem, L"{9.*.9}||IP", 0, L"", L""},
    {RemoveBannedRem, L"{Eve}|Name", 1, L"Remove Banned Name (Eve)",
     L"Delete [Players] Eve[1]; Delete [Players] Eve[2]"},
    {RemoveBannedRem, L"{Eve}|Name|1", 1, L"Remove Banned Name (Eve)",
     L"Delete [Players] Eve[1]; Delete [Players] Eve[2]; Delete [IpAddresses] 1.1.1.1; Delete [IpAddresses] "
     L"2.2.2.2; ClearIniSection [Eve]"},
    {RemoveBannedRem, L"{1.1.1.1}|IP|0", 1, L"Remove Banned IP (1.1.1.1)", L"Delete [IpAddresses] 1.1.1.1"},
    {RemoveBannedRem, L"{1.1.1.1}|IP|1", 1, L"Remove Banned IP (1.1.1.1)",
     L"Delete [IpAddresses] 1.1.1.1; Delete [Players] Eve[1]; Write [Eve] 0=2.2.2.2; Write [Eve] 1=(null)"},
};

std::wstring Effects() {
    Lines Found;
    for (const std::wstring& Text : Outside::Journal)
        if (!Text.starts_with(L"CreateFolder") && !Text.starts_with(L"ErrorBox")) Found.push_back(Text);
    std::wstring All = Join(Found, L"; ");
    for (const auto& [Long, Short] : {std::pair<TextView, TextView>{L"2024-05-06 7:08:09", L"@"},
                                      {L"WriteIniKey", L"Write"},
                                      {L"DeleteProfileKey", L"Delete"}})
        All = Join(Split(All, Long), Short);
    return All;
}

TEST(Remote, Requests) {
    for (const RequestCase& Case : RequestCases) {
        SCOPED_TRACE(std::string(Case.Member.Name.begin(), Case.Member.Name.end()) + " " +
                     std::string(Case.Data.begin(), Case.Data.end()));
        RemoteServer Game;
        EXPECT_EQ(Call(Case.Member, Request(Sent(Case.Data))), Case.Result);
        EXPECT_EQ(Effects(), Case.Effects);
        EXPECT_EQ(Outside::FileText(LogFile),
                  Case.Line.empty() ? L"" : L"[07:08:09][Vantor] " + Case.Line + L" from admin1\r\n");
    }
}

TEST(Remote, MalformedRequestsDoNothingAndAreReported) {
    const RemoteMember<Long>* const Members[] = {
        &PuntPlayerRem, &ArmPlayerRem,  &SlapPlayerRem, &AddSlapRem,      &SetBanMethod, &SetIdlePunt,
        &SetIdleMax,    &DeleteSlapRem, &EditSlapRem,   &RemoveBannedRem, &AddBannedRem};
    const std::wstring Broken = Sent(L"{Bob\r\n[Players]}");
    const std::wstring LongName = Sent(L"{" + std::wstring(1001, L'x') + L"[1]}");
    const std::wstring Datas[] = {L"x\r\ny",
                                  std::wstring(L"a\0b", 3),
                                  L"YQ==|b\n|b\n",
                                  L"YQ==|b\x1A|b\x7F",
                                  std::wstring(1'000'000, L'A'),
                                  LongName + L"|Kill|Name",
                                  LongName + L"|1.1.1.1|3",
                                  Broken + L"|Kill|Name",
                                  Broken + L"|1.1.1.1|3"};
    for (const RemoteMember<Long>* const Member : Members) {
        for (const std::wstring& Data : Datas) {
            RemoteServer Game;
            const bool TakesAnyText = Data.starts_with(Broken) && Member != &PuntPlayerRem &&
                                      Member != &ArmPlayerRem && Member != &RemoveBannedRem &&
                                      Member != &AddBannedRem;
            if (TakesAnyText) continue;
            EXPECT_EQ(Call(*Member, Request(Data)), 0);
            EXPECT_TRUE(Effects().empty());
            EXPECT_FALSE(Outside::HasFile(LogFile));
            EXPECT_EQ(Outside::Reports.size(), 1u);
        }
    }
}

struct MalformedCase {
    const RemoteMember<Long>& Member;
    TextView Data;
    TextView Report;
};

TEST(Remote, WhatIsMissingIsNamed) {
    const MalformedCase Table[] = {
        {PuntPlayerRem, L"", L"PuntPlayerRem: 9 Subscript out of range"},
        {PuntPlayerRem, L"{Bob}|1.1.1.1", L"PuntPlayerRem: 9 Subscript out of range"},
        {PuntPlayerRem, L"%%%|1.1.1.1|3", L"PuntPlayerRem: 5 This is no Base64 text."},
        {PuntPlayerRem, L"{Bob}|1.1.1.1|three", L"PuntPlayerRem: 13 Type mismatch"},
        {PuntPlayerRem, L"{Bob}|1.1.1.1|1.5", L"PuntPlayerRem: 13 Type mismatch"},
        {PuntPlayerRem, L"{Bob}|1.1.1.1|7; kick", L"PuntPlayerRem: 13 Type mismatch"},
        {PuntPlayerRem, L"{Bob}|1.1.1.1|99999999999", L"PuntPlayerRem: 6 Overflow"},
        {AddBannedRem, L"{Bob}|{r}|Name", L"AddBannedRem: 5 The name does not end in [1] or [2]."},
        {ArmPlayerRem, L"|KillPerm", L"ArmPlayerRem: 5 The name is empty."},
        {AddSlapRem, L"", L"AddSlapRem: 5 The message is empty."},
        {EditSlapRem, L"one|", L"EditSlapRem: 5 The message is empty."},
        {PuntPlayerRem, L"{[b}|0.0.0.0|3|x", L"PuntPlayer: 5 The name could not be stored in the ban list."},
        {AddBannedRem, L"{;x[1]}|{r}|Name", L"AddBannedRem: 5 The name could not be stored in the ban list."},
        {AddBannedRem, L"||Name", L"AddBannedRem: 5 The name or address is empty."},
        {RemoveBannedRem, L"|Name|1", L"RemoveBannedRem: 5 The name or address is empty."},
        {RemoveBannedRem, L"|IP", L"RemoveBannedRem: 5 The name or address is empty."},
        {AddSlapRem, L" ", L"AddSlapRem: 5 The message could not be stored in the list."},
        {AddSlapRem, L"\x416", L"AddSlapRem: 5 The message could not be stored in the list."},
        {EditSlapRem, L"one|\x416", L"EditSlapRem: 5 The message could not be stored in the list."},
        {ArmPlayerRem, L"{Bob}", L"ArmPlayerRem: 9 Subscript out of range"},
        {AddBannedRem, L"{Bob[1]}|", L"AddBannedRem: 9 Subscript out of range"},
        {RemoveBannedRem, L"{Bob}", L"RemoveBannedRem: 9 Subscript out of range"},
        {EditSlapRem, L"one", L"EditSlapRem: 9 Subscript out of range"},
        {SetIdleMax, L"soon", L"SetIdleMax: 13 Type mismatch"},
    };
    for (const MalformedCase& Case : Table) {
        RemoteServer Game;
        EXPECT_EQ(Call(Case.Member, Request(Sent(Case.Data))), 0);
        EXPECT_EQ(Outside::Reports, Lines{std::wstring(Case.Report)});
        EXPECT_FALSE(Outside::HasFile(LogFile));
    }
    RemoteServer Game;
    RemoteRequest Missing = Request(L"");
    Missing.Data.reset();
    EXPECT_EQ(Call(PuntPlayerRem, Missing), 0);
    Missing.Data = HostValue{}; // an object, say
    EXPECT_EQ(Call(PuntPlayerRem, Missing), 0);
    EXPECT_EQ(Outside::Reports,
              (Lines{L"PuntPlayerRem: 449 Argument not optional", L"PuntPlayerRem: 13 Type mismatch"}));
}

TEST(Remote, ANameIsAddedToAPermanentListOnce) {
    RemoteServer Game;
    EXPECT_EQ(Call(ArmPlayerRem, Request(Sent(L"{Bob}|KillPerm"))), 1);
    EXPECT_EQ(Call(ArmPlayerRem, Request(Sent(L"{Bob}|KillPerm"))), 0);
    EXPECT_EQ(mdlVNT::KillPermList(TestProfile).Count(), 1u);
    EXPECT_EQ(
        Outside::Reports,
        Lines{L"ArmPlayerRem: 457 This key is already associated with an element of this collection [Bob]"});
}

TEST(Remote, ARequestForAProfileThatWasNeverLoadedWorks) {
    RemoteServer Game;
    Outside::PutFolder(L"C:\\Host\\profiles\\New");
    for (const Long Index : {0, 12, 31000}) {
        Outside::Journal.clear();
        RemoteRequest Made{Index, HostData(L"New"), HostValue{}};
        Made.Data->Text = Sent(L"{9.9.9.9}||IP");
        EXPECT_EQ(Call(AddBannedRem, Made), 1);
        EXPECT_EQ(Outside::IniValue(L"C:\\Host\\profiles\\New\\settings\\BannedIps.ini", L"IpAddresses",
                                    L"9.9.9.9"),
                  L"2024-05-06 7:08:09");
    }
}

TEST(AdminLog, OneFileForEachDayInTheFolderThatTheHostChose) {
    RemoteServer Game;
    Outside::Clock = {2024, 12, 31, 23, 59, 59};
    Call(SlapPlayerRem, Request(L"late"));
    Outside::Clock = {2025, 1, 1, 0, 0, 0};
    RemoteRequest HostWide = Request(L"early");
    HostWide.HostData[PdatElement::HostWideLogs].Flag = true;
    Call(SlapPlayerRem, HostWide);
    EXPECT_EQ(Outside::FileText(L"C:\\Host\\profiles\\Server1\\adminlogs\\2024-12-31.txt"),
              L"[23:59:59][Vantor] Slap Player (Message: late) from admin1\r\n");
    EXPECT_EQ(Outside::FileText(L"C:\\Host\\adminlogs\\2025-01-01.txt"),
              L"[00:00:00][Vantor] Slap Player (Message: early) from admin1\r\n");
    // Without the profile's folder the action is done and not logged.
    Outside::RemoveAll(L"C:\\Host\\profiles\\Server1");
    Outside::Reports.clear();
    Call(SlapPlayerRem, Request(L"unlogged"));
    EXPECT_EQ(Outside::Recorded(L"MSG").back(), L"MSG 1 unlogged");
    EXPECT_EQ(Outside::Reports, Lines{L"SlapPlayerRem: 76 Path not found"});
}

TEST(Bundle, HoldsPlayersListsAndSettings) {
    RemoteServer Game;
    Outside::PutIni(PlayersIni, L"IdleMax", L"Server1", L"x");
    Outside::PutIni(PlayersIni, L"BanMethod", L"Server1", L"1");
    std::wstring Players;
    for (int Slot = 0; Slot <= 16; ++Slot)
        Players += (Slot == 3 ? L"3|Qm9i|1|10.0.0.7|50" : L"") + std::wstring(L"\r\n");
    const std::wstring Text = Players + Outside::FileText(SettingsFile(L"BannedNames.ini")) +
                              Outside::FileText(SettingsFile(L"BannedIps.ini")) +
                              Outside::FileText(SettingsFile(L"Slaps.ini")) +
                              L"[Settings]\r\nBanMethod1\r\nIdlePunt0\r\nIdleMax5";
    EXPECT_EQ(CallGetPlayersRem(Request(L"")), std::to_wstring(Text.size()) + L"[-]Tessoral[-]zip:" + Text);
    EXPECT_FALSE(Outside::HasFile(SettingsFile(L"tmpplayerlist.txt")));
    EXPECT_FALSE(Outside::HasFile(SettingsFile(L"tmpplayerlistzip.txt")));
}

TEST(Bundle, ShortFilesRepeatTheBufferBeforeThem) {
    RemoteServer Game;
    Outside::PutFile(SettingsFile(L"BannedNames.ini"), L"names\r\n");
    Outside::PutFile(SettingsFile(L"BannedIps.ini"), L"");
    Outside::PutFile(SettingsFile(L"Slaps.ini"), L"S");
    const std::wstring Reply = CallGetPlayersRem(Request(L""));
    EXPECT_TRUE(
        Reply.ends_with(L"names\r\nnames\r\nSames\r\n[Settings]\r\nBanMethod0\r\nIdlePunt0\r\nIdleMax5"));
}

TEST(Bundle, FailedWithoutAGameAndEmptyWhenTheTableCannotBeRead) {
    RemoteServer Game;
    Game.SetWord(Game.Map().GameState, 0);
    EXPECT_EQ(CallGetPlayersRem(Request(L"")), L"Failed");
    EXPECT_FALSE(Outside::HasFile(SettingsFile(L"tmpplayerlist.txt")));
    Game.SetWord(Game.Map().GameState, 1);
    Game.SetWord(Game.Map().MaxPlayers, 4000);
    EXPECT_EQ(CallGetPlayersRem(Request(L"")), L"");
    EXPECT_EQ(Outside::Reports, Lines{L"GetPlayerList: 6 Overflow"});
}

TEST(Bundle, HoldsThePlayersWhoCouldBeRead) {
    Server Game;
    Game.Join(1, "Alice");
    Game.Join(2, "Bob");
    int Names = 0;
    Outside::BeforeCall = [&](TextView Name) {
        if (Name == L"Enc64" && ++Names == 2) Fail(1004, L"made to fail");
    };
    const std::wstring Reply = CallGetPlayersRem(Request(L""));
    Outside::BeforeCall = nullptr;
    EXPECT_NE(Reply.find(L"1|QWxpY2U=|"), std::wstring::npos) << Reply;
    EXPECT_EQ(Reply.find(L"2|Qm9i|"), std::wstring::npos);
    EXPECT_EQ(Outside::Reports, Lines{L"GetPlayerList: 1004 made to fail"});
}

// Whatever one console sends, lists and log keep what others have put there, and later ticks cost no more for
// it.
TEST(Remote, AFloodOfRequestsCostsNobodyElseAnything) {
    RemoteServer Game;
    const auto CallsOfATick = [] {
        const long Before = Outside::Calls;
        tmrVN_Timer(TestProfile);
        return Outside::Calls - Before;
    };
    const long Calls = CallsOfATick();
    Call(SlapPlayerRem, Request(L"first"));
    const std::wstring Names = Outside::FileText(SettingsFile(L"BannedNames.ini"));
    for (int Number = 0; Number < 670; ++Number) {
        const std::wstring Big(Number % 2 == 0 ? 1'001 : 20'000, L'x');
        Call(AddBannedRem, Request(Sent(L"{" + Big + L"[1]}|{" + Big + L"}|Name")));
        Call(AddSlapRem, Request(Big));
        Call(SetIdleMax, Request(std::wstring(Big.size(), L'1')));
    }
    EXPECT_EQ(Outside::FileText(SettingsFile(L"BannedNames.ini")), Names);
    EXPECT_EQ(Outside::FileText(SettingsFile(L"Slaps.ini")), L"[Messages]\r\n0=one\r\n1=two\r\n");
    EXPECT_EQ(Outside::FileText(LogFile), L"[07:08:09][Vantor] Slap Player (Message: first) from admin1\r\n");
    EXPECT_LE(Outside::Recorded(L"ErrorBox").size(), 4u);
    EXPECT_EQ(CallsOfATick(), Calls);
}

} // namespace
