#include "lists/ban_lists.h"

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "host/file_helper.h"
#include "host/platform.h"

namespace {

constexpr std::size_t TagLength = 3; // "[1]"

// Adds the items that ItemOf makes of a section's lines; an empty item is left out.
template <class F> Lines ReadItems(TextView Section, TextView File, F&& ItemOf) {
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
    const bool Tagged =
        Key.find(WholeName) != std::wstring::npos || Key.find(PartOfName) != std::wstring::npos;
    if (!Tagged || Value.find(ReasonSeparator) == std::wstring::npos) return {};
    return ItemOfKey(Key);
}

bool IsValidPart(TextView Part, bool Last) {
    if (Part == L"*") return Last;
    return IsNumeric(Part) && ToNumber(Part) <= 255;
}

} // namespace

std::wstring TimeStamp() {
    const Moment Now = Platform::Now();
    return DateText(Now) + L" " + ListTimeText(Now);
}

std::optional<Lines> GetBannedNames(Long Index) noexcept {
    std::optional<Lines> Items;
    Trapped(L"GetBannedNames", Index, [&] {
        const std::wstring File = mdlVNT::BannedNamesPath(Index);
        if (Platform::FileExists(File)) Items = ReadItems(NamesSection, File, NameItem);
    });
    return Items;
}

std::optional<Lines> GetBannedIps(Long Index) noexcept {
    std::optional<Lines> Items;
    Trapped(L"GetBannedIps", Index, [&] {
        const std::wstring File = mdlVNT::BannedIpsPath(Index);
        if (Platform::FileExists(File))
            Items =
                ReadItems(IpsSection, File, [](const std::wstring& Key, const std::wstring&) { return Key; });
    });
    return Items;
}

std::wstring KeyOfItem(TextView Item) {
    if (Item.size() < TagLength + 1) Fail(ErrorNumber::InvalidCall);
    return std::wstring(Item.substr(TagLength + 1)) + std::wstring(Item.substr(0, TagLength));
}

std::wstring ItemOfKey(TextView Key) {
    if (Key.size() < TagLength) Fail(ErrorNumber::InvalidCall);
    const std::size_t NameLength = Key.size() - TagLength;
    return std::wstring(Key.substr(NameLength)) + L" " + std::wstring(Key.substr(0, NameLength));
}

bool IsValidIp(TextView Text) {
    for (int Count = 1; Count <= 4; ++Count) {
        const auto Point = Text.find(L'.');
        const bool Last = Point == TextView::npos;
        const TextView Part = Text.substr(0, Point);
        if (!IsValidPart(Part, Last)) return false;
        if (Last) return Count == 4 || Part == L"*";
        Text.remove_prefix(Point + 1);
    }
    return false; // more than four parts
}

void RefuseUnlessKey(TextView Address, Place Where) {
    if (!CanBeKey(Address)) Fail(ErrorNumber::InvalidCall, L"This is no address that can be banned.", Where);
}

bool CanBeKey(TextView Key) {
    const bool OddStart = Key.starts_with(L'[') || Key.starts_with(L' ') || Key.starts_with(L'\t');
    return !OddStart && Key.find(L'=') == TextView::npos;
}

bool StoreBannedName(Long Index, TextView Key, TextView Stamp, TextView Reason, Place Where) {
    const std::wstring File = mdlVNT::BannedNamesPath(Index);
    const std::wstring Value = std::wstring(Stamp) + std::wstring(ReasonSeparator) + std::wstring(Reason);
    EnsureSettingsFolder(Index, Where);
    if (!CanBeKey(Key)) return false;
    FileHelper::WriteIniKey(NamesSection, Key, Value, File, Where);
    return !FileHelper::GetIniKey(NamesSection, Key, File, Where).empty();
}

void StoreBannedIp(Long Index, TextView Address, TextView Stamp, Place Where) {
    const std::wstring Key = Trim(Address); // blanks around it are no part of an address
    RefuseUnlessKey(Key, Where);
    EnsureSettingsFolder(Index, Where);
    FileHelper::WriteIniKey(IpsSection, Key, Stamp, mdlVNT::BannedIpsPath(Index), Where);
}

void DeleteBannedName(Long Index, TextView Key) {
    Platform::DeleteProfileKey(NamesSection, Key, mdlVNT::BannedNamesPath(Index));
}

void DeleteBannedIp(Long Index, TextView Address) {
    Platform::DeleteProfileKey(IpsSection, Address, mdlVNT::BannedIpsPath(Index));
}

BanDetails BannedNameDetails(Long Index, TextView Key, Place Where) {
    const std::wstring Value =
        FileHelper::GetIniKey(NamesSection, Key, mdlVNT::BannedNamesPath(Index), Where);
    const auto Separator = Value.find(ReasonSeparator);
    if (Separator == std::wstring::npos) return {Value, {}};
    return {Value.substr(0, Separator), Value.substr(Separator + ReasonSeparator.size())};
}

std::wstring BannedIpDate(Long Index, TextView Address, Place Where) {
    return FileHelper::GetIniKey(IpsSection, Address, mdlVNT::BannedIpsPath(Index), Where);
}

void EnsureSettingsFolder(Long Index, Place Where) {
    const std::wstring Folder = mdlVNT::SettingsFolder(Index);
    if (!Platform::FolderExists(Folder)) Platform::CreateFolder(Folder, Where);
}
