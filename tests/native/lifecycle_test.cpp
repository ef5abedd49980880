// Load, hide, disable, unload, and what each leaves behind.
#include <gtest/gtest.h>

#include "enforcement/permanent_lists.h"
#include "game/mdlVNT.h"
#include "plugin/lifecycle.h"
#include "tests/fakes/server.h"
#include "window/frmVNT.h"

namespace {

TEST(Lifecycle, IndexZeroLoadsNothing) {
    Server Game;
    Load(0, HostWindow, HostData());
    EXPECT_FALSE(frmVNT::IsLoaded());
    EXPECT_TRUE(Outside::Reports.empty());
    EXPECT_TRUE(SetProfileData(0, HostData())); // a remote call may name it
}

// Nobody is killed, switched or counted idle for what a namesake did on another server.
TEST(Lifecycle, AnotherServerOnAnIndexStartsAfresh) {
    for (const auto& [Folder, Process, IsOther] :
         {std::tuple<TextView, Long, bool>{L"SERVER1", ProcessRef, false},
          {L"Server2", ProcessRef, true},
          {L"Server1", ProcessRef + 1, true}}) {
        Server Game;
        for (auto* const List : {&mdlVNT::KillPermList, &mdlVNT::DisarmPermList, &mdlVNT::SwitchQueue})
            (*List)(TestProfile).Add(L"Bob", L"Bob");
        mdlVNT::IdleTables(TestProfile).IdleSeconds[7] = 290;
        SetProfileData(TestProfile, HostData(Folder, L"DF", Process));
        for (auto* const List : {&mdlVNT::KillPermList, &mdlVNT::DisarmPermList, &mdlVNT::SwitchQueue})
            EXPECT_EQ((*List)(TestProfile).Count(), IsOther ? 0u : 1u);
        EXPECT_EQ(mdlVNT::IdleTables(TestProfile).IdleSeconds[7], IsOther ? 0 : 290);
    }
}

TEST(Lifecycle, BadProfileDataIsReportedAndChangesNoRecord) {
    Pdat Short = HostData(), NoNumber = HostData(L"Other");
    Short.resize(4);
    NoNumber[PdatElement::MessageRef].Number.reset();
    const std::tuple<Long, Pdat, TextView> Table[] = {
        {TestProfile, {}, L"9 Subscript out of range: PDAT(2)"},
        {TestProfile, Short, L"9 Subscript out of range: PDAT(4)"},
        {TestProfile, NoNumber, L"13 Type mismatch: PDAT(6)"},
        {-1, HostData(), L"9 Subscript out of range"},
        {32768, HostData(), L"9 Subscript out of range"}};
    for (const auto& [Index, Data, Report] : Table) {
        Server Game;
        Load(Index, HostWindow, Data);
        EXPECT_EQ(Outside::Reports, Lines{L"SetProfileData: " + std::wstring(Report)}) << Index;
        EXPECT_EQ(mdlVNT::Profiles(TestProfile).ProfileFolder, L"Server1");
        EXPECT_FALSE(mdlVNT::Profiles.Has(32768));
        UnLoad();
    }
    EXPECT_TRUE(SetProfileData(MaxProfileIndex, HostData()));
}

TEST(Lifecycle, DisableClearsOneProfile) {
    Server Game;
    SetProfileData(2, HostData(L"Server2"));
    for (const Long Index : {2, TestProfile}) {
        for (auto* const List : {&mdlVNT::KillPermList, &mdlVNT::DisarmPermList, &mdlVNT::SwitchQueue})
            (*List)(Index).Add(L"Bob", L"Bob");
        for (auto* const States : {&mdlVNT::LifeStates, &mdlVNT::ArmedFlags})
            (*States)(Index).Add(1, L"Bob_7");
        mdlVNT::IdleTables(Index).IdleSeconds[7] = 30;
        mdlVNT::IpListChanged(Index) = false;
    }
    Disable(TestProfile);
    EXPECT_FALSE(InKillPermList(TestProfile, L"Bob"));
    EXPECT_EQ(mdlVNT::IdleTables(TestProfile).IdleSeconds[7], 0);
    EXPECT_TRUE(mdlVNT::IpListChanged(TestProfile));
    for (auto* const States : {&mdlVNT::MemoryMap, &mdlVNT::LifeStates, &mdlVNT::ArmedFlags})
        EXPECT_EQ((*States)(TestProfile).Count(), 0u);
    EXPECT_EQ(mdlVNT::DisarmPermList(TestProfile).Count() + mdlVNT::SwitchQueue(TestProfile).Count(), 0u);
    EXPECT_EQ(mdlVNT::Profiles(TestProfile).ProfileFolder, L"Server1"); // the record stays
    EXPECT_TRUE(InKillPermList(2, L"Bob"));
    EXPECT_FALSE(mdlVNT::IpListChanged(2));
    Disable(77); // no arrays: nothing to do
    EXPECT_TRUE(Outside::Reports.empty());
    Disable(-1);
    EXPECT_EQ(Outside::Reports, Lines{L"DisableProfile: 9 Subscript out of range"});
}

TEST(Lifecycle, UnloadKeepsThePermanentListsAndTakesTheFilterDown) {
    Server Game;
    Load(TestProfile, HostWindow, HostData());
    mdlVNT::KillPermList(TestProfile).Add(L"Bob", L"Bob");
    Outside::Journal.clear();
    UnLoad();
    EXPECT_EQ(Outside::Journal,
              (Lines{L"ClearFilters \\\\.\\DrvFltIp", L"StopDriver DrvFltIp2", L"UnloadDriver DrvFltIp2",
                     L"StopDriver IpFilterDriver", L"UnloadDriver IpFilterDriver"}));
    EXPECT_FALSE(frmVNT::IsLoaded());
    EXPECT_FALSE(mdlVNT::MemoryMap.Has(TestProfile) || mdlVNT::LifeStates.Has(TestProfile) ||
                 mdlVNT::ArmedFlags.Has(TestProfile) || mdlVNT::SwitchQueue.Has(TestProfile) ||
                 mdlVNT::IdleTables.Has(TestProfile));
    EXPECT_EQ(mdlVNT::LastProcessRef, 0);
    EXPECT_TRUE(InKillPermList(TestProfile, L"Bob"));
    SetProfileData(TestProfile, HostData());
    EXPECT_EQ(mdlVNT::MemoryMap(TestProfile).Count(), 13u);
}

} // namespace
