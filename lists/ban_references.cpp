#include "lists/ban_references.h"

#include <algorithm>

#include "game/ini_key.h"
#include "game/show_msg.h"
#include "host/file_helper.h"
#include "host/platform.h"
#include "host/work.h"
#include "lists/first_failure.h"
#include "lists/numbered_section.h"

namespace {

Long UpperBound(const Lines& Section) { return static_cast<Long>(Section.size()) - 1; }

// The system writes a section's name without the blanks around it, and does not find it with them.
std::wstring SectionOf(TextView Name) {
    RequireOwnKey(Name);
    return Trim(Name);
}

void UnlinkFromName(const std::wstring& Name, TextView Address, const std::wstring& File,
                    const std::function<void(const std::wstring&)>& OnLinked) {
    const Entries Links = ReadEntries(Name, File);
    Lines Kept = ValuesOf(Links);
    if (std::erase(Kept, Address) > 0) OnLinked(Name);
    if (Kept.size() < Links.size()) RewriteNumbered(Name, Links, Kept, File);
}

} // namespace

void AddBanReference(const BanFiles& Files, TextView Name, TextView Address) noexcept {
    Trapped(L"AddBanReference", Files.Profile, [&] {
        const std::wstring Section = SectionOf(Name);
        const Work Change(Work::Kind::FileChange, Files.Profile, Files.References);
        if (!Platform::FileExists(Files.References)) Platform::CreateEmptyFile(Files.References);
        const Entries Links = ReadEntries(Section, Files.References);
        const auto IsLink = [&](const auto& Link) { return Link.second == Address; };
        if (std::ranges::none_of(Links, IsLink))
            FileHelper::WriteIniKey(Section, FreeKey(Links), Address, Files.References);
    });
}

void UnlinkAddress(const BanFiles& Files, TextView Address,
                   const std::function<void(const std::wstring& Name)>& OnLinked, const Progress& GoOn) {
    const Work Change(Work::Kind::FileChange, Files.Profile, Files.References);
    const Lines Names = FileHelper::GetAllIniSections(Files.References);
    if (UpperBound(Names) < 1) return;
    FirstFailure Failed;
    for (std::size_t Row = 0; Row < Names.size() && Continues(GoOn, Row, Names.size()); ++Row)
        if (!Trim(Names[Row]).empty())
            Failed.Try([&] { UnlinkFromName(Names[Row], Address, Files.References, OnLinked); });
    Failed.Throw();
}

void UnlinkName(const BanFiles& Files, TextView Name,
                const std::function<void(const std::wstring& Address)>& OnLinked, const Progress& GoOn) {
    const std::wstring Section = SectionOf(Name);
    const Work Change(Work::Kind::FileChange, Files.Profile, Files.References);
    const Lines Addresses = ValuesOf(ReadEntries(Section, Files.References));
    FirstFailure Failed;
    for (std::size_t Row = 0; Row < Addresses.size(); ++Row) {
        if (!Continues(GoOn, Row, Addresses.size())) return Failed.Throw();
        Failed.Try([&] { OnLinked(Addresses[Row]); });
    }
    // While an address is left, the links still lead to it.
    Failed.Throw();
    FileHelper::ClearIniSection(Section, Files.References);
}
