// Import of another server manager's ban file: plain text with fixed columns.
#pragma once

#include "host/failure.h"
#include "host/text.h"
#include "lists/ban_lists.h"
#include "lists/progress.h"

struct ImportCounts {
    Long Found = 0, Added = 0, Skipped = 0, Invalid = 0;
    bool IsWhole = true; // not ended by GoOn
    bool operator==(const ImportCounts&) const = default;
};

// One added entry, for the lists in the window: a names-list item ("[1] Bob") or an address.
struct ImportedEntry {
    bool IsName;
    std::wstring Item;
};

// Adds the entries of the file's lines to the ban files of the profile, links names to addresses, and sets
// IpListChanged with the first address. Entries are appended to Added as they are written, so that they can
// be shown also when the import fails on the way.
//
// If cancelled, the counts cover the lines processed. Fails with error 5 at a line whose name or reason field
// is empty, else as the helpers do.
ImportCounts ImportBanFile(const BanFiles& Files, TextView Path, std::vector<ImportedEntry>& Added,
                           const Progress& GoOn = {});

// The summary shown at the end.
std::wstring ImportSummary(const ImportCounts& Counts);
