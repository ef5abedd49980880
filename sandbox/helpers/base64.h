// Base64 of bytes, with padding and without line breaks.
#pragma once

#include <string>
#include <string_view>

std::string EncodeBase64(std::string_view Bytes);
// Throws Automation::Error 5 for anything that EncodeBase64 would not have written.
std::string DecodeBase64(std::string_view Text);
