// Failure at every place: each scenario is run once to count its outside calls, and then once for each call
// and kind of fault. Whatever fails, the host sees nothing, at most one report is made, and the next run does
// its whole job.
#include <gtest/gtest.h>

#include <cstdio>

#include "enforcement/sweep.h"
#include "game/mdlVNT.h"
#include "host/memory_helper.h"
#include "plugin/lifecycle.h"
#include "plugin/remote.h"
#include "tests/native/server.h"

namespace {

RemoteRequest Request(std::wstring Data) {
    RemoteRequest Made{Profile, HostData(), HostValue{}};
    Made.Data->Text = std::move(Data);
    return Made;
}

// Base64 of "Bob", "9.9.9.9", "Eve" and "Eve[1]".
constexpr const wchar_t *Bob = L"Qm9i", *Nines = L"OS45LjkuOQ==", *Eve = L"RXZl", *EveKey = L"RXZlWzFd";

struct Scenario {
    const char* Name;
    void (*Run)();
};

const Scenario Scenarios[] = {
    {"tick by the command line", [] { tmrVN_Timer(Profile); }},
    {"tick by the kernel driver",
     [] {
         Outside::PutIni(PlayersIni, L"BanMethod", L"Server1", L"1");
         mdlVNT::IpListChanged(Profile) = true;
         tmrVN_Timer(Profile);
     }},
    {"load and unload",
     [] {
         LoadInterface(Profile, HostWindow, HostData()), UnLoadInterface(),
             SetProfileData(Profile, HostData());
     }},
    {"GetPlayersRem", [] { GetPlayersRem(Request(L"")); }},
    {"ban by PuntPlayerRem", [] { PuntPlayerRem(Request(std::wstring(Bob) + L"|10.0.0.7|3|x|" + Bob)); }},
    {"ArmPlayerRem", [] { ArmPlayerRem(Request(std::wstring(Bob) + L"|Disarm")); }},
    {"SlapPlayerRem", [] { SlapPlayerRem(Request(L"go")); }},
    {"AddSlapRem", [] { AddSlapRem(Request(L"three")); }},
    {"DeleteSlapRem", [] { DeleteSlapRem(Request(L"one")); }},
    {"EditSlapRem", [] { EditSlapRem(Request(L"one|two")); }},
    {"AddBannedRem, name", [] { AddBannedRem(Request(std::wstring(EveKey) + L"||Name")); }},
    {"AddBannedRem, address", [] { AddBannedRem(Request(std::wstring(Nines) + L"||IP")); }},
    {"RemoveBannedRem, name", [] { RemoveBannedRem(Request(std::wstring(Eve) + L"|Name|1")); }},
    {"RemoveBannedRem, address", [] { RemoveBannedRem(Request(std::wstring(Nines) + L"|IP|1")); }},
    {"SetBanMethod", [] { SetBanMethod(Request(L"0")); }},
};

// A server with something to do for every step of a tick.
struct BusyServer : Server {
    BusyServer() {
        Join(1, "Alice", "10.0.0.1");
        Join(3, "Bob", "10.0.0.7");
        Join(4, "Carol", "10.0.0.4");
        BanName(L"Alice[1]");
        BanName(L"lic[2]");
        BanIp(L"9.9.9.9");
        Outside::PutFile(SettingsFile(L"BannedReference.ini"), L"[Eve]\r\n0=9.9.9.9\r\n1=8.8.8.8\r\n");
        Outside::PutFile(SettingsFile(L"Slaps.ini"), L"[Messages]\r\n0=one\r\n1=two\r\n");
        Outside::PutIni(PlayersIni, L"IdlePunt", L"Server1", L"1");
        mdlVNT::KillPermList(Profile).Add(L"Carol", L"Carol");
    }
};

long CallsOf(const Scenario& Each) {
    BusyServer Game;
    Outside::Calls = 0;
    Each.Run();
    return Outside::Calls;
}

// The lists may only hold less than before by the entry being written.
void ExpectListsWhole() {
    EXPECT_FALSE(Outside::IniValue(SettingsFile(L"BannedNames.ini"), L"Players", L"Alice[1]").empty());
    EXPECT_FALSE(Outside::IniValue(SettingsFile(L"BannedNames.ini"), L"Players", L"lic[2]").empty());
}

TEST(Faults, AtEveryOutsideCallOfEveryScenario) {
    long Injected = 0;
    for (const Scenario& Each : Scenarios) {
        const long Calls = CallsOf(Each);
        ASSERT_GT(Calls, 0) << Each.Name;
        for (const auto Kind : {Outside::Fault::Failure, Outside::Fault::WrongType,
                                Outside::Fault::OutOfMemory, Outside::Fault::Empty}) {
            for (long Call = 1; Call <= Calls; ++Call) {
                BusyServer Game;
                Outside::FailCall(Call, Kind);
                Each.Run();
                ASSERT_TRUE(Outside::FaultHappened()) << Each.Name << " call " << Call;
                // An empty answer may break two things; a failure ends one procedure.
                const std::size_t Most = Kind == Outside::Fault::Empty ? 2 : 1;
                EXPECT_LE(Outside::Reports.size(), Most) << Each.Name << " call " << Call;
                ExpectListsWhole();
                ++Injected;
                Outside::FailCall(0, Kind);
                Outside::Reports.clear();
                SetProfileData(Profile, HostData());
                tmrVN_Timer(Profile);
                EXPECT_TRUE(Outside::Reports.empty()) << Each.Name << " call " << Call;
                EXPECT_FALSE(Game.World.Players[1].Present) << Each.Name << " call " << Call;
                // An empty text in place of a name is a nameless player, whom the sweep punts.
                EXPECT_TRUE(Kind == Outside::Fault::Empty || Game.World.Players[4].Present)
                    << Each.Name << " call " << Call;
            }
        }
    }
    std::printf("faults injected: %ld\n", Injected);
}

TEST(Faults, TenThousandTicksOfEightProfilesLeaveNothingBehind) {
    Server Game;
    for (Long Index = 1; Index <= 8; ++Index) SetProfileData(Index, HostData());
    BanName(L"lic[2]");
    mdlVNT::KillPermList(Profile).Add(L"Nobody", L"Nobody");
    for (int Tick = 0; Tick < 10000; ++Tick) {
        if (Tick % 100 == 0) Game.Join(1 + Tick / 100 % 16, "Alice" + std::to_string(Tick));
        tmrVN_Timer(1 + Tick % 8);
        Outside::Journal.clear();
    }
    EXPECT_TRUE(Outside::Reports.empty());
    EXPECT_EQ(mdlVNT::KillPermList(Profile).Count(), 0u);
}

} // namespace
