#include "lists/ban_lists.h"

#include "game/ini_key.h"
#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/file_helper.h"
#include "host/platform.h"
#include "host/work.h"

namespace {

constexpr TextView NamesSection = L"Players";
constexpr TextView IpsSection = L"IpAddresses";
constexpr TextView ReasonSeparator = L"[-]";

// The items that ItemOf makes of a section's lines; an empty item is left out. Absent when the file is
// missing.
template <class F> std::optional<Lines> ReadItems(TextView Section, const std::wstring& File, F&& ItemOf) {
    if (!Platform::FileExists(File)) return std::nullopt;
    Lines Items;
    for (const std::wstring& Line : FileHelper::GetIniSection(Section, File)) {
        if (Line.empty()) continue;
        const auto [Key, Value] = FileHelper::ParseIniEntry(Line);
        std::wstring Item = ItemOf(Key, Value);
        if (!Item.empty()) Items.push_back(std::move(Item));
    }
    return Items;
}

std::wstring NameItem(const std::wstring& Key, const std::wstring& Value) {
    if (!HoldsTag(Key) || Value.find(ReasonSeparator) == std::wstring::npos) return {};
    return BannedName::OfKey(Key).Item();
}

} // namespace

BanFiles::BanFiles(Long Index)
    : Profile(Index), Folder(mdlVNT::SettingsFolder(Index)), Names(Folder + L"\\BannedNames.ini"),
      Ips(Folder + L"\\BannedIps.ini"), References(Folder + L"\\BannedReference.ini") {}

std::wstring TimeStamp() {
    const Moment Local = Platform::Now();
    return DateText(Local) + L" " + ListTimeText(Local);
}

void EnsureFolder(const std::wstring& Folder) {
    if (!Platform::FolderExists(Folder)) Platform::CreateFolder(Folder);
}

IpListChange::IpListChange(Long Index) : Profile(Index) { mdlVNT::IpListChanged(Profile) = true; }
IpListChange::~IpListChange() {
    if (mdlVNT::IpListChanged.Has(Profile)) mdlVNT::IpListChanged(Profile) = true;
}

std::optional<Lines> GetBannedNames(Long Profile) noexcept {
    std::optional<Lines> Items;
    Trapped(L"GetBannedNames", Profile,
            [&] { Items = ReadItems(NamesSection, BanFiles(Profile).Names, NameItem); });
    return Items;
}

std::optional<Lines> GetBannedIps(Long Profile) noexcept {
    std::optional<Lines> Items;
    Trapped(L"GetBannedIps", Profile, [&] {
        Items = ReadItems(IpsSection, BanFiles(Profile).Ips,
                          [](const std::wstring& Key, const std::wstring&) { return Key; });
    });
    return Items;
}

bool HasBannedName(const BanFiles& Files, TextView Name) {
    return !FileHelper::GetIniKey(NamesSection, BannedName::Whole(Name).Key(), Files.Names).empty();
}

bool HasBareName(const BanFiles& Files, TextView Name) {
    return !EndsInTag(Name) && !FileHelper::GetIniKey(NamesSection, Name, Files.Names).empty();
}

bool HasBannedIp(const BanFiles& Files, TextView Pattern) {
    return !FileHelper::GetIniKey(IpsSection, Pattern, Files.Ips).empty();
}

Lines ReadNameLines(const BanFiles& Files) { return FileHelper::GetIniSection(NamesSection, Files.Names); }

Lines NameFragments(const Lines& NameLines) {
    Lines Fragments;
    for (const std::wstring& Line : NameLines) {
        // A host call for each line is what a tick costs: most lines are whole names and cannot hold a part.
        if (!HoldsPartTag(Line)) continue;
        std::optional<std::wstring> Part = PartOfKey(FileHelper::ParseIniEntry(Line).first);
        if (Part) Fragments.push_back(std::move(*Part));
    }
    return Fragments;
}

Lines ExactAddresses(const BanFiles& Files) {
    Lines Addresses;
    if (!Platform::FileExists(Files.Ips)) return Addresses;
    for (const std::wstring& Line : FileHelper::GetIniSection(IpsSection, Files.Ips)) {
        if (Line.empty() || Line.find(L".*") != std::wstring::npos) continue;
        std::wstring Key = FileHelper::ParseIniEntry(Line).first;
        // A lone "*" is a pattern as well; a line "=..." was written by hand.
        if (!Key.empty() && Key != L"*") Addresses.push_back(std::move(Key));
    }
    return Addresses;
}

BanDetails BannedNameDetails(Long Profile, const BannedName& Banned) {
    const std::wstring Value = FileHelper::GetIniKey(NamesSection, Banned.Key(), BanFiles(Profile).Names);
    const auto Separator = Value.find(ReasonSeparator);
    if (Separator == std::wstring::npos) return {Value, {}};
    return {Value.substr(0, Separator), Value.substr(Separator + ReasonSeparator.size())};
}

std::wstring BannedIpDate(Long Profile, TextView Address) {
    return FileHelper::GetIniKey(IpsSection, Address, BanFiles(Profile).Ips);
}

bool StoreBannedName(const BanFiles& Files, const BannedName& Banned, TextView Stamp, TextView Reason) {
    const std::wstring Key = Banned.Key();
    if (!CanBeKey(Key) || !CanBeValue(Reason)) return false;
    EnsureFolder(Files.Folder);
    const Work Change(Work::Kind::FileChange, Files.Profile, Files.Names);
    FileHelper::WriteIniKey(NamesSection, Key,
                            std::wstring(Stamp) + std::wstring(ReasonSeparator) + std::wstring(Reason),
                            Files.Names);
    return !FileHelper::GetIniKey(NamesSection, Key, Files.Names).empty();
}

bool StoreBannedIp(const BanFiles& Files, TextView Address, TextView Stamp) {
    const std::wstring Key = Trim(Address);
    if (!CanBeKey(Key)) return false;
    EnsureFolder(Files.Folder);
    const Work Change(Work::Kind::FileChange, Files.Profile, Files.Ips);
    FileHelper::WriteIniKey(IpsSection, Key, Stamp, Files.Ips);
    return HasBannedIp(Files, Key);
}

void RemoveBannedName(const BanFiles& Files, const BannedName& Banned) {
    RequireOwnKey(Banned.Key());
    const Work Change(Work::Kind::FileChange, Files.Profile, Files.Names);
    Platform::DeleteProfileKey(NamesSection, Banned.Key(), Files.Names);
}

void RemoveBannedIp(const BanFiles& Files, TextView Address) {
    RequireOwnKey(Address);
    const Work Change(Work::Kind::FileChange, Files.Profile, Files.Ips);
    Platform::DeleteProfileKey(IpsSection, Address, Files.Ips);
}

void RemoveLinkedName(const BanFiles& Files, TextView Name) {
    const Work Change(Work::Kind::FileChange, Files.Profile, Files.Names);
    FileHelper::WriteIniKey(NamesSection, BannedName::Whole(Name).Key(), std::nullopt, Files.Names);
}

void RemoveLinkedIp(const BanFiles& Files, TextView Address) {
    const Work Change(Work::Kind::FileChange, Files.Profile, Files.Ips);
    FileHelper::WriteIniKey(IpsSection, Address, std::nullopt, Files.Ips);
}
