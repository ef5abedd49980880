// The host's memory helper object, qrvGMF.clsMemory: one procedure for each of its members.
//
// Process is the profile's process reference, Address an absolute address in that process. Every procedure
// fails as those of host/file_helper.h do.
#pragma once

#include <cstdint>

#include "host/failure.h"
#include "host/text.h"

namespace MemoryHelper {

// Creates the object by its program identifier; error 429 when that is not possible.
void Create(Place Where = Place::current());
void Release() noexcept;

Long ReadLong(Long Process, Long Address, Place Where = Place::current());
std::uint8_t ReadByte(Long Process, Long Address, Place Where = Place::current());
// The text up to its terminating zero.
std::wstring ReadStr(Long Process, Long Address, Place Where = Place::current());
// Writes 32 bits.
void WriteLong(Long Process, Long Address, Long Value, Place Where = Place::current());

// Delivers a text to the game server: Channel "CMD" as a console command, "MSG" as an on-screen message.
void AddMsg(Long Index, Long MessageRef, TextView Text, bool IsAffiliate, TextView Channel, Long Kind,
            Place Where = Place::current());

std::wstring Enc64(TextView Text, Place Where = Place::current());
std::wstring Dec64(TextView Text, Place Where = Place::current());

} // namespace MemoryHelper
