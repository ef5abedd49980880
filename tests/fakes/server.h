// A game server in memory, the profile that watches it, and what the host and its consoles send for that
// profile.
#pragma once

#include "plugin/pdat.h"
#include "plugin/remote.h"
#include "sandbox/game/simulation.h"
#include "tests/fakes/outside.h"
#include "tests/fakes/private_memory.h"

// The profile index of most tests, and what the host passes for it.
inline constexpr Long TestProfile = 5;
inline constexpr Long ProcessRef = 4711;
// The one window of the host that the controls in memory know.
inline constexpr std::intptr_t HostWindow = 77;

struct ServerSettings {
    Layout::Build Build = Layout::Build::Standard;
    int MaxPlayers = 16;
    bool Dedicated = false;
    Long State = 2;
    Long GameType = 1;
};

// Starts a game, resets the outside and the window and makes the profile known to the plug-in. One at a time.
class Server {
public:
    explicit Server(const ServerSettings& Settings = {});
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    void Join(int Slot, std::string_view Name, std::string_view Address = "10.0.0.7", int Team = 1,
              int Ping = 50);
    void Leave(int Slot);
    // A word of the player's statistics record.
    Long Stats(int Slot, std::uint32_t Offset) const;
    void SetStats(int Slot, std::uint32_t Offset, Long Value);
    // The life state, in the player's entity block.
    Long Life(int Slot) const;
    void SetLife(int Slot, Long Value);
    // A word of the game's own, by an address of the map.
    void SetWord(std::uint32_t Address, Long Value);
    const Layout::MemoryMap& Map() const { return Layout::MapOf(World.Setup.Build); }

    PrivateMemory Owned;
    Simulation::Game World;
};

// What the host passes for the profile: fourteen elements, those that are not used as the text "text".
Pdat HostData(TextView Folder = L"Server1", TextView GameId = L"DF", Long Process = ProcessRef);

// A remote console's request about the profile.
RemoteRequest Request(std::wstring Data);
// Runs a member as the class does, with its failures reported under its name.
Long Call(const RemoteMember<Long>& Member, const RemoteRequest& Sent);
std::wstring CallGetPlayersRem(const RemoteRequest& Sent);
void Load(Long Index, std::intptr_t pHwnd, const Pdat& Data);
void UnLoad();
void Disable(Long Index);

// Paths of the profile's files.
std::wstring SettingsFile(TextView Name);
inline constexpr TextView PlayersIni = L"C:\\Host\\Plugins\\Players.ini";

// Writes an entry into the profile's ban list: a name with its tag ("Bob[1]"), an address or a range.
void BanName(TextView Key);
void BanIp(TextView Pattern);

// What was sent to the game as commands, in order ("punt 07").
Lines Commands();
