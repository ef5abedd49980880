// The plug-in through programs that people use: a script, the stand-in host and a remote console.
#include "tests/wine/support.h"

#include <algorithm>

namespace {

using namespace Support;

std::string WithoutReturns(std::string Text) {
    Text.erase(std::remove(Text.begin(), Text.end(), '\r'), Text.end());
    return Text;
}

// The stand-in host with one server, driven from outside; ends with the object.
class Host {
public:
    Host() {
        WriteText(L"host.ini", "[Host]\nPipe=vantor-test\nHostWideLogs=1\n"
                               "[Profile1]\nName=First\nFolder=first\nGameId=Delta Force,  V1.5.0.5\n"
                               "Server=gameserver.exe --scenario host.txt --journal server.journal\n"
                               "[Profile2]\nName=Other\nFolder=other\nGameId=Some other game\n"
                               "[Admin1]\nName=anna\nDescription=Anna (192.0.2.10)\nPrivileges=*\n"
                               "[Admin2]\nName=newcomer\nPrivileges=Slap Player\n");
        WriteText(
            L"host.txt",
            "100 join 1 Alice 10.0.0.1\n100 join 2 Bob 10.0.0.2 red\n100 join 3 \"Some one\" 10.0.0.3\n");
        WriteText(L"profiles\\first\\settings\\BannedNames.ini",
                  "[Players]\r\nEve[2]=2026-01-01 9:00:00[-]Reason\r\n");
        WriteText(L"adminlogs\\placeholder", "");
        WriteText(
            L"script.txt",
            "# what is timed\n2000 load 1\n2100 load 2\n2200 nonsense\n2500 menu 2 \"Kill Player (Once)\"\n");
        Program = std::make_unique<Process>(L"\"" + BaseFolder() +
                                            L"\\host.exe\" --script script.txt --journal host.journal");
    }

    static bool Journalled(const std::string& Text) {
        return PumpUntil([&] { return ReadText(L"host.journal").find(Text) != std::string::npos; });
    }
    bool HasEnded() const {
        return PumpUntil([&] { return Program->HasEnded(); });
    }

private:
    std::unique_ptr<Process> Program;
};

Ended Console(const std::wstring& Words) { return RunProgram(L"console.exe --pipe vantor-test " + Words); }

// The journal of the server that the host started.
bool ServerSaw(const std::string& Line) {
    return PumpUntil([&] { return ReadText(L"server.journal").find(Line) != std::string::npos; });
}

} // namespace

TEST_F(PluginTest, ScriptIsAClientAndAConsole) {
    if (!LoadLibraryExW(L"vbscript.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE))
        GTEST_SKIP() << "this Windows has no VBScript: it is a feature on demand";
    const GameServer Server(L"script", L"--build standard",
                            "100 join 1 \"Al ice\" 10.0.0.1\n100 join 2 Bob 10.0.0.2\n");
    ASSERT_TRUE(Server.Await("join", "Bob"));
    // An empty list would repeat the one before it.
    for (const auto& [List, Section] :
         {std::pair(L"BannedNames", "[Players]"), std::pair(L"BannedIps", "[IpAddresses]"),
          std::pair(L"Slaps", "[Messages]")})
        WriteText(std::wstring(L"profiles\\script\\settings\\") + List + L".ini",
                  std::string(Section) + "\r\n");
    const Ended Script = RunProgram(
        L"cscript //nologo \"" + ProgramFolder() + L"\\client.vbs\" " + std::to_wstring(HandleToLong(Area)) +
        L" " + std::to_wstring(Server.ProcessRef()) + L" " + std::to_wstring(Server.MessageRef()));
    EXPECT_EQ(Script.ExitCode, 0u);
    const std::wstring Version = Automation::AsText(*[&] {
        Automation::Values Name;
        Name.push_back(Automation::FromText(L"tests"));
        return Late.Call(L"dllVersion", std::move(Name));
    }());
    EXPECT_EQ(WithoutReturns(Script.Output),
              "version " + std::string(Version.begin(), Version.end()) +
                  "\nprivileges are 8200 (8200 is an array of strings)\nloaded\nhidden\n"
                  "player 1 Al ice 10.0.0.1\nplayer 2 Bob 10.0.0.2\npunt 1\n"
                  "length 0\nleft out 0\nunloaded\n");
    EXPECT_TRUE(Server.Await("dropped", "Bob", 2000));
    const std::string Log = ReadText(L"logs\\errors.log");
    EXPECT_NE(Log.find("AddSlapRem"), std::string::npos) << Log;
}

TEST(Programs, HostAndConsole) {
    const Host Running;
    ASSERT_TRUE(Host::Journalled("> load 1")) << ReadText(L"host.journal");
    EXPECT_TRUE(Host::Journalled("FAILED load 2: error 5, The plug-in does not serve this game"));
    EXPECT_TRUE(Host::Journalled("FAILED nonsense"));
    // The box "Player Killed." is modal for the window alone: consoles are served behind it.
    EXPECT_TRUE(ServerSaw("killed\t2\tBob"));
    EXPECT_TRUE(Host::Journalled("box \"Success\""));

    const Ended Players = Console(L"--admin newcomer players");
    EXPECT_EQ(Players.ExitCode, 0u) << Players.Output;
    EXPECT_EQ(WithoutReturns(Players.Output), "Players\n"
                                              "  Slot  Player    Team  IP        Ping\n"
                                              "  1     Alice     blue  10.0.0.1  50\n"
                                              "  2     Bob       red   10.0.0.2  50\n"
                                              "  3     Some one  blue  10.0.0.3  50\n"
                                              "Banned names\n"
                                              "  Name  Match  Added               Reason\n"
                                              "  Eve   part   2026-01-01 9:00:00  Reason\n"
                                              "Banned addresses: none\nSlap messages: none\n"
                                              "Settings\n"
                                              "  Setting    Value\n"
                                              "  BanMethod  0\n  IdlePunt   0\n  IdleMax    5\n");
    const Ended Refused = Console(L"--admin newcomer punt 1");
    EXPECT_EQ(Refused.ExitCode, 1u);
    EXPECT_NE(Refused.Output.find("Punt/Ban Player"), std::string::npos) << Refused.Output;
    EXPECT_EQ(Console(L"--admin anna ban 3 Too loud").ExitCode, 0u);
    EXPECT_TRUE(ServerSaw("punt 03"));
    EXPECT_EQ(Console(L"--admin newcomer slap \"Hello there\"").ExitCode, 0u);
    EXPECT_TRUE(ServerSaw("Hello there"));
    EXPECT_EQ(Console(L"--admin anna addip 300.1.1.1").ExitCode, 1u);
    EXPECT_EQ(Console(L"--admin anna frobnicate").ExitCode, 1u);
    EXPECT_EQ(Console(L"--admin").ExitCode, 2u);

    EXPECT_EQ(Console(L"host closeboxes").ExitCode, 0u);
    EXPECT_EQ(Console(L"host quit").ExitCode, 0u);
    EXPECT_TRUE(Running.HasEnded());
    SYSTEMTIME Now{};
    GetLocalTime(&Now);
    wchar_t Name[32];
    swprintf(Name, 32, L"adminlogs\\%04d-%02d-%02d.txt", Now.wYear, Now.wMonth, Now.wDay);
    const std::string Log = ReadText(Name);
    EXPECT_NE(Log.find("][Vantor] Ban Player #3 (Name: Some one, IP: 10.0.0.3) from Anna (192.0.2.10)"),
              std::string::npos)
        << Log;
    EXPECT_EQ(Log.find("Punt Player"), std::string::npos) << "a refused request leaves no line";
}
