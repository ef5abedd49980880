// The per-profile settings in Players.ini: the setting is the section, the profile's folder the key. They are
// read at each use, never kept.
#pragma once

#include "host/failure.h"
#include "host/text.h"

namespace Setting {
inline constexpr TextView BanMethod = L"BanMethod";             // "0" Game Command Line, "1" Kernel Driver
inline constexpr TextView IdlePunt = L"IdlePunt";               // "1" on
inline constexpr TextView IdleMax = L"IdleMax";                 // minutes
inline constexpr TextView AutoRefresh = L"AutoRefresh";         // "1" on
inline constexpr TextView RefreshInterval = L"RefreshInterval"; // seconds
} // namespace Setting

// Whether there is a Players.ini at all.
bool PlayersIniExists();

// The stored text; empty when file, section or key is missing.
std::wstring ReadSetting(Long Index, TextView Name);
// Stored as given. Error 5 for a text with line breaks. A file that cannot be written loses it silently.
void WriteSetting(Long Index, TextView Name, TextView Value);

// The text when it is "1" or "0", else "0".
std::wstring SwitchOr0(std::wstring Text);
// The text when it is numeric and does not compare below "1" as text, else "5". The comparison is by
// character code on purpose: "05" and "0.5" fall back, "10" does not.
std::wstring PeriodOr5(std::wstring Text);
