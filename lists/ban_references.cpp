#include "lists/ban_references.h"

#include "game/mdlVNT.h"
#include "host/file_helper.h"
#include "host/platform.h"
#include "lists/first_failure.h"
#include "lists/numbered_section.h"

namespace {

Long UpperBound(const Lines& Section) { return static_cast<Long>(Section.size()) - 1; }

// Takes the address out of a name's section. Answers whether the name was linked to it.
bool UnlinkFromName(TextView Name, TextView Address, TextView File, Place Where) {
    const Entries Linked = ReadEntries(Name, File, Where);
    Lines Kept = ValuesOf(Linked);
    const bool WasLinked = std::erase(Kept, Address) > 0;
    if (!Linked.empty()) RewriteNumbered(Name, Linked, Kept, File, Where);
    return WasLinked;
}

} // namespace

void AddBanReference(TextView SettingsFolder, TextView ReferenceFile, TextView Name, TextView Address,
                     Place Where) {
    if (!Platform::FolderExists(SettingsFolder)) Platform::CreateFolder(SettingsFolder, Where);
    if (!Platform::FileExists(ReferenceFile)) Platform::CreateEmptyFile(ReferenceFile, Where);
    const Lines Section = FileHelper::GetIniSection(Name, ReferenceFile, Where);
    for (const std::wstring& Line : Section)
        if (!Trim(Line).empty() && FileHelper::ParseIniKey(Line, Where) == Address) return;
    // The array ends with one empty element, so that its upper bound is the number of links.
    const Long Key = UpperBound(Section) < 0 ? 0 : UpperBound(Section);
    FileHelper::WriteIniKey(Name, ToText(Key), Address, ReferenceFile, Where);
}

void UnlinkAddress(Long Index, TextView Address, const std::function<void(const std::wstring&)>& OnLinked,
                   Place Where) {
    const std::wstring File = mdlVNT::BannedReferencePath(Index);
    const Lines Names = FileHelper::GetAllIniSections(File, Where);
    if (UpperBound(Names) < 1) return;
    FirstFailure Failed;
    for (const std::wstring& Name : Names) {
        if (Trim(Name).empty()) continue;
        Failed.Try([&] {
            if (UnlinkFromName(Name, Address, File, Where)) OnLinked(Name);
        });
    }
    Failed.Throw();
}

Lines TakeLinkedAddresses(Long Index, TextView Name, Place Where) {
    const std::wstring File = mdlVNT::BannedReferencePath(Index);
    Lines Addresses = ValuesOf(ReadEntries(Name, File, Where));
    FileHelper::ClearIniSection(Name, File, Where);
    return Addresses;
}
