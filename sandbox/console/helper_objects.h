// The host's helper objects, as far as a remote console needs them.
#pragma once

#include "host/text.h"

namespace Helpers {

// Each fails with the object's own error, or with 429 when the object is not registered.
std::wstring Enc64(const std::wstring& Text);
std::wstring Dec64(const std::wstring& Text);
// Length is the number of characters of the result.
std::wstring DecompressString(const std::wstring& Text, Long Length);

} // namespace Helpers
