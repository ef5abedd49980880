// The question about a name that no file can hold as a whole.
#pragma once

#include "host/text.h"

// For a name that begins with "[", ";" or a blank: asks whether everybody shall be banned whose name contains
// the rest of it. Returns that rest, or nothing on No (the default) and for every other name.
std::wstring AskForPartOf(TextView Name, TextView Title);
