// BannedReference.ini: which addresses a banned player used. One section for each name, keys "0", "1", ...
// with an address each.
#pragma once

#include <functional>

#include "host/failure.h"
#include "host/text.h"

// Links the name to the address unless it is linked already; makes the file when it is missing.
void AddBanReference(TextView SettingsFolder, TextView ReferenceFile, TextView Name, TextView Address,
                     Place Where = Place::current());

// Removes the address from the section of every name, rewriting each without it, and calls OnLinked with each
// name that was linked to it. Where one write fails, the rest is still done and then the failure is thrown.
void UnlinkAddress(Long Index, TextView Address, const std::function<void(const std::wstring&)>& OnLinked,
                   Place Where = Place::current());

// Calls OnLinked with each address that is linked to the name, and then clears the name's section. Where one
// call fails, the rest is still done; then the failure is thrown and the section stays.
void UnlinkName(Long Index, TextView Name, const std::function<void(const std::wstring&)>& OnLinked,
                Place Where = Place::current());
