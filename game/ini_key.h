// What an INI file can hold: the one rule for the keys and values of the lists and the settings.
#pragma once

#include "host/text.h"

// Whether a text can be written as a key and is read as the same key again. The INI format ends a key at "=":
// a player who calls himself "e[2]=" would have everybody banned whose name holds an "e", and the address
// "5.*=" a whole range. A line that begins with "[" opens a section, one with ";" is a comment. Blanks before
// a key are lost: a ban of " Bob" would be one of "Bob". A letter that the system's code page lacks becomes
// "?", and a ban of "Ж" one of everybody with a "?" in the name.
bool CanBeKey(TextView Key);

// Whether a value read from an INI file is the one that was written: the format loses blanks at its ends and
// one pair of quotes around it.
bool ReadsBackAs(TextView Written, TextView Read);
