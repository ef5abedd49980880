#include "lists/ban_references.h"

#include "game/mdlVNT.h"
#include "host/file_helper.h"
#include "host/platform.h"
#include "lists/first_failure.h"

namespace {

Long UpperBound(const Lines& Section) { return static_cast<Long>(Section.size()) - 1; }

// The addresses in a name's lines, blank lines left out.
Lines AddressesOf(const Lines& Section) {
    Lines Addresses;
    if (UpperBound(Section) <= 0) return Addresses;
    for (const std::wstring& Line : Section)
        if (!Trim(Line).empty()) Addresses.push_back(FileHelper::ParseIniKey(Line));
    return Addresses;
}

// Rewrites a name's section without the address. Answers whether the name was linked to it.
bool UnlinkFromName(TextView Name, TextView Address, TextView File, FirstFailure& Failed) {
    const Lines Linked = AddressesOf(FileHelper::GetIniSection(Name, File));
    FileHelper::ClearIniSection(Name, File);
    bool WasLinked = false;
    Long Kept = 0;
    for (const std::wstring& Each : Linked) {
        if (Each == Address) {
            WasLinked = true;
            continue;
        }
        Failed.Try([&] { FileHelper::WriteIniKey(Name, ToText(Kept), Each, File); });
        ++Kept;
    }
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
            if (UnlinkFromName(Name, Address, File, Failed)) OnLinked(Name);
        });
    }
    Failed.Throw();
}

Lines TakeLinkedAddresses(Long Index, TextView Name, Place Where) {
    const std::wstring File = mdlVNT::BannedReferencePath(Index);
    Lines Addresses = AddressesOf(FileHelper::GetIniSection(Name, File, Where));
    FileHelper::ClearIniSection(Name, File, Where);
    return Addresses;
}
