// The menu of the ban lists: import of another tool's ban file.
#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "lists/ban_lists.h"
#include "window/ban_tabs.h"
#include "window/handlers.h"
#include "window/toolkit.h"

namespace {

// Shows what was written when it goes, also when the import ended on the way.
struct AddedEntries {
    std::vector<ImportedEntry> Entries;

    AddedEntries() = default;
    AddedEntries(const AddedEntries&) = delete;
    AddedEntries& operator=(const AddedEntries&) = delete;
    ~AddedEntries() {
        try {
            for (const ImportedEntry& Each : Entries)
                (Each.IsName ? AppendBannedName : AppendBannedIp)(Each.Item);
        } catch (...) { // NOLINT(bugprone-empty-catch): the files have it; the next reload shows it
        }
    }
};

ImportCounts Import(Long Index, TextView Path) {
    const Hourglass WhileItRuns;
    AddedEntries Added;
    return ImportBanFile(Index, Path, Added.Entries);
}

} // namespace

void mnuMerrow300_Click() noexcept {
    try {
        const Long Index = mdlVNT::CurrentProfile;
        EnsureSettingsFolder(Index);
        const std::optional<std::wstring> Path =
            Platform::AskOpenFile(L"Locate Merrows OstraSM Ban File", L"Text Documents (*.txt)|*.txt");
        if (!Path || Path->empty()) return;
        const ImportCounts Counts = Import(Index, *Path);
        ShowMsg(MsgKind::Success, ImportSummary(Counts), Index);
    } catch (...) { // NOLINT(bugprone-empty-catch)
        // An import ends without a word when a line is not as it should be: what was added shows in the
        // lists.
    }
}
