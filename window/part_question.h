// The questions before a name is banned by a part of it.
#pragma once

#include <optional>

#include "lists/banned_name.h"

// The entry for a name as it was typed or chosen: the same one or, where no file can hold it as it is because
// it begins with "[", ";" or a blank, the rest of it as a part, if the administrator wants that. Nothing when
// he wants nothing to be done. With an address he may also want that alone: the entry is then empty.
std::optional<BannedName> AskForEntry(const BannedName& Name, TextView Title, TextView Address = {});
