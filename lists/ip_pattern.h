// Addresses and address patterns ("127.0.0.*", "127.0.*", "127.*", "*") as they can be banned.
#pragma once

#include "host/text.h"

// Whether a text is an address or an address pattern. A negative part passes: it matches nobody and has
// always been accepted.
bool IsValidIp(TextView Text);

// Whether an address can be banned at all: it is known (not blank, not "0.0.0.0", which everybody has whose
// address the server does not know yet) and can be a key of the file. Blanks around it do not count.
bool IsBannableIp(TextView Address);

// Whether an address is known, see above.
bool IsKnownIp(TextView Address);
