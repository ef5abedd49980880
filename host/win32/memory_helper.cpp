// The members of the host's memory helper object.
#include "host/memory_helper.h"

#include "host/win32/automation.h"

namespace MemoryHelper {

namespace {

HelperObject Object(L"qrvGMF.clsMemory");

constexpr Long WordSize = 4; // bytes; the only size the plug-in writes

} // namespace

void Create(Place Where) { Object.Create(Where); }
void Release() noexcept { Object.Release(); }

Long ReadLong(Long Process, Long Address, Place Where) {
    static Member Called{L"ReadLong"};
    return ToLong(Object.Call(Called, Arguments(Process, Address), Where).Value, Where);
}

std::uint8_t ReadByte(Long Process, Long Address, Place Where) {
    static Member Called{L"ReadByte"};
    const Long Value = ToLong(Object.Call(Called, Arguments(Process, Address), Where).Value, Where);
    if (Value < 0 || Value > 255) Fail(ErrorNumber::Overflow, {}, Where);
    return static_cast<std::uint8_t>(Value);
}

std::wstring ReadStr(Long Process, Long Address, Place Where) {
    static Member Called{L"ReadStr"};
    return ToWideText(Object.Call(Called, Arguments(Process, Address), Where).Value, Where);
}

void WriteLong(Long Process, Long Address, Long Value, Place Where) {
    static Member Called{L"WriteLong"};
    Object.Call(Called, Arguments(Process, Address, Value, WordSize), Where);
}

void AddMsg(Long Index, Long MessageRef, TextView Text, bool IsAffiliate, TextView Channel, Long Kind,
            Place Where) {
    static Member Called{L"AddMsg"};
    Object.Call(Called, Arguments(Index, MessageRef, Text, IsAffiliate, Channel, Kind), Where);
}

std::wstring Enc64(TextView Text, Place Where) {
    static Member Called{L"Enc64"};
    return ToWideText(Object.Call(Called, Arguments(Text), Where).Value, Where);
}

std::wstring Dec64(TextView Text, Place Where) {
    static Member Called{L"Dec64"};
    return ToWideText(Object.Call(Called, Arguments(Text), Where).Value, Where);
}

} // namespace MemoryHelper
