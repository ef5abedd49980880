// The per-profile settings in Players.ini: the setting is the section, the profile's folder the key. They are
// read at each use, never kept.
#pragma once

#include "host/failure.h"
#include "host/text.h"

struct Setting {
    TextView Name;
    TextView Default; // in place of a text that is not valid
    bool (*IsValid)(TextView Text);
    bool (*IsValidForConsoles)(TextView Text); // which have always been sent more than the window accepts
};

namespace Settings {

bool IsGiven(TextView Text);
bool IsSwitch(TextView Text); // "1" or "0"
// Numeric, and does not compare below "1" as text. The comparison is by character code on purpose: "05" and
// "0.5" are not valid, "10" is.
bool IsPeriod(TextView Text);

inline constexpr Setting BanMethod{L"BanMethod", L"0", IsGiven, IsGiven};      // "1" is the kernel driver
inline constexpr Setting IdlePunt{L"IdlePunt", L"0", IsSwitch, IsGiven};       // "1" is on
inline constexpr Setting IdleMax{L"IdleMax", L"5", IsPeriod, IsNumeric};       // minutes
inline constexpr Setting AutoRefresh{L"AutoRefresh", L"0", IsSwitch, IsGiven}; // "1" is on
inline constexpr Setting RefreshInterval{L"RefreshInterval", L"5", IsPeriod, IsNumeric}; // seconds

} // namespace Settings

// Whether there is a Players.ini at all.
bool PlayersIniExists();

// The stored text; empty when file, section or key is missing.
std::wstring ReadSetting(Long Profile, const Setting& Read);
// The stored text when it is valid, else the default.
std::wstring ReadValidSetting(Long Profile, const Setting& Read);

// Stored as given. Error 5 for a text with line breaks, and when the profile's folder cannot be a key of the
// file; error 75 when the file is there and cannot be written (another program has it open, the disk is
// full). Where the file cannot be made at all, the setting has always been lost silently.
void WriteSetting(Long Profile, const Setting& Written, TextView Value);
