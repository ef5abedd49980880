// How our objects in the filtering engine are told from all others, and each process's from another's.
#pragma once

#include <windows.h>

#include <fwpmu.h>

#include <cstring>

namespace EngineKeys {

// Not in our compiler's headers.
inline constexpr UINT32 DynamicSession = 0x00000001;
inline constexpr GUID InboundTransportV4 = {
    0x5926dfc8, 0xe3cf, 0x4426, {0xa2, 0x83, 0xdc, 0x39, 0x3f, 0x5d, 0x0f, 0x9d}};
inline constexpr GUID RemoteAddress = {
    0xb235ae9a, 0x1d64, 0x49b8, {0xa4, 0x4c, 0x5f, 0xf3, 0xd9, 0x09, 0x50, 0x45}};
inline constexpr GUID LocalPort = {
    0x0c1ba1af, 0x5765, 0x453f, {0xaf, 0x22, 0xa8, 0xf7, 0x91, 0xac, 0x77, 0x5b}};
inline constexpr GUID Protocol = {
    0x3971ef2b, 0x623e, 0x4f9a, {0x8c, 0xb1, 0x6e, 0x79, 0xb8, 0x06, 0xb9, 0xa7}};
// The engine finds such a filter by its conditions, among however many. Windows 8 and later know the flag.
inline constexpr UINT32 IndexedFilter = 0x00000040;

// The key of a session's provider and sublayer. Two hosts on one machine share nothing, so that the end of
// one leaves the other's rules alone; and a session that could not be closed is not in the way of the next.
constexpr GUID OfSession(DWORD Process, USHORT Number) {
    return {Process, Number, 0x4f0e, {0x9d, 0x27, 0x51, 0x3a, 0xe4, 0x70, 0x8c, 0x16}};
}

// The process whose key it is; 0 for a key that is not ours.
inline DWORD ProcessOf(const GUID& Key) {
    const GUID Ours = OfSession(Key.Data1, Key.Data2);
    return std::memcmp(&Key, &Ours, sizeof Key) == 0 ? Key.Data1 : 0;
}

} // namespace EngineKeys
