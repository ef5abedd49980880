// The real DLL against real game server processes: who is listed goes, nobody else does, and nothing that is
// open on the screen holds it up.
#include "tests/wine/support.h"

namespace {

using namespace Support;

class SweepOfServers : public PluginTest {
protected:
    static void WriteBans(const std::wstring& Folder) {
        const std::wstring Settings = L"profiles\\" + Folder + L"\\settings\\";
        WriteText(Settings + L"BannedNames.ini",
                  "[Players]\r\nBob[1]=2026-01-01 9:00:00[-]None\r\nspam[2]=2026-01-01 9:00:00[-]None\r\n");
        WriteText(Settings + L"BannedIps.ini",
                  "[IpAddresses]\r\n10.0.0.66=2026-01-01 9:00:00\r\n172.16.*=2026-01-01 9:00:00\r\n");
    }
};

// Everybody that a rule names, and beside each somebody whom it must spare.
constexpr const char* Crowd = "100 join 1 Alice 10.0.0.1\n"
                              "100 join 2 Bob 10.0.0.2 red\n"
                              "100 join 3 Bobby 10.0.0.3\n"
                              "100 join 4 \"the spammer\" 10.0.0.4\n"
                              "100 join 5 Mallory 10.0.0.66 red\n"
                              "100 join 6 Carol 172.16.9.9\n"
                              "100 join 7 Dave 172.17.9.9 red\n"
                              "100 join 8 \"  \" 10.0.0.8\n"
                              "100 join 9 Erin 10.0.0.6\n"
                              "100 join 10 SPAMMY 10.0.0.10\n";
constexpr const char* Banned[] = {"Bob", "the spammer", "Mallory", "Carol", "  "};
constexpr const char* Innocent[] = {"Alice", "Bobby", "Dave", "Erin", "SPAMMY"};

} // namespace

// Here the timers tick by themselves; how soon is for the demonstration to show, which names the
// milliseconds.
TEST_F(SweepOfServers, BothBuildsLoseTheirBannedPlayersByTheTimersThemselves) {
    WriteBans(L"one");
    WriteBans(L"two");
    const GameServer Standard(L"one", L"--build standard", Crowd),
        Affiliate(L"two", L"--build affiliate", Crowd);
    ASSERT_TRUE(Standard.Await("join", "SPAMMY") && Affiliate.Await("join", "SPAMMY"));
    Load(1, {L"one", StandardGame, &Standard});
    Load(2, {L"two", AffiliateGame, &Affiliate});
    for (const GameServer* Server : {&Standard, &Affiliate})
        for (const char* Name : Banned) EXPECT_TRUE(Server->Await("dropped", Name)) << Name;
    for (const GameServer* Server : {&Standard, &Affiliate}) {
        EXPECT_EQ(Server->Count("dropped"), static_cast<int>(std::size(Banned)));
        for (const char* Name : Innocent) EXPECT_FALSE(Server->Find("dropped", Name)) << Name;
        const Simulation::JournalEntry* Dropped = Server->Find("dropped", "Bob");
        ASSERT_TRUE(Dropped);
        EXPECT_TRUE(Dropped->Detail.ends_with(" punt 02")) << Dropped->Detail;
        EXPECT_EQ(Server->Count("message"), 0) << "a sweep makes no announcement";
    }
    EXPECT_TRUE(ErrorLog().empty()) << ErrorLog().front();
    EXPECT_TRUE(BoxesSeen().empty());
}

TEST_F(SweepOfServers, GoesOnWhileHiddenAndBehindABox) {
    WriteBans(L"hidden");
    const GameServer Server(L"hidden", L"--build standard",
                            "100 join 1 Alice 10.0.0.1\n100 join 2 Bob 10.0.0.2\n");
    const Profile Given{L"hidden", StandardGame, &Server};
    ASSERT_TRUE(Server.Await("join", "Bob"));
    Load(1, Given);
    Late.Call(L"HideInterface");
    EXPECT_FALSE(IsWindowVisible(Frame()));
    // The second load meets the timer of the first: a report, whose box stays open from here on.
    CloseBoxes(false);
    Load(1, Given);
    EXPECT_EQ(ReportsOf("LoadInterface"), 1);
    EXPECT_TRUE(IsWindowVisible(Frame()));
    ASSERT_TRUE(PumpUntil([&] { return !BoxesSeen().empty() && Server.Find("dropped", "Bob") != nullptr; }))
        << "no punt behind the open box";
    EXPECT_EQ(BoxesSeen(), std::vector<std::wstring>{L"DLL Error!"});
    EXPECT_FALSE(Server.Find("dropped", "Alice"));
}

