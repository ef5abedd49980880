// Parts that die while the plug-in works with them: each is reported under the procedure that met it, harms
// nobody and loses nothing, and what is there again is used again.
#include "tests/wine/support.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <tuple>

#include "tests/wine/remove_folder.h"

namespace fs = std::filesystem;

namespace {

using namespace Support;

constexpr const char* Crowd = "0 join 1 Alice 10.0.0.1\n0 join 2 Bob 10.0.0.2\n0 join 3 Mallory 10.0.0.66\n"
                              "0 join 4 \"a spammer\" 10.0.0.4\n";

// The lists, which ban the last two of the crowd. What no trouble may cost stands at the end of each file,
// and each file fills a block of the disk.
struct Entry {
    const wchar_t* File;
    std::string Before, Kept;
};
const Entry Lists[] = {
    {L"BannedNames.ini", "[Players]\r\nGone[1]=2026-01-01 9:00:00[-]None\r\n;",
     "spam[2]=2026-01-01 9:00:00[-]None\r\n"},
    {L"BannedIps.ini", "[IpAddresses]\r\n;", "10.0.0.66=2026-01-01 9:00:00\r\n"},
    {L"BannedReference.ini", "[Bob]\r\n0=10.0.0.1\r\n[Zed]\r\n;", "0=10.0.0.66\r\n"},
    {L"Slaps.ini", "[Messages]\r\n0=one\r\n1=two\r\n;", "2=three\r\n"},
};

// What a console asks for, and the procedure that reports when it cannot be written down. "Bob", "Eve[1]",
// "9.9.9.9" and "Gone" are in Base64.
struct Request {
    const wchar_t *Member, *Data;
    const char* Procedure;
    Long Answer; // when it was done
};
constexpr Request Requests[] = {
    {L"PuntPlayerRem", L"Qm9i|10.0.0.2|2|1|", "PuntPlayer", 1},
    {L"AddBannedRem", L"RXZlWzFd||Name", "AddBannedRem", 1},
    {L"AddBannedRem", L"OS45LjkuOQ==||IP", "AddBannedRem", 1},
    {L"RemoveBannedRem", L"R29uZQ==|Name", "RemoveBannedRem", 1},
    {L"AddSlapRem", L"four", "AddSlapRem", 0},
    {L"EditSlapRem", L"one|ONE", "EditSlapRem", 0},
    {L"DeleteSlapRem", L"two", "DeleteSlapRem", 0},
};

class Parts : public PluginTest {
protected:
    void Start(const std::wstring& Folder, const wchar_t* Name = L"server",
               const wchar_t* Build = L"--build standard", const wchar_t* GameId = StandardGame) {
        Settings = fs::path(BaseFolder()) / L"profiles" / Folder / L"settings";
        for (const Entry& Item : Lists) {
            const std::string Filling(4094 - Item.Before.size() - Item.Kept.size(), '.');
            WriteText(Settings / Item.File, Item.Before + Filling + "\r\n" + Item.Kept);
        }
        Server.emplace(Name, Build, Crowd);
        ASSERT_TRUE(Server->Await("join", "a spammer"));
        Given = {Folder, GameId, &*Server};
        Load(1, Given);
        KillTimer(Frame(), ID_tmrVN + 1); // ticks come when the test wants them
    }
    void ExpectBannedDropped() {
        Sweep(1);
        EXPECT_TRUE(Server->Await("dropped", "a spammer", 1000) && Server->Find("dropped", "Mallory"));
        EXPECT_EQ(Server->Count("dropped"), 2);
    }
    // Everything that is written, by consoles and in the window; a tick goes on meanwhile in any case.
    void AskForEverything(bool IsWritable) {
        for (const Request& Current : Requests) {
            const int Expected = ReportsOf(Current.Procedure) + (IsWritable ? 0 : 1);
            EXPECT_EQ(Remote(Current.Member, 1, Given, Current.Data), IsWritable ? Current.Answer : 0)
                << Current.Data;
            EXPECT_EQ(ReportsOf(Current.Procedure), Expected) << Current.Data << ErrorLog().back();
        }
        BoxesSeen().clear();
        SetWindowTextW(Control(ID_txtBannedName), L"Wendy");
        PostMessageW(Control(ID_cmdAddName), BM_CLICK, 0, 0);
        EXPECT_TRUE(PumpUntil([] { return !BoxesSeen().empty(); }));
        EXPECT_EQ(BoxesSeen().front(), IsWritable ? L"Success" : L"DLL Error!");
        EXPECT_EQ(ReportsOf("cmdAddName"), IsWritable ? ReportsOfTheWindow : ++ReportsOfTheWindow);
        Sweep(1);
        EXPECT_EQ(ReportsOf("tmrVN"), 0);
        EXPECT_TRUE(Server->Await("dropped", "Bob", 1000)) << "whoever bans wants the player gone";
    }
    void ExpectKept() const {
        for (const Entry& Item : Lists)
            EXPECT_NE(ReadText(Settings / Item.File).find(Item.Kept.substr(1)), std::string::npos)
                << Item.Kept;
    }
    void ExpectAllWritten() {
        AskForEverything(true);
        for (const auto& [File, Text] :
             {std::pair(L"BannedNames.ini", "Bob[1]="), std::pair(L"BannedNames.ini", "Eve[1]="),
              std::pair(L"BannedNames.ini", "Wendy[1]="), std::pair(L"BannedIps.ini", "\n10.0.0.2="),
              std::pair(L"BannedIps.ini", "9.9.9.9="), std::pair(L"BannedReference.ini", "=10.0.0.2"),
              std::pair(L"Slaps.ini", "=four")})
            EXPECT_NE(ReadText(Settings / File).find(Text), std::string::npos) << Text;
        EXPECT_EQ(ReadText(Settings / L"BannedNames.ini").find("Gone"), std::string::npos);
    }

