// Room on the disk, asked for before a file grows. The system's INI functions say that they are done when the
// disk is full, and what stood at the end of the file, somebody else's entry, is lost.
#pragma once

#include "host/failure.h"
#include "host/text.h"

// The file may be missing yet. The two that require the room fail with error 75 when there is none.

// Room for the INI file with the entry, beside the file as it is: some write a copy first.
bool HasRoomForEntry(TextView File, TextView Section, TextView Key, TextView Value);
void RequireRoomForEntry(TextView File, TextView Section, TextView Key, TextView Value,
                         Place Where = Place::current());
// Room for the text and a line end at the file's end.
void RequireRoomForLine(TextView File, TextView Text, Place Where = Place::current());
