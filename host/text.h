// Text and number rules that the whole plug-in shares.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/failure.h"

using TextView = std::wstring_view;
using Lines = std::vector<std::wstring>;

inline constexpr TextView CrLf = L"\r\n";

// Without blanks (only blanks) at both ends.
std::wstring Trim(TextView Text);

// The fields between the separators; at least one, so that "" has one empty field.
Lines Split(TextView Text, TextView Separator);

// The elements with the separator between them.
std::wstring Join(const Lines& Elements, TextView Separator);

// Numeric: optional blanks, optional sign, decimal digits with an optional fraction (a point on every
// system), optional blanks. No exponent, no hexadecimal, no grouping.
bool IsNumeric(TextView Text);

// The value of a numeric text; error 13 for any other.
double ToNumber(TextView Text, Place Where = Place::current());

// The value of a numeric text rounded half to even; error 13 when not numeric, error 6 outside 32 bits.
Long ToWhole(TextView Text, Place Where = Place::current());

// The value of one or two hexadecimal digits; error 13 for any other text.
Long HexToByte(TextView Text, Place Where = Place::current());

// Decimal text without leading zeros.
std::wstring ToText(Long Number);

// Decimal text with a leading zero below 10. Not for negative numbers.
std::wstring TwoDigits(Long Number);

// Without control characters (U+0000 to U+001F, U+007F), which break the lines and keys of a file, or end it
// for many readers: each becomes "?".
std::wstring WithoutControls(TextView Text);
bool IsControl(wchar_t C);
// Error 5 when the text holds one.
void RefuseControls(TextView Text, Place Where = Place::current());

// The base folder of the host: the plug-in's own folder without "\Plugins", "\plugins" and "\dlls\Vantor".
std::wstring HostBaseOf(std::wstring PluginFolder);
