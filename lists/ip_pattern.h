// Addresses and address patterns ("127.0.0.*", "127.0.*", "127.*", "*") as they can be banned.
#pragma once

#include "host/text.h"

// Whether a text is an address or an address pattern. A negative part passes: it matches nobody and has
// always been accepted.
bool IsValidIp(TextView Text);

// Whether a text is the address of a player: valid, and not "0.0.0.0", which everybody has whose address the
// server does not know yet. Blanks around it do not count.
bool IsKnownIp(TextView Address);