    std::optional<GameServer> Server;
    Profile Given;
    fs::path Settings;
    int ReportsOfTheWindow = 0;
};

} // namespace

// The server of profile 1 ends and comes back, as the one build or the other, and the host tells the plug-in
// with a load. Profile 2 goes on all the while.
TEST_F(Parts, AServerThatEndsAndComesBack) {
    const GameServer Steady(L"steady", L"--build affiliate",
                            "0 join 1 Nora 10.0.0.1\n0 join 2 spammy 10.0.0.2\n");
    int Ended = 0;
    for (const auto& [Name, Build, GameId] : {std::tuple(L"first", L"--build standard", StandardGame),
                                              std::tuple(L"same", L"--build standard", StandardGame),
                                              std::tuple(L"other", L"--build affiliate", AffiliateGame)}) {
        Start(L"changing", Name, Build, GameId);
        ExpectBannedDropped();
        EXPECT_EQ(ReportsOf("tmrVN"), Ended);
        Server.reset();
        Sweep(1);
        EXPECT_EQ(ReportsOf("tmrVN"), ++Ended) << "one report for each tick, until the host knows";
    }
    Load(2, {L"changing", AffiliateGame, &Steady});
    Sweep(2);
    EXPECT_TRUE(Steady.Await("dropped", "spammy", 1000));
    EXPECT_EQ(ReportsOf("tmrVN"), Ended);
}

// The number of a process that has ended is given to another before the host knows: to some program, or to a
// game server of the other build.
TEST_F(Parts, AProcessNumberThatIsNowAnothersPunishesNobody) {
    const GameServer Other(L"other", L"--build affiliate", Crowd);
    ASSERT_TRUE(Other.Await("join", "a spammer"));
    Start(L"mistaken");
    for (const Long Process : {static_cast<Long>(GetCurrentProcessId()), Other.ProcessRef()}) {
        Given.OtherProcess = Process;
        Load(1, Given);
        Sweep(1);
    }
    EXPECT_FALSE(Server->Await("dropped", {}, 300) || Other.Find("dropped"));
    EXPECT_GE(ReportsOf("GetPlayerList"), 2) << "not unseen";
    Given.OtherProcess = 0;
    Load(1, Given);
    ExpectBannedDropped();
}

// The first command is put where the game would take it; each further one is waited for a quarter of a
// second.
TEST_F(Parts, AServerThatHangsIsWaitedForBriefly) {
    Start(L"hung");
    SuspendThread(Server->Thread());
    const ULONGLONG Since = GetTickCount64();
    Sweep(1);
    Sweep(1);
    EXPECT_LT(GetTickCount64() - Since, 3000u);
    EXPECT_EQ(ReportsOf("PuntPlayer"), 3);
    EXPECT_EQ(ReportsOf("tmrVN"), 0) << "memory can be read";
    EXPECT_EQ(Remote(L"PuntPlayerRem", 1, Given, L"Qm9i|10.0.0.2|2"), 0);
    ResumeThread(Server->Thread());
    EXPECT_TRUE(Server->Await("dropped", {}, 1000));
    ExpectBannedDropped();
}

