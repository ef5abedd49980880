// The packet-filter library against the filtering engine of Windows itself, with real datagrams. It needs an
// elevated process and is skipped where it cannot run.
#include <winsock2.h>

#include <ws2tcpip.h>

#include <filesystem>

#include "tests/wine/filter_library.h"

namespace {

namespace fs = std::filesystem;

constexpr Long Running = 3;
constexpr Long Loopback = 0x0100007F; // 127.0.0.1
constexpr DWORD AnswerMilliseconds = 500;

bool IsWine() { return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

bool IsElevated() {
    HANDLE Token = nullptr;
    TOKEN_ELEVATION Elevation{};
    DWORD Size = 0;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &Token)) return false;
    GetTokenInformation(Token, TokenElevation, &Elevation, sizeof Elevation, &Size);
    CloseHandle(Token);
    return Elevation.TokenIsElevated != 0;
}

// A copy of the library without the stand-in engine beside it: that one asks the system's.
std::wstring CopyAlone() {
    const fs::path Folder = fs::path(Support::BaseFolder()) / L"alone";
    fs::create_directories(Folder);
    fs::copy_file(fs::path(Support::ProgramFolder()) / L"qrvudpfw.dll", Folder / L"qrvudpfw.dll",
                  fs::copy_options::overwrite_existing);
    return (Folder / L"qrvudpfw.dll").wstring();
}

// Two sockets on 127.0.0.1.
class Line {
public:
    Line() {
        WSADATA Data{};
        WSAStartup(MAKEWORD(2, 2), &Data);
        Sender = socket(AF_INET, SOCK_DGRAM, 0);
        Receiver = socket(AF_INET, SOCK_DGRAM, 0);
        setsockopt(Receiver, SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&AnswerMilliseconds),
                   sizeof AnswerMilliseconds);
        Target.sin_family = AF_INET;
        Target.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        int Size = sizeof Target;
        if (bind(Receiver, Address(), Size) != 0 || getsockname(Receiver, Address(), &Size) != 0)
            throw std::runtime_error("no socket on 127.0.0.1");
    }
    ~Line() {
        closesocket(Sender);
        closesocket(Receiver);
        WSACleanup();
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    std::int16_t Port() const { return static_cast<std::int16_t>(ntohs(Target.sin_port)); }
    bool Arrives() {
        char Byte = ++Sent;
        sendto(Sender, &Byte, 1, 0, Address(), sizeof Target);
        while (recv(Receiver, &Byte, 1, 0) == 1)
            if (Byte == Sent) return true;
        return false;
    }

private:
    sockaddr* Address() { return reinterpret_cast<sockaddr*>(&Target); }
    SOCKET Sender = INVALID_SOCKET, Receiver = INVALID_SOCKET;
    sockaddr_in Target{};
    char Sent = 0;
};

} // namespace

TEST(FilterOnWindows, DatagramsArriveThenDoNotThenDoAgain) {
    Line Loop;
    ASSERT_TRUE(Loop.Arrives());
    if (IsWine()) GTEST_SKIP() << "Wine has no filtering engine";
    if (!IsElevated()) GTEST_SKIP() << "the filtering engine wants an elevated process";
    const FilterLibrary Library(CopyAlone());
    Library.LoadAndStart();
    Library.Block(Loopback, static_cast<std::int16_t>(Loop.Port() + 1));
    ASSERT_TRUE(Library.AwaitState(Running)) << "the event log says why";
    EXPECT_TRUE(Loop.Arrives()) << "another port is blocked";
    Library.Block(Loopback, Loop.Port());
    EXPECT_TRUE(Support::PumpUntil([&] { return !Loop.Arrives(); }));
    Library.Clear();
    EXPECT_TRUE(Support::PumpUntil([&] { return Loop.Arrives(); }));
    Library.Block(Loopback, Loop.Port());
    EXPECT_TRUE(Support::PumpUntil([&] { return !Loop.Arrives(); }));
    Library.StopDriver("DrvFltIp2");
    EXPECT_TRUE(Support::PumpUntil([&] { return Loop.Arrives(); })) << "nothing outlives the session";
}
