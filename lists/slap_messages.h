// Slaps.ini [Messages]: the slap messages of a profile under the keys "0", "1", ... without gaps.
#pragma once

#include <optional>

#include "host/failure.h"
#include "host/text.h"
#include "lists/progress.h"

// The messages in order; absent when the file is missing.
std::optional<Lines> ReadSlaps(Long Profile);

// One change of the file at a time: one inside a call of another is refused (error 5). The first two also
// fail with 5 for a message that the file cannot hold (blank, too long, letters that the system's code page
// lacks), and leave the list as it was.
//
// Appends a message under the key that is its position.
void AddSlap(Long Profile, TextView Message);
// Acts on the message where it is expected and, when it is not there because somebody else has changed the
// list meanwhile, where it stands first. Returns false when it is gone.
bool EditSlap(Long Profile, TextView Old, TextView New, std::size_t Expected = 0);

// As EditSlap; does nothing when the message is gone. Shown is told how far it is and cannot end it.
void DeleteSlap(Long Profile, TextView Message, std::size_t Expected = 0, const Progress& Shown = {});
// Sends "name.....message" as a server message.
void SendSlap(Long Profile, TextView Name, TextView Message);
