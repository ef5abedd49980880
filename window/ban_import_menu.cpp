// The menu of the ban lists: import of another tool's ban file.
#include "window/ban_import_menu.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "lists/ban_import.h"
#include "lists/ban_lists.h"
#include "window/ban_list_boxes.h"
#include "window/toolkit.h"

namespace {

void ShowAdded(Long Profile, const std::vector<ImportedEntry>& Added) {
    if (!BanListsShow(Profile)) return;
    for (const ImportedEntry& Entry : Added) (Entry.IsName ? AppendBannedName : AppendBannedIp)(Entry.Item);
}

// Nothing when the import broke off; what was written by then is in the lists all the same.
std::optional<ImportCounts> Import(Long Profile, TextView Path) {
    const Hourglass WhileItRuns;
    std::vector<ImportedEntry> Added;
    std::optional<ImportCounts> Counts;
    try {
        Counts = ImportBanFile(Profile, Path, Added);
    } catch (...) { // NOLINT(bugprone-empty-catch): a malformed line ends the import silently
    }
    ShowAdded(Profile, Added);
    return Counts;
}

} // namespace

void ImportChosenFile() {
    try {
        const Long Profile = mdlVNT::CurrentProfile;
        EnsureSettingsFolder(Profile);
        const std::optional<std::wstring> Path =
            Platform::AskOpenFile(L"Locate Merrows OstraSM Ban File", L"Text Documents (*.txt)|*.txt");
        if (!Path || Path->empty()) return;
        if (const auto Counts = Import(Profile, *Path))
            ShowMsg(MsgKind::Success, ImportSummary(*Counts), Profile);
    } catch (...) { // NOLINT(bugprone-empty-catch): silently as well
    }
}
