// The reply of GetPlayersRem: players, ban and slap lists and settings in one compressed text.
#pragma once

#include "host/failure.h"
#include "host/text.h"

// Builds "<length of the text>[-]Tessoral[-]<compressed text>" through two temporary files in the profile's
// settings folder. Reply is set before the temporary files are deleted. Of players that could not all be
// read it holds those that were; it stays empty when there is no table to read. One at a time for a folder:
// one inside a call of another is refused (error 5).
void BuildReply(Long Profile, std::wstring& Reply);
