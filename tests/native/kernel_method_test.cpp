// What reaches the packet filter, in order.
#include <gtest/gtest.h>

#include "enforcement/kernel_method.h"
#include "enforcement/sweep.h"
#include "game/mdlVNT.h"
#include "tests/fakes/server.h"

namespace {

// A server under the kernel method.
struct KernelServer : Server {
    KernelServer() { Outside::PutIni(PlayersIni, L"BanMethod", L"Server1", L"1"); }
    Lines Tick() {
        Outside::Journal.clear();
        tmrVN_Timer(TestProfile);
        Lines Calls;
        for (const std::wstring& Text : Outside::Journal)
            if (!Text.starts_with(L"ErrorBox")) Calls.push_back(Text);
        return Calls;
    }
};

const Lines Asked{L"IsServiceRunning IpFilterDriver", L"IsServiceRunning DrvFltIp2"};

Lines AskedThen(Lines More) {
    More.insert(More.begin(), Asked.begin(), Asked.end());
    return More;
}

TEST(KernelMethod, RebuildsAfterAChangeWithExactAddressesOnly) {
    KernelServer Game;
    Game.SetWord(Game.Map().GamePort, 40000); // beyond a signed 16-bit number
    for (const TextView Address : {L"1.2.3.4", L"5.6.*", L"*", L"0.0.0.9"}) BanIp(Address);
    EXPECT_EQ(Game.Tick(), AskedThen({L"ClearFilters \\\\.\\DrvFltIp", L"SetFilters 67305985 -25536",
                                      L"SetFilters 150994944 -25536"}));
    EXPECT_EQ(Game.Tick(), Asked); // nothing has changed
}

TEST(KernelMethod, AMissingFileClearsOnce) {
    KernelServer Game;
    EXPECT_EQ(Game.Tick(), AskedThen({L"ClearFilters \\\\.\\DrvFltIp"}));
    EXPECT_EQ(Game.Tick(), Asked);
}

TEST(KernelMethod, LoadsTheDriverOnEveryTickThatFindsItStopped) {
    KernelServer Game;
    mdlVNT::IpListChanged(TestProfile) = false;
    Outside::ServiceState = 4;
    const Lines Loaded = AskedThen(
        {L"LoadFWDriver \\\\.\\DrvFltIp DrvFltIp2 C:\\Host\\DrvFltIp.sys", L"StartFW \\\\.\\DrvFltIp"});
    EXPECT_EQ(Game.Tick(), Loaded);
    EXPECT_EQ(Game.Tick(), Loaded);
}

TEST(KernelMethod, AnAddressThatIsNoneEndsTheTickAndIsTriedAgain) {
    KernelServer Game;
    for (const TextView Address : {L"1.2.3.4", L"300.1.1.1", L"9.9.9.9"}) BanIp(Address);
    const Lines First = AskedThen({L"ClearFilters \\\\.\\DrvFltIp", L"SetFilters 67305985 -32768"});
    EXPECT_EQ(Game.Tick(), First);
    EXPECT_TRUE(mdlVNT::IpListChanged(TestProfile));
    EXPECT_EQ(Game.Tick(), First);
    EXPECT_EQ(Outside::Reports, Lines(2, L"tmrVN: 6 Overflow [300.1.1.1]"));
}

TEST(KernelMethod, AnAddressAddedWhileTheRulesAreSentIsNotForgotten) {
    KernelServer Game;
    BanIp(L"1.2.3.4");
    Outside::BeforeCall = [](TextView Name) {
        if (Name != L"SetFilters") return;
        Outside::BeforeCall = nullptr;
        BanIp(L"1.2.3.5");
        mdlVNT::IpListChanged(TestProfile) = true;
    };
    Game.Tick();
    EXPECT_EQ(Game.Tick(), AskedThen({L"ClearFilters \\\\.\\DrvFltIp", L"SetFilters 67305985 -32768",
                                      L"SetFilters 84083201 -32768"}));
}

TEST(KernelMethod, AMissingLibraryIsReportedUnderTheTick) {
    KernelServer Game;
    Outside::FilterMissing = true;
    EXPECT_TRUE(Game.Tick().empty());
    EXPECT_EQ(Outside::Reports, Lines{L"tmrVN: 48 Error in loading DLL"});
    Outside::FilterMissing = false;
    EXPECT_FALSE(Game.Tick().empty());
}

TEST(KernelMethod, TheFilterIsLeftAloneUnderTheCommandLine) {
    Server Game;
    BanIp(L"1.2.3.4");
    tmrVN_Timer(TestProfile);
    EXPECT_TRUE(Outside::Journal.empty());
    EXPECT_TRUE(mdlVNT::IpListChanged(TestProfile)); // waits until the method is chosen
}

} // namespace
