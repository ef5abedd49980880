// Slaps.ini [Messages]: the slap messages of a profile under the keys "0", "1", ... without gaps.
#pragma once

#include <optional>

#include "host/failure.h"
#include "host/text.h"

// The messages in order; absent when the file is missing.
std::optional<Lines> ReadSlaps(Long Index, Place Where = Place::current());
// Appends a message under the key that is its position.
void AddSlap(Long Index, TextView Message, Place Where = Place::current());
// Both act on the message where it is expected and, when it is not there because somebody else has changed
// the list meanwhile, where it stands first. EditSlap answers false, and DeleteSlap does nothing, when it is
// gone.
bool EditSlap(Long Index, TextView Old, TextView New, std::size_t Expected = 0,
              Place Where = Place::current());
void DeleteSlap(Long Index, TextView Message, std::size_t Expected = 0, Place Where = Place::current());
// Sends "name.....message" as a server message.
void SendSlap(Long Index, TextView Name, TextView Message, Place Where = Place::current());
