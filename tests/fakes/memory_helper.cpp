// The host's memory helper over the simulation of the game.
#include "host/memory_helper.h"

#include <map>

#include "sandbox/game/simulation.h"
#include "tests/fakes/faults.h"
#include "tests/fakes/outside.h"

using Outside::EnterHost;
using Outside::Keep;

namespace {

std::map<Long, const Simulation::GameMemory*> Attached;
std::map<Long, Simulation::Game*> Games;

// What the real helper reports for a process that is gone or an address that it does not have.
[[noreturn]] void Unreadable(Place Where) { Fail(1299, L"The process could not be read.", Where); }

const Simulation::GameMemory& MemoryOf(Long Process, Place Where) {
    const auto Found = Attached.find(Process);
    if (Found == Attached.end()) Unreadable(Where);
    return *Found->second;
}

template <class T> T Read(Long Process, Long Address, Place Where) {
    T Value{};
    if (!Simulation::ReadGameMemory(MemoryOf(Process, Where), static_cast<std::uint32_t>(Address), &Value,
                                    sizeof Value))
        Unreadable(Where);
    return Value;
}

std::wstring Wide(std::string_view Bytes) {
    std::wstring Text;
    for (const char C : Bytes) Text += static_cast<unsigned char>(C);
    return Text;
}

std::string Narrow(TextView Text) {
    std::string Bytes;
    for (const wchar_t C : Text) Bytes += static_cast<char>(C < 256 ? C : L'?');
    return Bytes;
}

constexpr TextView Digits = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

} // namespace

namespace Outside {

void AttachMemory(Long Process, const Simulation::GameMemory* Memory) { Attached[Process] = Memory; }

void AttachGame(Long Process, Simulation::Game* Game) {
    Attached[Process] = &Game->Memory;
    Games[Process] = Game;
}

void DetachAll() {
    Attached.clear();
    Games.clear();
}

} // namespace Outside

namespace MemoryHelper {

void Create(Place) {}
void Release() noexcept {}

Long ReadLong(Long Process, Long Address, Place Where) {
    if (EnterHost(L"ReadLong", true, Where)) return 0;
    Keep([=] { ReadLong(Process, Address); });
    return Read<Long>(Process, Address, Where);
}

std::uint8_t ReadByte(Long Process, Long Address, Place Where) {
    if (EnterHost(L"ReadByte", true, Where)) return 0;
    Keep([=] { ReadByte(Process, Address); });
    return Read<std::uint8_t>(Process, Address, Where);
}

std::wstring ReadStr(Long Process, Long Address, Place Where) {
    if (EnterHost(L"ReadStr", true, Where)) return {};
    Keep([=] { ReadStr(Process, Address); });
    Read<std::uint8_t>(Process, Address, Where);
    return Wide(Simulation::ReadText(MemoryOf(Process, Where), static_cast<std::uint32_t>(Address)));
}

void WriteLong(Long Process, Long Address, Long Value, Place Where) {
    if (EnterHost(L"WriteLong", true, Where)) return;
    if (!Simulation::WriteGameMemory(MemoryOf(Process, Where), static_cast<std::uint32_t>(Address), &Value,
                                     sizeof Value))
        Unreadable(Where);
    Outside::Record(L"WriteLong " + ToText(Value));
}

void AddMsg(Long Index, Long MessageRef, TextView Text, bool IsAffiliate, TextView Channel, Long Kind,
            Place Where) {
    if (EnterHost(L"AddMsg", true, Where)) return;
    Outside::Record(std::wstring(Channel) + L" " + ToText(Kind) + L" " + std::wstring(Text) +
                    (IsAffiliate ? L" (affiliate)" : L""));
    const auto Found = Games.find(MessageRef);
    if (Found == Games.end()) return;
    const auto Way =
        Channel == L"CMD" ? Layout::Message::Channel::Command : Layout::Message::Channel::Display;
    Simulation::ReceiveText(*Found->second, Way, static_cast<std::uint8_t>(Kind), Narrow(Text));
    (void)Index;
}

std::wstring Enc64(TextView Text, Place Where) {
    if (EnterHost(L"Enc64", true, Where)) return {};
    Keep([T = std::wstring(Text)] { Enc64(T); });
    std::wstring Encoded;
    const std::string Bytes = Narrow(Text);
    for (std::size_t At = 0; At < Bytes.size(); At += 3) {
        std::uint32_t Group = 0;
        for (std::size_t I = 0; I < 3; ++I)
            Group = Group << 8 | (At + I < Bytes.size() ? static_cast<unsigned char>(Bytes[At + I]) : 0u);
        for (std::size_t I = 0; I < 4; ++I)
            Encoded += At + I > Bytes.size() ? L'=' : Digits[Group >> (18 - 6 * I) & 63];
    }
    return Encoded;
}

std::wstring Dec64(TextView Text, Place Where) {
    if (EnterHost(L"Dec64", true, Where)) return {};
    std::string Bytes;
    std::uint32_t Group = 0;
    int Bits = 0;
    for (const wchar_t C : Text.substr(0, Text.find(L'='))) {
        const auto Digit = Digits.find(C);
        if (Digit == TextView::npos) Fail(ErrorNumber::InvalidCall, L"This is no Base64 text.", Where);
        Group = Group << 6 | static_cast<std::uint32_t>(Digit);
        if ((Bits += 6) < 8) continue;
        Bits -= 8;
        Bytes += static_cast<char>(Group >> Bits & 255);
    }
    return Wide(Bytes);
}

} // namespace MemoryHelper
