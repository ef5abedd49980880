// What the filtering engine holds: sessions, what they added, and the filters; kept in a small text file,
// which the engine writes and the game server reads.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct EngineSession {
    std::string Name; // of the process and a number
    std::uint32_t Process = 0;
    std::uint64_t Created = 0; // of the process, as two may have had the same identifier
};

// A provider or a sublayer.
struct EngineObject {
    std::string Kind, Key, Session;
};

// Packets from an address, dotted, to a local port are dropped.
struct EngineFilter {
    std::string Address;
    std::int32_t Port = 0; // 0 to 65535
    std::string Key;       // of its provider and its sublayer
    std::string Session;
};

struct EngineState {
    std::uint64_t LastId = 0;
    std::vector<EngineSession> Sessions;
    std::vector<EngineObject> Objects;
    std::map<std::uint64_t, EngineFilter> Filters; // by their identifiers
};

// Without what belongs to processes that have ended. The state of a missing file is the empty one.
EngineState ReadEngineState(const std::wstring& Path);

// Replaces the file in one step: others read it at any moment. False when that was not possible.
bool WriteEngineState(const std::wstring& Path, const EngineState& State);

// Takes a session out, and with it all that was added in it.
void EndSession(EngineState& State, const std::string& Session);

// When the process was created; 0 when it has ended.
std::uint64_t CreationOf(std::uint32_t Process);
