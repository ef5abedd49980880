// The menu of the ban lists: import of another tool's ban file.
#include "window/ban_import_menu.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "lists/ban_import.h"
#include "lists/ban_lists.h"
#include "window/ban_list_boxes.h"
#include "window/long_work.h"

namespace {

void ShowAdded(const std::vector<ImportedEntry>& Added) {
    Lines Names, Ips;
    for (const ImportedEntry& Entry : Added) (Entry.IsName ? Names : Ips).push_back(Entry.Item);
    AppendBannedNames(Names);
    AppendBannedIps(Ips);
}

// The summary; nothing when the import broke off. What was written by then is in the lists all the same.
std::optional<std::wstring> Import(const BanFiles& Files, TextView Path) {
    const Hourglass WhileItRuns;
    LongWork Work(L"Importing the ban file...");
    std::vector<ImportedEntry> Added;
    std::optional<std::wstring> Summary;
    try {
        const ImportCounts Counts = ImportBanFile(Files, Path, Added, Work.GoOn());
        Summary = ImportSummary(Counts) + Work.Note();
    } catch (...) { // NOLINT(bugprone-empty-catch): a malformed line ends the import silently
    }
    ShowAdded(Added);
    return Summary;
}

} // namespace

void mnuMerrow300_Click() {
    try {
        const BanFiles Files(mdlVNT::CurrentProfile);
        EnsureFolder(Files.Folder);
        const std::optional<std::wstring> Path =
            Platform::AskOpenFile(L"Locate Merrows OstraSM Ban File", L"Text Documents (*.txt)|*.txt");
        if (!Path || Path->empty()) return;
        if (const auto Summary = Import(Files, *Path)) ShowMsg(MsgKind::Success, *Summary, Files.Profile);
    } catch (...) { // NOLINT(bugprone-empty-catch): silently as well
    }
}
