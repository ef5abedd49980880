// The per-profile settings in Players.ini: the setting is the section, the profile's folder the key. They are
// read at each use, never kept.
#pragma once

#include "host/failure.h"
#include "host/text.h"

struct Setting {
    TextView Name;
    TextView Default; // in place of a text that is not valid
    bool (*IsValid)(TextView Text);
    bool (*IsValidForConsoles)(TextView Text); // consoles also get values that the window would reject
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
std::wstring ReadSetting(Long Profile, const Setting& Kind);
// The stored text when it is valid, else the default.
std::wstring ReadValidSetting(Long Profile, const Setting& Kind);
// Whether bans are enforced by the kernel driver: the stored BanMethod is exactly "1".
bool KernelMethodIsSet(Long Profile);

// Stored as given. Error 5 for a text with control characters or of more than LongestText characters, and
// when the profile's folder cannot be a key of the file; error 75 when the file cannot be written.
void WriteSetting(Long Profile, const Setting& Kind, TextView Value);
