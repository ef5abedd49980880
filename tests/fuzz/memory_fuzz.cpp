// Hostile game memory behind the reader, the actions and the sweep: words of the map, list entries,
// statistics records, entity pointers, addresses and names take whatever values the input gives, between
// ticks as well.
#include <array>
#include <utility>

#include "enforcement/sweep.h"
#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_actions.h"
#include "game/player_records.h"
#include "game/player_table.h"
#include "lists/ban_lists.h"
#include "plugin/lifecycle.h"
#include "sandbox/game/records.h"
#include "tests/fakes/server.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/invariants.h"

namespace {

using Invariants::Require;
using Invariants::Run;

// Each entry costs a few reads; the permanent lists search all records for each of the 50 slots twice.
constexpr long MostCalls = 150'000;
constexpr std::size_t MostReports = 4 * (MaxPlayerEntries + 1);

// Values at which readers of memory usually go wrong, beside those of the input.
Long Value(Input& From) {
    constexpr std::uint32_t Odd[] = {0,          1,          0xFFFFFFFF, 0x7FFFFFFF, 0x80000000, 1024,
                                     1025,       50,         51,         0x10000000, 0x12000000, 0x18000000,
                                     0x19000000, 0x007FFFFC, 0xFFFFFF38, 0x14000000};
    const std::uint8_t Which = From.Byte();
    if (Which < std::size(Odd)) return static_cast<Long>(Odd[Which]);
    return Which < 128 ? Which - 16 : From.Long();
}

void WriteBytes(const Simulation::Game& World, std::uint32_t Address, const std::string& Bytes) {
    Simulation::WriteGameMemory(World.Memory, Address, Bytes.data(), Bytes.size());
}

void WriteValue(const Simulation::Game& World, std::uint32_t Address, Long Written) {
    Simulation::WriteGameMemory(World.Memory, Address, &Written, sizeof Written);
}

std::uint32_t MapWord(const Simulation::Game& World, std::uint32_t Number) {
    const Layout::MemoryMap& Map = Layout::MapOf(World.Setup.Build);
    const std::uint32_t Words[] = {Map.GameState,  Map.GameType, Map.PlayerList, Map.IpList,
                                   Map.MaxPlayers, Map.SerDedi,  Map.PlyrStats,  Map.GamePort};
    return Words[Number % std::size(Words)];
}

std::uint32_t RecordWord(Input& From) {
    constexpr std::uint32_t Words[] = {Layout::Statistics::Slot,   Layout::Statistics::ClientIndex,
                                       Layout::Statistics::Entity, Layout::Statistics::Team,
                                       Layout::Statistics::Ping,   Layout::Statistics::Armed};
    return Words[From.Below(std::size(Words))];
}

void Mutate(Simulation::Game& World, Input& From, std::uint32_t Kind) {
    const int Slot = static_cast<int>(From.Below(Layout::SlotCount));
    const std::uint32_t Client =
        World.Memory.Clients.Address + static_cast<std::uint32_t>(Slot) * Layout::Client::Stride;
    switch (Kind) {
    case 0: WriteValue(World, MapWord(World, From.Byte()), Value(From)); break;
    case 1: {
        const std::uint32_t Offset = From.Byte() + (From.Byte() & 1u) * 256;
        WriteValue(World, Simulation::EntryAt(World, Slot) + Offset, Value(From));
        break;
    }
    case 2: {
        const std::uint32_t Offset = RecordWord(From);
        WriteValue(World, Simulation::RecordAt(World, Slot) + Offset, Value(From));
        break;
    }
    case 3: WriteBytes(World, Simulation::EntryAt(World, Slot), From.Bytes(From.Byte())); break;
    case 4:
        WriteBytes(World, Simulation::RecordAt(World, Slot) + Layout::Statistics::Name,
                   From.Bytes(From.Byte()));
        break;
    case 5: WriteBytes(World, Client + Layout::Client::Address, From.Bytes(From.Byte())); break;
    default: WriteValue(World, Simulation::EntityAt(World, Slot) + Layout::Entity::LifeState, Value(From));
    }
}

// --- The lists and who may be punted by them.

constexpr TextView Whole = L"Alice", Part = L"lic", Address = L"10.0.0.9", Pattern = L"9.8.*";

void PutLists() {
    BanName(std::wstring(Whole) + L"[1]");
    BanName(std::wstring(Part) + L"[2]");
    BanIp(Address);
    BanIp(Pattern);
    mdlVNT::KillPermList(TestProfile).Add(L"Bob", L"Bob");
    mdlVNT::DisarmPermList(TestProfile).Add(L"Bob", L"Bob");
    mdlVNT::SwitchQueue(TestProfile).Add(L"Bob", L"Bob");
}

// By the files themselves, to which the bans of this input have been added; a ban from the game is one of a
// whole name.
bool MayBePunted(const std::wstring& Name, const std::wstring& Ip) {
    const std::wstring Key = BannedName::Whole(Name).Key();
    return !IsValidIp(Ip) || !Outside::IniValue(SettingsFile(L"BannedNames.ini"), L"Players", Key).empty() ||
           !Outside::IniValue(SettingsFile(L"BannedIps.ini"), L"IpAddresses", Ip).empty() ||
           Name.find(Part) != std::wstring::npos || Name == NamelessPlayer ||
           Ip.starts_with(Pattern.substr(0, 4));
}

// Everybody who is punted in a tick by the lists is in one of them; PUNT_PLAYER stands for a name of blanks.
void Tick() {
    const Lines Names = GetPlayerList(TestProfile, L"ARRAY").BySlot;
    const Lines Addrs = GetPlayerList(TestProfile, L"IPARRAY").BySlot;
    Run("tick", MostCalls, MostReports, [] { tmrVN_Timer(TestProfile); });
    if (Outside::IniValue(PlayersIni, L"IdlePunt", L"Server1") == L"1") return;
    for (const std::wstring& Command : Commands()) {
        const auto Slot = static_cast<std::size_t>(ToWhole(TextView(Command).substr(5, 2)));
        Require(Slot > 0 && Slot < Names.size() && Slot < Addrs.size(), "a punted slot is one of the table");
        Require(MayBePunted(Names[Slot], Addrs[Slot]), "only who is in a list is punted");
    }
}

void Read(TextView Mode) {
    Run("read", MostCalls, MostReports, [&] {
        const PlayerTable Players = GetPlayerList(TestProfile, Mode);
        Require(Players.BySlot.size() <= MaxPlayerEntries + 1, "the array is bounded");
        Require(Outside::Journal.size() == Outside::Recorded(L"ErrorBox").size(), "reading changes nothing");
    });
}

// One action writes at most one word of the game, and sends at most a command and an announcement.
void Act(std::uint32_t Which, const std::wstring& Name) {
    Run("action", MostCalls, MostReports, [&] {
        switch (Which) {
        case 0:
            PuntPlayer({.Profile = TestProfile,
                        .Name = Name,
                        .Ip = L"10.0.0.7",
                        .Slot = 3,
                        .Ban = true,
                        .Reason = L"reason"});
            break;
        case 1: KillPlayer(TestProfile, Name, true); break;
        case 2: ArmPlayer(TestProfile, Name, L"Disarm", false); break;
        case 3: ArmPlayer(TestProfile, Name, L"Rearm", true); break;
        default: SwitchTeam(TestProfile, Name);
        }
    });
    Require(Outside::Recorded(L"WriteLong").size() <= 1, "an action writes one word");
    Require(Outside::Recorded(L"CMD").size() <= 1, "an action sends one command");
    Require(Outside::Recorded(L"MSG").size() <= 1, "an action sends one announcement");
}

void Step(Simulation::Game& World, Input& From) {
    constexpr TextView Modes[] = {L"LIST", L"ARRAY", L"IPARRAY", L"REMOTE"};
    const std::uint32_t Kind = From.Below(12);
    if (Kind < 7)
        Mutate(World, From, Kind);
    else if (Kind == 7)
        Tick();
    else if (Kind == 8)
        Read(Modes[From.Below(4)]);
    else if (Kind == 9)
        Act(From.Below(5), From.Byte() & 1 ? L"Bob" : L"Alice");
    else {
        // By the name that the memory itself reports: the way of the window.
        const Lines Names = GetPlayerList(TestProfile, L"ARRAY").BySlot;
        const std::uint32_t Slot = From.Byte();
        if (Slot < Names.size()) Act(From.Below(5), Names[Slot]);
    }
}

ServerSettings SettingsOf(std::uint8_t Flags, std::uint8_t MaxPlayers) {
    return {.Build = Flags & 1 ? Layout::Build::Affiliate : Layout::Build::Standard,
            .MaxPlayers = 1 + MaxPlayers % 50,
            .Dedicated = (Flags & 2) != 0,
            .State = Flags & 8 ? 1 : 2,
            .GameType = Flags & 4 ? 0 : 1};
}

void Begin(Server& Game, std::uint8_t Flags) {
    if (Flags & 16) Outside::PutIni(PlayersIni, L"BanMethod", L"Server1", L"1");
    if (Flags & 32) Outside::PutIni(PlayersIni, L"IdlePunt", L"Server1", L"1");
    if (Flags & 64) Load(TestProfile, HostWindow, HostData(L"Server1", Flags & 1 ? L"DF_AFF" : L"DF"));
    PutLists();
    constexpr std::pair<const char*, const char*> Joined[] = {{"Alice", "10.0.0.1"},
                                                              {"Bob", "10.0.0.7"},
                                                              {"Carol", "10.0.0.9"},
                                                              {"Dave", "9.8.7.6"},
                                                              {"Moe", "10.0.0.5"}};
    int Slot = 1;
    for (const auto& [Name, From] : Joined) Game.Join(Slot++, Name, From);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    Input From(Data, Size);
    const std::uint8_t Flags = From.Byte();
    Server Game(SettingsOf(Flags, From.Byte()));
    Begin(Game, Flags);
    for (int Steps = 0; Steps < 8 && !From.IsEmpty(); ++Steps) Step(Game.World, From);
    Tick();
    return 0;
}
