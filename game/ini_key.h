// What an INI file can hold: the one rule for the keys and values of the lists and the settings.
#pragma once

#include "host/text.h"

// Whether a text can be written as a key and is read as the same key again. The INI format ends a key at "=":
// a player who calls himself "e[2]=" would have everybody banned whose name holds an "e", and the address
// "5.*=" a whole range. A line that begins with "[" opens a section, one with ";" is a comment. Blanks before
// a key are lost: a ban of " Bob" would be one of "Bob". A letter that the system's code page lacks becomes
// "?", and a ban of "Ж" one of everybody with a "?" in the name.
// The same rule bounds the length and refuses control characters.
bool CanBeKey(TextView Key);

// No text of a file is longer: an INI file loses values of more than 32,766 characters, some readers whole
// files.
inline constexpr std::size_t LongestText = 1000;
// Whether a text can be written as a value: not too long, and without control characters.
bool CanBeValue(TextView Value);

// Error 5 for a key or section that does not survive the system's code page: it is another one's there.
void RequireOwnKey(TextView Key, Place Where = Place::current());

// How far a text begins with characters that no key can begin with ("[;" of "[;Bob").
std::size_t OddBeginning(TextView Text);

// Whether a value read from an INI file is the one that was written: the format loses blanks at its ends and
// one pair of quotes around it.
bool ReadsBackAs(TextView Written, TextView Read);
