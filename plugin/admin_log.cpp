#include "plugin/admin_log.h"

#include "game/mdlVNT.h"
#include "host/file_helper.h"
#include "host/platform.h"

namespace {

std::wstring LogFolder(const Pdat& Data, Place Where) {
    if (PdatFlag(Data, PdatElement::HostWideLogs, Where)) return mdlVNT::HostBaseFolder + L"\\adminlogs";
    const std::wstring Folder = PdatText(Data, PdatElement::ProfileFolder, Where);
    return mdlVNT::HostBaseFolder + L"\\profiles\\" + Folder + L"\\adminlogs";
}

} // namespace

void WriteAdminLog(const Pdat& Data, TextView Action, TextView Tail, Place Where) {
    const Moment Now = Platform::Now();
    const std::wstring Folder = LogFolder(Data, Where);
    const std::wstring Line = L"[" + LogTimeText(Now) + L"][Vantor] " + std::wstring(Action) +
                              std::wstring(Tail) + PdatText(Data, PdatElement::Administrator, Where);
    // A line of the log is one line, whatever the request held.
    RefuseLineBreaks(Line, Where);
    if (!Platform::FolderExists(Folder)) Platform::CreateFolder(Folder, Where);
    const std::wstring File = Folder + L"\\" + DateText(Now) + L".txt";
    if (!Platform::FileExists(File)) Platform::CreateEmptyFile(File, Where);
    FileHelper::AppendFile(File, Line, Where);
}
