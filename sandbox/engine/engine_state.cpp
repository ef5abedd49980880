#include "sandbox/engine/engine_state.h"

#include <windows.h>

#include <filesystem>
#include <fstream>

namespace {

void EndDeadSessions(EngineState& State) {
    const std::vector<EngineSession> Sessions = State.Sessions;
    for (const EngineSession& Session : Sessions)
        if (CreationOf(Session.Process) != Session.Created) EndSession(State, Session.Name);
}

} // namespace

std::uint64_t CreationOf(std::uint32_t Process) {
    const HANDLE Opened = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE, Process);
    if (Opened == nullptr) return 0;
    FILETIME Created{}, Other{};
    const bool IsAlive = WaitForSingleObject(Opened, 0) == WAIT_TIMEOUT &&
                         GetProcessTimes(Opened, &Created, &Other, &Other, &Other);
    CloseHandle(Opened);
    return IsAlive ? std::uint64_t{Created.dwHighDateTime} << 32 | Created.dwLowDateTime : 0;
}

void EndSession(EngineState& State, const std::string& Session) {
    std::erase_if(State.Sessions, [&](const EngineSession& Entry) { return Entry.Name == Session; });
    std::erase_if(State.Objects, [&](const EngineObject& Entry) { return Entry.Session == Session; });
    std::erase_if(State.Filters, [&](const auto& Entry) { return Entry.second.Session == Session; });
}

EngineState ReadEngineState(const std::wstring& Path) {
    EngineState State;
    std::ifstream File{std::filesystem::path(Path)};
    for (std::string Kind; File >> Kind;) {
        if (Kind == "last") {
            File >> State.LastId;
        } else if (EngineSession Session; Kind == "session") {
            File >> Session.Name >> Session.Process >> Session.Created;
            State.Sessions.push_back(Session);
        } else if (EngineFilter Filter; Kind == "filter") {
            std::uint64_t Id = 0;
            File >> Filter.Address >> Filter.Port >> Id >> Filter.Key >> Filter.Session;
            State.Filters[Id] = Filter;
        } else {
            EngineObject Object{Kind, {}, {}};
            File >> Object.Key >> Object.Session;
            State.Objects.push_back(Object);
        }
    }
    EndDeadSessions(State);
    return State;
}

bool WriteEngineState(const std::wstring& Path, const EngineState& State) {
    const std::wstring New = Path + L".new";
    {
        std::ofstream File{std::filesystem::path(New), std::ios::binary};
        File << "last " << State.LastId << '\n';
        for (const EngineSession& Entry : State.Sessions)
            File << "session " << Entry.Name << ' ' << Entry.Process << ' ' << Entry.Created << '\n';
        for (const EngineObject& Entry : State.Objects)
            File << Entry.Kind << ' ' << Entry.Key << ' ' << Entry.Session << '\n';
        for (const auto& [Id, Entry] : State.Filters)
            File << "filter " << Entry.Address << ' ' << Entry.Port << ' ' << Id << ' ' << Entry.Key << ' '
                 << Entry.Session << '\n';
        if (!File.flush()) return false;
    }
    // A file that somebody reads just now cannot be replaced; reading takes no time worth mentioning.
    for (int Attempt = 0; Attempt < 20; ++Attempt) {
        if (MoveFileExW(New.c_str(), Path.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
        Sleep(5);
    }
    return false;
}
