// Who may ask for what: the members that remote consoles reach, and the privilege that each needs.
#pragma once

#include <optional>

#include "sandbox/host/configuration.h"

namespace Privileges {

// The privilege that a request needs, by the plug-in's name for it; empty when anybody may ask. Error 438
// when no remote console reaches the member.
std::wstring NeededFor(TextView Member, const std::optional<std::wstring>& Data);

// Whether the administrator has it. Granted are those that one has who was given no list.
bool Has(const Administrator& Admin, TextView Privilege, const Lines& Granted);

} // namespace Privileges
