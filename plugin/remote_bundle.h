// The reply of GetPlayersRem: players, ban and slap lists and settings in one compressed text.
#pragma once

#include "host/failure.h"
#include "host/text.h"

// Builds "<length of the text>[-]Tessoral[-]<compressed text>" through two temporary files in the profile's
// settings folder. Reply is set before the temporary files are deleted and stays empty when the players could
// not be read.
void BuildReply(Long Index, std::wstring& Reply);
