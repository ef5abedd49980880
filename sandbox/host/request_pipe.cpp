#include "sandbox/host/request_pipe.h"

#include <optional>

#include "sandbox/host/actions.h"
#include "sandbox/host/packets.h"

namespace RequestPipe {
namespace {

constexpr DWORD BufferBytes = 64 * 1024;

HWND Receiver = nullptr;
std::wstring Path;

struct Exchange {
    Lines Request, Answer;
    HANDLE Done;
};

// "host" action; or "request", administrator, profile, member and perhaps data.
std::wstring Carry(const Lines& Request) {
    if (Request.size() == 2 && Request[0] == L"host") {
        Actions::Run(Request[1]);
        return L"ok";
    }
    if (Request.size() < 4 || Request[0] != L"request") Fail(ErrorNumber::InvalidCall, L"No request");
    return Actions::Serve(ToWhole(Request[2]), Request[1], Request[3],
                          Request.size() > 4 ? std::optional(Request[4]) : std::nullopt);
}

void ServeOne(HANDLE Pipe) {
    Exchange Current;
    if (!Packets::Read(Pipe, Current.Request)) return;
    Current.Done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (PostMessageW(Receiver, Arrived, 0, reinterpret_cast<LPARAM>(&Current))) {
        WaitForSingleObject(Current.Done, INFINITE);
        Packets::Write(Pipe, Current.Answer);
        FlushFileBuffers(Pipe);
    }
    CloseHandle(Current.Done);
}

DWORD WINAPI Run(void*) {
    for (;;) {
        const HANDLE Pipe = CreateNamedPipeW(Path.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE | PIPE_WAIT, 1,
                                             BufferBytes, BufferBytes, 0, nullptr);
        if (Pipe == INVALID_HANDLE_VALUE) return 1;
        if (ConnectNamedPipe(Pipe, nullptr) || GetLastError() == ERROR_PIPE_CONNECTED) ServeOne(Pipe);
        DisconnectNamedPipe(Pipe);
        CloseHandle(Pipe);
    }
}

} // namespace

void Listen(TextView Name, HWND Window) {
    Receiver = Window;
    Path = Packets::PipePath(Name);
    const HANDLE Thread = CreateThread(nullptr, 0, Run, nullptr, 0, nullptr);
    if (Thread) CloseHandle(Thread);
}

void Answer(LPARAM Request) {
    Exchange& Current = *reinterpret_cast<Exchange*>(Request);
    try {
        Current.Answer = {L"ok", Carry(Current.Request)};
    } catch (...) {
        Current.Answer = {L"failed", CurrentFailure().Description};
    }
    SetEvent(Current.Done);
}

} // namespace RequestPipe
