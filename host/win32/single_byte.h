// Texts in the system's single-byte code page, where bytes are written.
#pragma once

#include <string>

#include "host/text.h"

// "?" for what the code page lacks: never the nearest character, which could be another player's name.
std::string SingleByte(TextView Text);
std::wstring FromSingleByte(const char* Bytes, std::size_t Count);
