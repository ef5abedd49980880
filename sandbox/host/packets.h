// What a remote console and the stand-in host say to each other over a pipe: a packet is a count of texts,
// then each text as its length and its characters, so that a request may hold anything.
#pragma once

#include <windows.h>

#include "host/text.h"

namespace Packets {

// "\\.\pipe\" and the name.
std::wstring PipePath(TextView Name);

// False when the other side has gone.
bool Write(HANDLE Pipe, const Lines& Texts);
// False when the other side has gone or sends what is no packet.
bool Read(HANDLE Pipe, Lines& Texts);

} // namespace Packets
