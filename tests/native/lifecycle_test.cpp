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
    LoadInterface(0, HostWindow, HostData());
    EXPECT_FALSE(frmVNT::IsLoaded());
    EXPECT_TRUE(Outside::Reports.empty());
    EXPECT_TRUE(SetProfileData(0, HostData())); // a remote call may name it
}

TEST(Lifecycle, LoadFillsTheRecordAndGrowsEveryArray) {
    Server Game;
    LoadInterface(Profile, HostWindow, HostData(L"Folder", L"DF_AFF", ProcessRef));
    EXPECT_TRUE(frmVNT::IsLoaded());
    EXPECT_EQ(mdlVNT::CurrentProfile, Profile);
    EXPECT_EQ(mdlVNT::LastProcessRef, ProcessRef);
    EXPECT_TRUE(mdlVNT::Profiles(Profile).IsAffiliate);
    EXPECT_EQ(mdlVNT::Profiles(Profile).ProfileFolder, L"Folder");
    EXPECT_TRUE(mdlVNT::IpListChanged(Profile));
    EXPECT_TRUE(mdlVNT::IdleTables.Has(Profile) && mdlVNT::SwitchQueue.Has(Profile) &&
                mdlVNT::ArmedFlags.Has(Profile));
    UnLoadInterface();
}

TEST(Lifecycle, BadProfileDataIsReportedAndChangesNoRecord) {
    struct Case {
        const char* What;
        Long Index;
        Pdat Data;
        TextView Report;
    };
    Pdat Short = HostData();
    Short.resize(4);
    Pdat NoNumber = HostData(L"Other");
    NoNumber[PdatElement::MessageRef].Number.reset();
    const Case Table[] = {{"empty", Profile, {}, L"SetProfileData: 9 Subscript out of range"},
                          {"too short", Profile, Short, L"SetProfileData: 9 Subscript out of range"},
                          {"no number", Profile, NoNumber, L"SetProfileData: 13 Type mismatch"},
                          {"negative", -1, HostData(), L"SetProfileData: 9 Subscript out of range"},
                          {"huge", 32768, HostData(), L"SetProfileData: 9 Subscript out of range"}};
    for (const Case& Each : Table) {
        Server Game;
        LoadInterface(Each.Index, HostWindow, Each.Data);
        EXPECT_EQ(Outside::Reports, Lines{std::wstring(Each.Report)}) << Each.What;
        EXPECT_EQ(mdlVNT::Profiles(Profile).ProfileFolder, L"Server1") << Each.What;
        EXPECT_FALSE(mdlVNT::Profiles.Has(32768));
        UnLoadInterface();
    }
    EXPECT_TRUE(SetProfileData(MaxProfileIndex, HostData()));
}

TEST(Lifecycle, ASecondLoadKeepsTheTimerAndReportsIt) {
    Server Game;
    LoadInterface(Profile, HostWindow, HostData());
    LoadInterface(Profile, HostWindow, HostData());
    EXPECT_EQ(Outside::Reports, Lines{L"LoadInterface: 360 Object already loaded"});
    Outside::Reports.clear();
    DisableProfile(Profile);
    LoadInterface(Profile, HostWindow, HostData());
    EXPECT_TRUE(Outside::Reports.empty());
    UnLoadInterface();
}

TEST(Lifecycle, DisableClearsOneProfile) {
    Server Game;
    SetProfileData(2, HostData(L"Server2"));
    for (const Long Index : {2, Profile}) {
        mdlVNT::KillPermList(Index).Add(L"Bob", L"Bob");
        mdlVNT::IdleTables(Index).IdleSeconds[7] = 30;
        mdlVNT::IpListChanged(Index) = false;
    }
    DisableProfile(Profile);
    EXPECT_FALSE(InKillPermList(Profile, L"Bob"));
    EXPECT_EQ(mdlVNT::IdleTables(Profile).IdleSeconds[7], 0);
    EXPECT_TRUE(mdlVNT::IpListChanged(Profile));
    EXPECT_EQ(mdlVNT::MemoryMap(Profile).Count(), 0u);
    EXPECT_EQ(mdlVNT::Profiles(Profile).ProfileFolder, L"Server1"); // the record stays
    EXPECT_TRUE(InKillPermList(2, L"Bob"));
    EXPECT_FALSE(mdlVNT::IpListChanged(2));
    DisableProfile(77); // no arrays: nothing to do
    EXPECT_TRUE(Outside::Reports.empty());
    DisableProfile(-1);
    EXPECT_EQ(Outside::Reports, Lines{L"DisableProfile: 9 Subscript out of range"});
}

TEST(Lifecycle, UnloadKeepsThePermanentListsAndTakesTheFilterDown) {
    Server Game;
    LoadInterface(Profile, HostWindow, HostData());
    mdlVNT::KillPermList(Profile).Add(L"Bob", L"Bob");
    Outside::Journal.clear();
    UnLoadInterface();
    EXPECT_EQ(Outside::Journal,
              (Lines{L"ClearFilters \\\\.\\DrvFltIp", L"StopDriver DrvFltIp2", L"UnloadDriver DrvFltIp2",
                     L"StopDriver IpFilterDriver", L"UnloadDriver IpFilterDriver"}));
    EXPECT_FALSE(frmVNT::IsLoaded());
    EXPECT_FALSE(mdlVNT::MemoryMap.Has(Profile));
    EXPECT_TRUE(InKillPermList(Profile, L"Bob"));
    SetProfileData(Profile, HostData());
    EXPECT_EQ(mdlVNT::MemoryMap(Profile).Count(), 13u);
}

} // namespace
