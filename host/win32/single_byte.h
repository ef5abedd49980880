// Texts in the system's single-byte code page, where bytes are written. That page may also be UTF-8 or an
// East Asian one, in which a character takes up to four bytes: lengths are counted after the conversion.
#pragma once

#include <string>

#include "host/text.h"

// "?" for what the code page lacks, never the nearest character, which could be another player's name. A
// conversion that the system refuses fails with the system's own error, and never gives an empty text.
std::string SingleByte(TextView Text, Place Where = Place::current());
std::wstring FromSingleByte(const char* Bytes, std::size_t Count, Place Where = Place::current());
