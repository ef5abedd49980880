#include "plugin/admin_log.h"

#include "game/mdlVNT.h"
#include "host/file_helper.h"
#include "host/platform.h"

namespace {

std::wstring LogFolder(const Pdat& Data) {
    if (PdatFlag(Data, PdatElement::HostWideLogs)) return mdlVNT::HostBaseFolder + L"\\adminlogs";
    const std::wstring Folder = PdatText(Data, PdatElement::ProfileFolder);
    return mdlVNT::HostBaseFolder + L"\\profiles\\" + Folder + L"\\adminlogs";
}

} // namespace

void WriteAdminLog(const Pdat& Data, TextView Action, TextView Tail) {
    const Moment Local = Platform::Now();
    const std::wstring Folder = LogFolder(Data);
    const std::wstring Line = L"[" + LogTimeText(Local) + L"][Vantor] " + std::wstring(Action) +
                              std::wstring(Tail) + PdatText(Data, PdatElement::Administrator);
    if (!Platform::FolderExists(Folder)) Platform::CreateFolder(Folder);
    const std::wstring File = Folder + L"\\" + DateText(Local) + L".txt";
    if (!Platform::FileExists(File)) Platform::CreateEmptyFile(File);
    FileHelper::AppendFile(File, WithoutControls(Line));
}
