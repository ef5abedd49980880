// The game server processes, as the memory helper reaches them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "sandbox/game/layout.h"

namespace GameProcess {

inline constexpr int TakesNoMessages = 1001, NoProcess = 1002, NoSuchMemory = 1003;

// Process is a process identifier; its handle is kept for the next call. Automation::Error 1002 when the
// process is gone, 1003 when the range is not readable or writable.
void Read(std::uint32_t Process, std::uint32_t Address, void* To, std::size_t Size);
void Write(std::uint32_t Process, std::uint32_t Address, const void* From, std::size_t Size);
// Up to the first zero, at most 256 bytes, no further than the memory reaches.
std::string ReadText(std::uint32_t Process, std::uint32_t Address);

// Delivers a text through the message block of the process that owns the thread Target. Waits until the game
// has taken what was there before: Automation::Error 1001 when it does not.
void Deliver(std::uint32_t Target, Layout::Build Which, Layout::Message::Channel Channel, std::uint8_t Kind,
             std::string_view Text);

} // namespace GameProcess