TEST_F(SweepOfServers, DisabledProfilesAreLeftAloneAndComeBack) {
    WriteBans(L"off");
    const GameServer Server(L"off", L"--build standard", "100 join 1 Bob 10.0.0.2\n");
    const Profile Given{L"off", StandardGame, &Server};
    ASSERT_TRUE(Server.Await("join", "Bob"));
    Load(1, Given);
    ASSERT_EQ(Early->DisableProfile(1), S_OK);
    EXPECT_FALSE(PumpUntil([&] { return Server.Count("dropped") > 0; }, 6000)) << "a tick after the end";
    Load(1, Given);
    EXPECT_EQ(ReportsOf("LoadInterface"), 0) << "the timer was taken away, so it can be made again";
    Sweep(1);
    EXPECT_TRUE(Server.Await("dropped", "Bob", 1000));
}

TEST_F(SweepOfServers, KernelMethodFiltersAddressesAndIsTakenDown) {
    WriteBans(L"filtered");
    WriteText(L"Plugins\\Players.ini", "[BanMethod]\r\nfiltered=1\r\n");
    const GameServer Server(
        L"filtered", L"--build standard --port 32123 --filter engine.state",
        "100 join 1 Mallory 10.0.0.66\n100 join 2 Carol 172.16.9.9\n100 join 3 Bob 10.0.0.2\n");
    ASSERT_TRUE(Server.Await("join", "Bob"));
    Load(1, {L"filtered", StandardGame, &Server});
    Sweep(1);
    EXPECT_TRUE(Server.Await("dropped", "Mallory", 3000));
    EXPECT_TRUE(Server.Find("dropped", "Mallory")->Detail.ends_with(" filtered"));
    EXPECT_TRUE(Server.Await("dropped", "Bob", 1000)) << "names are punted under this method, too";
    EXPECT_FALSE(Server.Find("dropped", "Carol")) << "ranges never reach the driver";
    EXPECT_NE(ReadText(L"engine.state").find("filter 10.0.0.66 32123 "), std::string::npos);
    Automation::Values Nothing;
    Nothing.push_back(Automation::FromText(L""));
    Late.Call(L"UnLoadInterface", std::move(Nothing));
    EXPECT_TRUE(PumpUntil([] { return ReadText(L"engine.state").find("session ") == std::string::npos; }))
        << "the library's session with the engine outlives the interface";
}

TEST_F(SweepOfServers, ActsOnRequestsOfRemoteConsoles) {
    const GameServer Server(L"remote", L"--build affiliate",
                            "100 join 1 Alice 10.0.0.1\n100 join 2 Dora 10.0.0.2\n100 join 3 Karl 10.0.0.3\n"
                            "100 join 12 Mallory 10.0.0.4 red\n");
    ASSERT_TRUE(Server.Await("join", "Mallory"));
    const Profile Given{L"remote", AffiliateGame, &Server};
    WriteText(L"profiles\\remote\\settings\\Slaps.ini", "[Messages]\r\n0=Mind your language.\r\n");
    // The profile was never loaded: a request brings its own data.
    EXPECT_EQ(Remote(L"ArmPlayerRem", 7, Given, L"S2FybA==|Kill"), 1);
    EXPECT_TRUE(Server.Await("killed", "Karl", 2000));
    EXPECT_EQ(Remote(L"ArmPlayerRem", 7, Given, L"RG9yYQ==|Disarm"), 1);
    EXPECT_TRUE(Server.Await("disarmed", "Dora", 2000));
    EXPECT_EQ(Remote(L"ArmPlayerRem", 7, Given, L"RG9yYQ==|Rearm"), 1);
    EXPECT_TRUE(Server.Await("armed", "Dora", 2000));
    EXPECT_EQ(Remote(L"ArmPlayerRem", 7, Given, L"QWxpY2U=|Switch"), 1);
    EXPECT_TRUE(Server.Await("switched", "Alice", 2000));
    EXPECT_EQ(Remote(L"PuntPlayerRem", 7, Given, L"TWFsbG9yeQ==|10.0.0.4|12|1|SW5zdWx0cw=="), 1);
    EXPECT_TRUE(Server.Await("dropped", "Mallory", 2000));
    EXPECT_NE(ReadText(L"profiles\\remote\\settings\\BannedNames.ini").find("Mallory[1]="),
              std::string::npos);
    EXPECT_NE(ReadText(L"profiles\\remote\\settings\\BannedNames.ini").find("[-]Insults"), std::string::npos);
    EXPECT_NE(ReadText(L"profiles\\remote\\settings\\BannedIps.ini").find("10.0.0.4="), std::string::npos);
    EXPECT_NE(ReadText(L"profiles\\remote\\settings\\BannedReference.ini").find("0=10.0.0.4"),
              std::string::npos);
    EXPECT_TRUE(ErrorLog().empty()) << ErrorLog().front();
}
