// Where the game server keeps what an administration tool reads and writes: the addresses of both builds,
// the records behind the pointers found there, and the message block.
//
// The table is kept apart from the plug-in's own on purpose: a wrong address on either side shows.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Layout {

enum class Build { Standard, Affiliate };

struct MemoryMap {
    std::uint32_t GameState, GameType, MsgTypeAdd, MsgTitleAdd, MsgDisplayAdd, MsgStrAdd, PlayerList, IpList,
        MaxPlayers, SerDedi, PlyrStats, GamePort, WpnNameAdd;
};

inline constexpr MemoryMap StandardMap{
    .GameState = 0x009E4748,
    .GameType = 0x00A0342C,
    .MsgTypeAdd = 0x00879A0C,
    .MsgTitleAdd = 0x00879A78,
    .MsgDisplayAdd = 0x00879B40,
    .MsgStrAdd = 0x00879A14,
    .PlayerList = 0x0096C290,
    .IpList = 0x00ECE248,
    .MaxPlayers = 0x00A03430,
    .SerDedi = 0x00A34484,
    .PlyrStats = 0x009ED600,
    .GamePort = 0x00A34540,
    .WpnNameAdd = 0x00A0587B,
};

inline constexpr MemoryMap AffiliateMap{
    .GameState = 0x009DB300,
    .GameType = 0x00A2B85C,
    .MsgTypeAdd = 0x00870B44,
    .MsgTitleAdd = 0x00870BB0,
    .MsgDisplayAdd = 0x00870C78,
    .MsgStrAdd = 0x00870B4C,
    .PlayerList = 0x0070CA40,
    .IpList = 0x00F79448,
    .MaxPlayers = 0x00A2B860,
    .SerDedi = 0x00A2B864,
    .PlyrStats = 0x009E49B8,
    .GamePort = 0x00A2B920,
    .WpnNameAdd = 0x009FCC5B,
};

constexpr const MemoryMap& MapOf(Build Which) {
    return Which == Build::Affiliate ? AffiliateMap : StandardMap;
}

// The program's static data; both builds' addresses lie inside.
inline constexpr std::uint32_t ImageStart = 0x00700000;
inline constexpr std::uint32_t ImageEnd = 0x00F7A000;

// Slots 0 to 50.
inline constexpr int LastSlot = 50;
inline constexpr int SlotCount = LastSlot + 1;

// Player list entries: behind the pointer at PlayerList.
namespace Entry {
inline constexpr std::uint32_t First = 0xC8, Stride = 0x29C;
inline constexpr std::uint32_t Name = 0, Team = 0x2E, ActivityA = 56, Slot = 0x5C, ActivityB = 156,
                               ActivityC = 214, ActivityD = 215;
inline constexpr std::size_t NameSize = Team; // with its terminating zero
} // namespace Entry

// Player statistics records: behind the pointer at PlyrStats.
namespace Statistics {
inline constexpr std::uint32_t Stride = 0xAF33C;
inline constexpr std::uint32_t Slot = 0x2C, ClientIndex = 0x30, Entity = 0x38, Name = 0x3C, Team = 0xB0,
                               Ping = 0xADB60, Armed = 0xADE28;
} // namespace Statistics

// Client address table: behind the pointer at IpList.
namespace Client {
inline constexpr std::uint32_t Address = 0x88, Stride = 0xBC;
inline constexpr std::size_t AddressSize = Stride - Address;
} // namespace Client

// Entity blocks: behind the pointer in each statistics record.
namespace Entity {
inline constexpr std::uint32_t LifeState = 0xE0, Stride = 0x200;
inline constexpr std::int32_t SpawnSelect = 1, Alive = 2;
} // namespace Entity

// The message block. A sender waits until the type word is 0, writes one piece of the text at MsgStrAdd,
// then whether further pieces follow, then the type word; the game takes the piece and sets the word to 0.
namespace Message {
inline constexpr std::uint32_t MoreFollows = 4; // from MsgTypeAdd, 32-bit, 1 or 0
inline constexpr std::size_t PieceSize = 100;   // with its terminating zero: up to MsgTitleAdd
enum class Channel : std::uint32_t { Command = 1, Display = 2 };
constexpr std::uint32_t TypeWord(Channel Which, std::uint8_t Kind) {
    return static_cast<std::uint32_t>(Which) << 8 | Kind;
}
} // namespace Message

} // namespace Layout
