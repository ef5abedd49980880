// The menu of the ban lists: import of another tool's ban file.
#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "lists/ban_lists.h"
#include "window/ban_tabs.h"
#include "window/handlers.h"
#include "window/list_editing.h"
#include "window/toolkit.h"

namespace {

void ShowAdded(Long Index, const std::vector<ImportedEntry>& Added) {
    if (!ListsShow(Index)) return;
    for (const ImportedEntry& Each : Added) (Each.IsName ? AppendBannedName : AppendBannedIp)(Each.Item);
}

// Nothing when the import broke off; what was written by then is in the lists all the same.
std::optional<ImportCounts> Import(Long Index, TextView Path) {
    const Hourglass WhileItRuns;
    std::vector<ImportedEntry> Added;
    std::optional<ImportCounts> Counts;
    try {
        Counts = ImportBanFile(Index, Path, Added);
    } catch (...) { // NOLINT(bugprone-empty-catch): a line that is not as it should be ends it without a word
    }
    ShowAdded(Index, Added);
    return Counts;
}

} // namespace

void mnuMerrow300_Click() noexcept {
    try {
        const Long Index = mdlVNT::CurrentProfile;
        EnsureSettingsFolder(Index);
        const std::optional<std::wstring> Path =
            Platform::AskOpenFile(L"Locate Merrows OstraSM Ban File", L"Text Documents (*.txt)|*.txt");
        if (!Path || Path->empty()) return;
        if (const auto Counts = Import(Index, *Path))
            ShowMsg(MsgKind::Success, ImportSummary(*Counts), Index);
    } catch (...) { // NOLINT(bugprone-empty-catch): nor does a folder that cannot be made say one
    }
}
