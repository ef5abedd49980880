#include "lists/ban_references.h"

#include <algorithm>

#include "game/mdlVNT.h"
#include "host/file_helper.h"
#include "host/platform.h"
#include "lists/first_failure.h"
#include "lists/numbered_section.h"

namespace {

Long UpperBound(const Lines& Section) { return static_cast<Long>(Section.size()) - 1; }

// The system writes a section's name without the blanks around it, and does not find it with them.
std::wstring SectionOf(TextView Name) { return Trim(Name); }

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
    const std::wstring Section = SectionOf(Name);
    const Entries Present = ReadEntries(Section, ReferenceFile, Where);
    const bool IsLinked =
        std::any_of(Present.begin(), Present.end(), [&](const auto& Link) { return Link.second == Address; });
    if (!IsLinked) FileHelper::WriteIniKey(Section, FreeKey(Present), Address, ReferenceFile, Where);
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

void UnlinkName(Long Index, TextView Name, const std::function<void(const std::wstring&)>& OnLinked,
                Place Where) {
    const std::wstring File = mdlVNT::BannedReferencePath(Index);
    const std::wstring Section = SectionOf(Name);
    FirstFailure Failed;
    for (const std::wstring& Address : ValuesOf(ReadEntries(Section, File, Where)))
        Failed.Try([&] { OnLinked(Address); });
    // While an address is left, the links still lead to it.
    Failed.Throw();
    FileHelper::ClearIniSection(Section, File, Where);
}
