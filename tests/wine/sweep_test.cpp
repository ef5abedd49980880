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
    Load(1, Given);
    EXPECT_TRUE(IsWindowVisible(Frame()));
    // A request that fails: its box stays open from here on.
    CloseBoxes(false);
    EXPECT_EQ(Remote(L"PuntPlayerRem", 1, Given, L"without fields"), 0);
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
    Early->UnLoadInterface(nullptr);
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
    const struct {
        const wchar_t *Member, *Data;
        const char *Event, *Name;
    } Table[] = {{L"ArmPlayerRem", L"S2FybA==|Kill", "killed", "Karl"},
                 {L"ArmPlayerRem", L"RG9yYQ==|Disarm", "disarmed", "Dora"},
                 {L"ArmPlayerRem", L"RG9yYQ==|Rearm", "armed", "Dora"},
                 {L"ArmPlayerRem", L"QWxpY2U=|Switch", "switched", "Alice"},
                 {L"PuntPlayerRem", L"TWFsbG9yeQ==|10.0.0.4|12|1|SW5zdWx0cw==", "dropped", "Mallory"}};
    for (const auto& Row : Table) { // the profile was never loaded: a request brings its own data
        EXPECT_EQ(Remote(Row.Member, 7, Given, Row.Data), 1) << Row.Event;
        EXPECT_TRUE(Server.Await(Row.Event, Row.Name, 2000)) << Row.Event;
    }
    const std::pair<const wchar_t*, const char*> Files[] = {{L"BannedNames.ini", "Mallory[1]="},
                                                            {L"BannedNames.ini", "[-]Insults"},
                                                            {L"BannedIps.ini", "10.0.0.4="},
                                                            {L"BannedReference.ini", "0=10.0.0.4"}};
    for (const auto& [Name, Entry] : Files)
        EXPECT_NE(ReadText(L"profiles\\remote\\settings\\" + std::wstring(Name)).find(Entry),
                  std::string::npos);
    EXPECT_TRUE(ErrorLog().empty()) << ErrorLog().front();
}

// --- Odd names through the whole way: read from the game, banned by a console, stored in a real INI file,
// found by the sweep, and removed again.

std::wstring Wide(const std::string& Bytes) {
    std::wstring Text(Bytes.size(), L'\0');
    const auto Size = static_cast<int>(Bytes.size());
    Text.resize(
        static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, Bytes.data(), Size, Text.data(), Size)));
    return Text;
}

// Whether the byte alone is a character, as all are in Western code pages and none above 127 is in UTF-8.
bool IsCharacter(char Byte) {
    char Back[8] = "";
    return WideCharToMultiByte(CP_ACP, 0, Wide({Byte}).data(), -1, Back, sizeof Back, nullptr, nullptr) ==
               2 &&
           Back[0] == Byte;
}

TEST_F(SweepOfServers, FindsOddNamesAndNobodyElse) {
    std::vector<std::string> Names{"trail ", "50% & B", "\"quoted\"", "a[1]b", "p|ipe;", "'single'"};
    for (int From = 128; From < 256; From += 32) {
        Names.push_back("x" + std::to_string(From));
        for (int Byte = From; Byte < From + 32; ++Byte)
            if (IsCharacter(static_cast<char>(Byte))) Names.back() += static_cast<char>(Byte);
    }
    std::string Scenario;
    for (std::size_t At = 0; At < Names.size(); ++At) {
        Scenario += "0 join " + std::to_string(At + 1) + " \"";
        for (const char Byte : Names[At]) {
            char Code[8];
            std::snprintf(Code, sizeof Code, "\\x%02X", static_cast<unsigned char>(Byte));
            Scenario += Code;
        }
        Scenario += "\" 10.0.0.1\n";
    }
    const GameServer Server(L"odd", L"--build standard --players 40", Scenario);
    ASSERT_TRUE(Server.Await("join", Names.back()));
    const Profile Given{L"odd", StandardGame, &Server};
    WriteText(L"profiles\\odd\\settings\\keep.txt", "");
    Load(1, Given);
    const Automation::Object Memory = Automation::Create(L"qrvGMF.clsMemory");
    const auto Encoded = [&](const std::wstring& Text) {
        Automation::Values Arguments;
        Arguments.push_back(Automation::FromText(Text));
        return Automation::AsText(*Memory.Call(L"Enc64", std::move(Arguments)));
    };
    int Dropped = 0;
    for (const std::string& Bytes : Names) {
        const std::wstring Name = Wide(Bytes);
        EXPECT_EQ(Remote(L"AddBannedRem", 1, Given, Encoded(Name + L"[1]") + L"|b2Rk|Name"), 1) << Bytes;
        Sweep(1);
        EXPECT_TRUE(Server.Await("dropped", Bytes)) << Bytes;
        EXPECT_EQ(Server.Count("dropped"), ++Dropped) << Bytes;
        EXPECT_EQ(Remote(L"RemoveBannedRem", 1, Given, Encoded(Name) + L"|Name"), 1) << Bytes;
    }
    const std::string File = ReadText(L"profiles\\odd\\settings\\BannedNames.ini");
    EXPECT_EQ(File.find("[-]odd"), std::string::npos) << File;
}
