#include "sandbox/engine/sessions.h"

#include <rpc.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>

namespace Sessions {
namespace {

constexpr DWORD TimedOut = static_cast<DWORD>(FWP_E_TIMEOUT);
constexpr DWORD OrdinaryWait = 15000; // milliseconds; what the platform takes for 0

// A handle is a pointer to one. As with the platform, one thread at a time uses it.
struct Session {
    std::string Name;
    bool IsDynamic = false;
    DWORD WaitMilliseconds = OrdinaryWait;
    bool IsInTransaction = false;
    EngineState Pending{};
};

Session& SessionOf(HANDLE Given) { return *static_cast<Session*>(Given); }

std::wstring StateFile() { return Folder() + L"\\engine.state"; }

// One lock for all processes: the platform lets one transaction after the other. It is closed when this
// library is let go: a host that takes the packet filter up again and again would collect one handle each
// time.
class SharedMutex {
public:
    SharedMutex() {
        std::wstring Name = L"VantorEngine " + Folder();
        std::ranges::replace(Name, L'\\', L'/');
        Handle = CreateMutexW(nullptr, FALSE, Name.c_str());
    }
    ~SharedMutex() { CloseHandle(Handle); }
    SharedMutex(const SharedMutex&) = delete;
    SharedMutex& operator=(const SharedMutex&) = delete;

