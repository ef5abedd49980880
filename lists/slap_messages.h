// Slaps.ini [Messages]: the slap messages of a profile under the keys "0", "1", ... without gaps.
#pragma once

#include <optional>

#include "host/failure.h"
#include "host/text.h"

// The messages in order; absent when the file is missing.
std::optional<Lines> ReadSlaps(Long Index, Place Where = Place::current());
// Appends a message under the key that is its position.
void AddSlap(Long Index, TextView Message, Place Where = Place::current());
// Replaces the message at a position; does nothing when there is none.
void EditSlap(Long Index, std::size_t Position, TextView Message, Place Where = Place::current());
// Replaces the whole section by the messages.
void RewriteSlaps(Long Index, const Lines& Messages, Place Where = Place::current());
// Sends "name.....message" as a server message.
void SendSlap(Long Index, TextView Name, TextView Message, Place Where = Place::current());