TEST_F(Parts, APacketFilterLibraryThatIsMissingOrNotWhole) {
    WriteText(L"Plugins\\Players.ini", "[BanMethod]\r\nfiltered=1\r\n");
    const std::string Whole = ReadText(L"qrvudpfw.dll");
    std::string Lacking = Whole;
    Lacking.replace(Lacking.find("SetFilters"), 10, "SetFilter_");
    Start(L"filtered");
    int Reports = 0;
    for (const auto& [File, Said] :
         {std::pair(std::string(), "Error 48: Error in loading DLL: qrvudpfw.dll"),
          std::pair(std::string("no library"), "Error 48: Error in loading DLL: qrvudpfw.dll"),
          std::pair(Lacking, "Error 453: Can't find DLL entry point SetFilters in qrvudpfw.dll")}) {
        WriteText(L"qrvudpfw.dll", File);
        if (File.empty()) fs::remove(fs::path(BaseFolder()) / L"qrvudpfw.dll");
        Sweep(1);
        EXPECT_EQ(ReportsOf("tmrVN"), ++Reports);
        EXPECT_NE(ErrorLog().back().find(Said), std::string::npos) << ErrorLog().back();
    }
    EXPECT_EQ(Server->Count("dropped"), 0);
    WriteText(L"qrvudpfw.dll", Whole);
    Sweep(1);
    EXPECT_EQ(ReportsOf("tmrVN"), Reports);
    EXPECT_TRUE(Server->Await("dropped", "a spammer", 1000));
    EXPECT_TRUE(
        PumpUntil([] { return ReadText(L"engine.state").find("filter 10.0.0.66 ") != std::string::npos; }));
}

// The rules go with the engine's session, and the plug-in does not send them again.
TEST_F(Parts, AFilteringEngineThatForgetsAndRefuses) {
    WriteText(L"Plugins\\Players.ini", "[BanMethod]\r\nengine=1\r\n");
    Start(L"engine");
    const auto IsBlockedByTicks = [&] {
        Sweep(1);
        return ReadText(L"engine.state").find("filter 10.0.0.66 ") != std::string::npos;
    };
    ASSERT_TRUE(PumpUntil(IsBlockedByTicks));
    for (const char* Refusal : {"", "denied", "stopped"}) {
        WriteText(L"engine.fail", Refusal);
        fs::remove(fs::path(BaseFolder()) / L"engine.state");
        EXPECT_EQ(PumpUntil(IsBlockedByTicks, 3000), *Refusal == '\0') << Refusal;
        fs::remove(fs::path(BaseFolder()) / L"engine.fail");
        EXPECT_TRUE(PumpUntil(IsBlockedByTicks)) << Refusal;
    }
    EXPECT_EQ(ReportsOf("tmrVN"), 0);
}

TEST_F(Parts, AProfileFolderThatIsGoneAndComesBackAndThenIsNew) {
    Start(L"away");
    const fs::path Folder = Settings.parent_path(), Elsewhere = fs::path(BaseFolder()) / L"elsewhere";
    fs::rename(Folder, Elsewhere);
    AskForEverything(false);
    EXPECT_FALSE(Server->Find("dropped", "Mallory")) << "without a list nobody is banned";
    fs::rename(Elsewhere, Folder);
    ExpectKept();
    ExpectAllWritten();
    ExpectKept();
    // The host makes the profile's folder; what is in it is the plug-in's own affair.
    ASSERT_TRUE(RemoveFolder(Folder));
    fs::create_directory(Folder);
    ExpectAllWritten();
}

// Open in another program, which lets others only read. (An attribute or a permission would not stop the
// superuser, as whom these tests may run.)
TEST_F(Parts, ListsThatCannotBeWritten) {
    Start(L"held");
    std::vector<HANDLE> Held;
    for (const Entry& Item : Lists)
        Held.push_back(CreateFileW((Settings / Item.File).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                   OPEN_EXISTING, 0, nullptr));
    AskForEverything(false);
    EXPECT_FALSE(fs::exists(Settings.parent_path() / L"adminlogs")) << "nothing is logged as done";
    EXPECT_TRUE(Server->Await("dropped", "Mallory", 1000)) << "the lists can be read";
    for (const HANDLE Item : Held) CloseHandle(Item);
    ExpectKept();
    ExpectAllWritten();
}

// On a small file system of its own, which the environment names.
TEST_F(Parts, ADiskThatIsFull) {
    const wchar_t* const Named = _wgetenv(L"VANTOR_FULL_DISK");
    if (!Named) GTEST_SKIP() << "VANTOR_FULL_DISK names no small file system: none could be mounted here";
    const fs::path Disk(Named);
    Start((Disk / L"profile").lexically_relative(fs::path(BaseFolder()) / L"profiles").wstring());
    {
        std::ofstream Filler(Disk / L"filler", std::ios::binary);
        while (Filler << std::string(4096, 'x') << std::flush) continue;
    }
    AskForEverything(false);
    EXPECT_TRUE(Server->Await("dropped", "Mallory", 1000)) << "the lists can be read";
    ExpectKept();
    // Room for a file as it is, but not for what it would become.
    fs::resize_file(Disk / L"filler", fs::file_size(Disk / L"filler") - 4096);
    EXPECT_EQ(Remote(L"PuntPlayerRem", 1, Given, Requests[0].Data), 0);
    ExpectKept();
    fs::remove(Disk / L"filler");
    ExpectAllWritten();
    ExpectKept();
    EXPECT_TRUE(RemoveFolder(Disk / L"profile"));
}
