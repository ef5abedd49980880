#include "game/memory_map.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/memory_helper.h"
#include "host/work.h"

namespace {

struct MappedAddress {
    const wchar_t* Key;
    Long Affiliate;
    Long Standard;
};

// GameType, MaxPlayers and SerDedi lie side by side in the affiliate build only. WpnNameAdd is odd in both
// builds, and right.
constexpr MappedAddress Addresses[] = {
    {L"GameState", 0x009DB300, 0x009E4748},     // word: 0 none, 1 between games, above 1 a game runs
    {L"GameType", 0x00A2B85C, 0x00A0342C},      // word: 0 is a game without teams
    {L"MsgTypeAdd", 0x00870B44, 0x00879A0C},    // the message block: kind,
    {L"MsgTitleAdd", 0x00870BB0, 0x00879A78},   //   title,
    {L"MsgDisplayAdd", 0x00870C78, 0x00879B40}, //   display,
    {L"MsgStrAdd", 0x00870B4C, 0x00879A14},     //   text
    {L"PlayerList", 0x0070CA40, 0x0096C290},    // pointer; entries start 0xC8 behind what it holds
    {L"IpList", 0x00F79448, 0x00ECE248},        // pointer to the client address table
    {L"MaxPlayers", 0x00A2B860, 0x00A03430},    // word: number of player entries
    {L"SerDedi", 0x00A2B864, 0x00A34484},       // word: 1 on a dedicated server
    {L"PlyrStats", 0x009E49B8, 0x009ED600},     // pointer to the statistics records
    {L"GamePort", 0x00A2B920, 0x00A34540},      // word
    {L"WpnNameAdd", 0x009FCC5B, 0x00A0587B},    // text of the weapon's name
};

} // namespace

bool IsAffiliateGame(TextView GameId) { return GameId.ends_with(L"_AFF"); }

void SetMemory(Long Profile, bool IsAffiliate) noexcept {
    Trapped(L"SetMemory", Profile, [&] {
        Collection<Long>& Map = mdlVNT::MemoryMap(Profile);
        Map = {};
        for (const MappedAddress& Row : Addresses)
            Map.Add(IsAffiliate ? Row.Affiliate : Row.Standard, Row.Key);
    });
}

Long AddressOf(Long Profile, const wchar_t* Key, Place Where) {
    Work::RequireServer(Where);
    return mdlVNT::MemoryMap(Profile, Where).Item(Key, Where);
}

Long ReadMapped(Long Profile, const wchar_t* Key, Place Where) {
    return MemoryHelper::ReadLong(mdlVNT::Profiles(Profile, Where).ProcessRef, AddressOf(Profile, Key, Where),
                                  Where);
}

Long ReadMaxPlayers(Long Profile) {
    const Long MaxPlayers = ReadMapped(Profile, L"MaxPlayers");
    if (MaxPlayers < 0 || MaxPlayers > MaxPlayerEntries) Fail(ErrorNumber::Overflow);
    return MaxPlayers;
}
