// Keys of the engine's objects: as the platform's documentation gives them, and as the state file has them.
// The library has its own copy of the former, kept apart on purpose, so that a wrong one on either side
// shows.
#pragma once

#include <windows.h>

#include <string>

inline constexpr UINT32 SessionFlagDynamic = 1;
inline constexpr const char* LayerInboundTransportV4 = "5926dfc8-e3cf-4426-a283-dc393f5d0f9d";
inline constexpr const char* ConditionRemoteAddress = "b235ae9a-1d64-49b8-a44c-5ff3d9095045";
inline constexpr const char* ConditionLocalPort = "0c1ba1af-5765-453f-af22-a8f791ac775b";
inline constexpr const char* ConditionProtocol = "3971ef2b-623e-4f9a-8cb1-6e79b806b9a7";
inline constexpr UINT32 FilterFlagIndexed = 0x40;
inline constexpr UINT8 ProtocolUdp = 17;

std::string KeyText(const GUID& Key);
// The key of a text that KeyText has made.
GUID KeyOfText(const std::string& Text);