    HANDLE Handle;
};

HANDLE Mutex() {
    static const SharedMutex Made;
    return Made.Handle;
}

class Lock {
public:
    explicit Lock(DWORD Milliseconds) {
        const DWORD Result = WaitForSingleObject(Mutex(), Milliseconds);
        IsHeld = Result == WAIT_OBJECT_0 || Result == WAIT_ABANDONED;
    }
    ~Lock() {
        if (IsHeld) ReleaseMutex(Mutex());
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    explicit operator bool() const { return IsHeld; }
    // From here on the transaction holds it.
    void Keep() { IsHeld = false; }

private:
    bool IsHeld;
};

// The number of a switch; Otherwise when it is not set.
DWORD SwitchOr(const std::string& Name, DWORD Otherwise) {
    std::ifstream File{std::filesystem::path(Folder() + L"\\engine.fail")};
    for (std::string Word; File >> Word;)
        if (DWORD Number = 0; Word == Name && File >> Number) return Number;
    return Otherwise;
}

// How long a call waits for another session's transaction; one outside a transaction runs in one for itself.
DWORD PatienceOf(const Session& Owner) { return SwitchOr("patience", Owner.WaitMilliseconds); }

// Reads the state as others left it. A session that is not in it has been lost.
DWORD Read(const Session& Owner, EngineState& State) {
    State = ReadEngineState(StateFile());
    const auto Same = [&](const EngineSession& Listed) { return Listed.Name == Owner.Name; };
    return std::ranges::any_of(State.Sessions, Same) ? ERROR_SUCCESS
                                                     : static_cast<DWORD>(FWP_E_SESSION_ABORTED);
}

// One that the process was not able to close keeps its name.
std::string FreeName(const EngineState& State, DWORD Process) {
    for (int Number = 1;; ++Number) {
        const std::string Name = std::to_string(Process) + '-' + std::to_string(Number);
        if (std::ranges::find(State.Sessions, Name, &EngineSession::Name) == State.Sessions.end())
            return Name;
    }
}

DWORD Write(const EngineState& State) {
    return WriteEngineState(StateFile(), State) ? ERROR_SUCCESS : ERROR_WRITE_FAULT;
}

// Ends the transaction and with it the hold on the lock.
void EndTransaction(Session& Owner) {
    Owner.IsInTransaction = false;
    Owner.Pending = {};
    ReleaseMutex(Mutex());
}

} // namespace

std::wstring Folder() {
    wchar_t Path[MAX_PATH] = L"";
    const DWORD Told = GetEnvironmentVariableW(L"VANTOR_ENGINE_DIR", Path, ARRAYSIZE(Path));
    if (Told > 0 && Told < ARRAYSIZE(Path)) return Path;
    HMODULE Own = nullptr;
    const void* Inside = reinterpret_cast<const void*>(&Folder);
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCWSTR>(Inside), &Own);
    const std::wstring Library(Path, GetModuleFileNameW(Own, Path, ARRAYSIZE(Path)));
    return Library.substr(0, Library.rfind(L'\\'));
}

DWORD Refusal(const std::string& Call, std::size_t Filters) {
    const std::wstring Switches = Folder() + L"\\engine.fail";
    if (GetFileAttributesW(Switches.c_str()) == INVALID_FILE_ATTRIBUTES) return ERROR_SUCCESS;
    std::ifstream File{std::filesystem::path(Switches)};
    for (std::string Word; File >> Word;) {
        DWORD Number = 0;
        if (Word == "stopped") {
            WriteEngineState(StateFile(), {}); // everything in it was dynamic
            return Call == "FwpmEngineOpen0" ? EPT_S_NOT_REGISTERED : RPC_S_SERVER_UNAVAILABLE;
        }
        // Everybody may open a session, and end what is his.
        if (Word == "denied" && Call != "FwpmEngineOpen0" && Call != "FwpmTransactionAbort0" &&
            Call != "FwpmEngineClose0")
            return ERROR_ACCESS_DENIED;
        if (Word != "denied") File >> Number;
        if (Word == Call) return Number;
        if (Word == "full" && Filters > Number) return ERROR_NOT_ENOUGH_MEMORY;
    }
    return ERROR_SUCCESS;
}

DWORD Open(bool IsDynamic, DWORD WaitMilliseconds, HANDLE* Given) {
    auto New = std::make_unique<Session>();
    const DWORD Process = GetCurrentProcessId();
    New->IsDynamic = IsDynamic;
    if (WaitMilliseconds != 0) New->WaitMilliseconds = WaitMilliseconds;
    const Lock Held(PatienceOf(*New));
    if (!Held) return TimedOut;
    EngineState State = ReadEngineState(StateFile());
    New->Name = FreeName(State, Process);
    State.Sessions.push_back({New->Name, Process, CreationOf(Process)});
    if (const DWORD Error = Write(State)) return Error;
    *Given = New.release();
    return ERROR_SUCCESS;
}

DWORD Close(HANDLE Given) {
    const std::unique_ptr<Session> Ended(&SessionOf(Given));
    if (Ended->IsInTransaction) EndTransaction(*Ended);
    const Lock Held(PatienceOf(*Ended));
    if (!Held) return TimedOut;
    EngineState State;
    if (const DWORD Error = Read(*Ended, State)) return Error;
    EndSession(State, Ended->Name);
    return Write(State);
}

DWORD Begin(HANDLE Given) {
    Session& Owner = SessionOf(Given);
    if (Owner.IsInTransaction) return static_cast<DWORD>(FWP_E_TXN_IN_PROGRESS);
    Lock Held(PatienceOf(Owner));
    if (!Held) return TimedOut;
    EngineState State;
    if (const DWORD Error = Read(Owner, State)) return Error;
    Owner.Pending = std::move(State);
    Owner.IsInTransaction = true;
    Held.Keep();
    return ERROR_SUCCESS;
}

DWORD Commit(HANDLE Given) {
    Session& Owner = SessionOf(Given);
    if (!Owner.IsInTransaction) return static_cast<DWORD>(FWP_E_NO_TXN_IN_PROGRESS);
    const DWORD Error = Write(Owner.Pending);
    EndTransaction(Owner);
    return Error;
}

DWORD Abort(HANDLE Given) {
    Session& Owner = SessionOf(Given);
    if (!Owner.IsInTransaction) return static_cast<DWORD>(FWP_E_NO_TXN_IN_PROGRESS);
    EndTransaction(Owner);
    return ERROR_SUCCESS;
}

DWORD View(HANDLE Given, EngineState& State) {
    const Session& Owner = SessionOf(Given);
    if (Owner.IsInTransaction) {
        State = Owner.Pending;
        return ERROR_SUCCESS;
    }
    const Lock Held(PatienceOf(Owner));
    if (!Held) return TimedOut;
    return Read(Owner, State);
}

DWORD Change(HANDLE Given, const Alteration& Alter) {
    Session& Owner = SessionOf(Given);
    // What is to outlive its session would need a place of its own here; nobody asks for it.
    if (!Owner.IsDynamic) return ERROR_NOT_SUPPORTED;
    if (Owner.IsInTransaction) return Alter(Owner.Pending, Owner.Name);
    const Lock Held(PatienceOf(Owner));
    if (!Held) return TimedOut;
    EngineState State;
    if (const DWORD Error = Read(Owner, State)) return Error;
    const DWORD Error = Alter(State, Owner.Name);
    return Error ? Error : Write(State);
}

} // namespace Sessions
