// BannedReference.ini: which addresses a banned player used. One section for each name, keys "0", "1", ...
// with an address each.
//
// Links outlive the entries that they lead to: whatever ends the process on the way, an entry that is still
// banned can be found by its link. One change of the file at a time: one inside a call of another is refused
// (error 5).
#pragma once

#include <functional>

#include "lists/ban_lists.h"
#include "lists/progress.h"

// Links the name to the address unless it is linked already; makes the file when it is missing. Reports under
// its own name, so that a ban goes on without the link.
void AddBanReference(const BanFiles& Files, TextView Name, TextView Address) noexcept;

// Calls OnLinked with each name that is linked to the address, and then takes the address out of the section
// of that name. Where one call or write fails, the rest is still done and then the failure is thrown.
void UnlinkAddress(const BanFiles& Files, TextView Address,
                   const std::function<void(const std::wstring& Name)>& OnLinked, const Progress& GoOn = {});

// Calls OnLinked with each address that is linked to the name, and then clears the name's section. Where one
// call fails, the rest is still done; then the failure is thrown and the section stays. It also stays when
// GoOn ends the work.
void UnlinkName(const BanFiles& Files, TextView Name,
                const std::function<void(const std::wstring& Address)>& OnLinked, const Progress& GoOn = {});
