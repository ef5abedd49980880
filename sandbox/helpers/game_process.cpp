#include "sandbox/helpers/game_process.h"

#include <algorithm>
#include <map>
#include <utility>

#include "sandbox/helpers/automation.h"

namespace GameProcess {

namespace {

constexpr std::size_t PageSize = 4096, LongestText = 256;
constexpr DWORD TakingTime = 250; // milliseconds

class Handle {
public:
    explicit Handle(HANDLE Given = nullptr) : Held(Given) {}
    ~Handle() {
        if (Held) CloseHandle(Held);
    }
    Handle(Handle&& Other) noexcept : Held(std::exchange(Other.Held, nullptr)) {}
    Handle& operator=(Handle&& Other) noexcept {
        std::swap(Held, Other.Held);
        return *this;
    }
    explicit operator bool() const { return Held != nullptr; }
    HANDLE Get() const { return Held; }

private:
    HANDLE Held;
};

// Apartments of several threads may use the DLL.
SRWLOCK Lock = SRWLOCK_INIT;

class Locked {
public:
    Locked() { AcquireSRWLockExclusive(&Lock); }
    ~Locked() { ReleaseSRWLockExclusive(&Lock); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
};

std::map<std::uint32_t, Handle> Open;

HANDLE HandleOf(std::uint32_t Process) {
    if (const auto Found = Open.find(Process); Found != Open.end()) return Found->second.Get();
    Handle Made(
        OpenProcess(PROCESS_VM_READ | PROCESS_VM_WRITE | PROCESS_VM_OPERATION | SYNCHRONIZE, FALSE, Process));
    if (!Made) throw Automation::Error{NoProcess, "The game server process is not there"};
    return Open.emplace(Process, std::move(Made)).first->second.Get();
}

bool HasEnded(HANDLE Process) { return WaitForSingleObject(Process, 0) == WAIT_OBJECT_0; }

// Does Action with the process's handle. Only when it fails is the process looked at: that costs as much as
// the reading itself.
template <class Procedure> void WithProcess(std::uint32_t Process, std::uint32_t Address, Procedure Action) {
    const Locked ByOthers;
    if (Action(HandleOf(Process))) return;
    if (HasEnded(HandleOf(Process))) {
        Open.erase(Process);
        if (Action(HandleOf(Process))) return; // another process under the same number
    }
    throw Automation::Error{NoSuchMemory, "The game server has no such memory: " + std::to_string(Address)};
}

// The same addresses as pointers, which is how the system wants another process's.
void* Pointer(std::uint32_t Address) { return reinterpret_cast<void*>(std::uintptr_t{Address}); }

struct Sender {
    std::uint32_t Process;
    const Layout::MemoryMap& Map;

    std::uint32_t TypeWord() const {
        std::uint32_t Word = 0;
        Read(Process, Map.MsgTypeAdd, &Word, sizeof Word);
        return Word;
    }
    // Only the build that runs has a title at its address; a text for another would be written anywhere.
    void RequireBuild() const {
        char First = 0;
        Read(Process, Map.MsgTitleAdd, &First, sizeof First);
        if (First == 0) throw Automation::Error{TakesNoMessages, "The game server is of another build"};
    }
    void AwaitTaken() const {
        const ULONGLONG Since = GetTickCount64();
        while (TypeWord() != 0) {
            if (GetTickCount64() - Since > TakingTime)
                throw Automation::Error{TakesNoMessages, "The game server takes no messages"};
            Sleep(1);
        }
    }
    void SendPiece(std::string_view Piece, bool MoreFollows, std::uint32_t Word) const {
        AwaitTaken();
        const std::string Text(Piece);
        const std::uint32_t More = MoreFollows ? 1 : 0;
        Write(Process, Map.MsgStrAdd, Text.c_str(), Text.size() + 1);
        Write(Process, Map.MsgTypeAdd + Layout::Message::MoreFollows, &More, sizeof More);
        Write(Process, Map.MsgTypeAdd, &Word, sizeof Word); // last: it hands the piece over
    }
};

std::uint32_t ProcessOfThread(std::uint32_t Target) {
    const Handle Thread(OpenThread(THREAD_QUERY_INFORMATION, FALSE, Target));
    const DWORD Process = Thread ? GetProcessIdOfThread(Thread.Get()) : 0;
    if (Process == 0) throw Automation::Error{NoProcess, "The message target is not there"};
    return Process;
}

// All senders to one game wait for each other, so that no two texts mix.
class Turn {
public:
    explicit Turn(std::uint32_t Process)
        : Mutex(CreateMutexW(nullptr, FALSE, (L"VantorGame" + std::to_wstring(Process)).c_str())) {
        const DWORD Status = Mutex ? WaitForSingleObject(Mutex.Get(), 10 * TakingTime) : WAIT_FAILED;
        if (Status != WAIT_OBJECT_0 && Status != WAIT_ABANDONED)
            throw Automation::Error{TakesNoMessages, "The game server is busy with other messages"};
    }
    ~Turn() { ReleaseMutex(Mutex.Get()); }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    Handle Mutex;
};

} // namespace

void Read(std::uint32_t Process, std::uint32_t Address, void* To, std::size_t Size) {
    WithProcess(Process, Address, [&](HANDLE Game) {
        SIZE_T Done = 0;
        return ReadProcessMemory(Game, Pointer(Address), To, Size, &Done) && Done == Size;
    });
}

void Write(std::uint32_t Process, std::uint32_t Address, const void* From, std::size_t Size) {
    WithProcess(Process, Address, [&](HANDLE Game) {
        SIZE_T Done = 0;
        return WriteProcessMemory(Game, Pointer(Address), From, Size, &Done) && Done == Size;
    });
}

std::string ReadText(std::uint32_t Process, std::uint32_t Address) {
    std::string Result(LongestText, '\0');
    const std::size_t InPage = std::min(LongestText, PageSize - Address % PageSize);
    Read(Process, Address, Result.data(), InPage);
    if (InPage < LongestText && Result.find('\0') >= InPage) try {
            Read(Process, Address + InPage, Result.data() + InPage, LongestText - InPage);
        } catch (const Automation::Error&) { // the memory ends with the page, and so does the text
        }
    Result.resize(std::min(Result.find('\0'), Result.size()));
    return Result;
}

void Deliver(std::uint32_t Target, Layout::Build Which, Layout::Message::Channel Channel, std::uint8_t Kind,
             std::string_view Text) {
    constexpr std::size_t Most = Layout::Message::PieceSize - 1;
    const Sender To{ProcessOfThread(Target), Layout::MapOf(Which)};
    To.RequireBuild();
    const Turn Ours(To.Process);
    const std::uint32_t Word = Layout::Message::TypeWord(Channel, Kind);
    for (; Text.size() > Most; Text.remove_prefix(Most)) To.SendPiece(Text.substr(0, Most), true, Word);
    To.SendPiece(Text, false, Word);
}

} // namespace GameProcess
