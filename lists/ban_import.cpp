#include "lists/ban_import.h"

#include "host/file_helper.h"
#include "lists/ban_lists.h"
#include "lists/ban_references.h"

namespace {

// Columns from 0 and lengths; the columns between the fields are ignored.
struct Columns {
    std::size_t Start;
    std::size_t Length;
};
constexpr Columns AddressColumns{0, 17};
constexpr Columns NameColumns{19, 20};
constexpr Columns ReasonColumns{40, std::wstring::npos};

struct ForeignBan {
    std::wstring Address;
    BannedName Name;
    std::wstring Reason;
};

std::wstring Cut(const std::wstring& Line, Columns Field) {
    return Field.Start < Line.size() ? Trim(TextView(Line).substr(Field.Start, Field.Length))
                                     : std::wstring();
}

// The other manager appends one terminator character to names and reasons. A field without it is not from a
// ban file.
std::wstring WithoutLast(std::wstring Text) {
    if (Text.empty()) Fail(ErrorNumber::InvalidCall);
    Text.pop_back();
    return Text;
}

ForeignBan ParseLine(const std::wstring& Line) {
    ForeignBan Ban{};
    Ban.Address = Cut(Line, AddressColumns);
    const std::wstring Name = WithoutLast(Cut(Line, NameColumns));
    Ban.Reason = WithoutLast(Cut(Line, ReasonColumns));
    if (Ban.Reason.empty()) Ban.Reason = L"None";
    const bool IsPart = !Name.empty() && (Name.front() == L'*' || Name.back() == L'*');
    Ban.Name = IsPart ? BannedName::Part(Name) : BannedName::Whole(Name);
    return Ban;
}

struct Import {
    BanFiles Files;
    std::wstring Stamp;
    ImportCounts Counts;
    std::vector<ImportedEntry>& Added;
};

enum class Outcome : unsigned char { Added, Skipped, Invalid };

// Returns whether the field is in the file now.
bool Count(ImportCounts& Counts, Outcome Field) {
    if (Field == Outcome::Invalid) return ++Counts.Invalid, false;
    ++Counts.Found;
    ++(Field == Outcome::Added ? Counts.Added : Counts.Skipped);
    return true;
}

Outcome AddName(Import& Current, const ForeignBan& Ban) {
    // Kept on purpose: the bare tag digit never finds a stored entry, so that an import refreshes the stamps.
    const std::wstring Digit = Ban.Name.Tag.substr(1, 1);
    if (HasBareName(Current.Files, Ban.Name.Name + Digit)) return Outcome::Skipped;
    if (!StoreBannedName(Current.Files, Ban.Name, Current.Stamp, Ban.Reason)) return Outcome::Invalid;
    Current.Added.push_back({true, Ban.Name.Item()});
    return Outcome::Added;
}

Outcome AddAddress(Import& Current, const std::wstring& Address) {
    if (HasBannedIp(Current.Files, Address)) return Outcome::Skipped;
    const IpListChange Change(Current.Files.Profile);
    if (!StoreBannedIp(Current.Files, Address, Current.Stamp)) return Outcome::Invalid;
    Current.Added.push_back({false, Address});
    return Outcome::Added;
}

// Name and address are judged apart: if the name cannot be stored, the address is still banned.
void AddLine(Import& Current, const std::wstring& Line) {
    const ForeignBan Ban = ParseLine(Line);
    const bool HasName = !Ban.Name.Name.empty();
    if (!HasName && Ban.Address.empty()) ++Current.Counts.Invalid;
    const bool NameIsThere = HasName && Count(Current.Counts, AddName(Current, Ban));
    const bool IpIsThere = !Ban.Address.empty() && Count(Current.Counts, AddAddress(Current, Ban.Address));
    if (NameIsThere && IpIsThere) AddBanReference(Current.Files, Ban.Name.Name, Ban.Address);
}

} // namespace

ImportCounts ImportBanFile(const BanFiles& Files, TextView Path, std::vector<ImportedEntry>& Added,
                           const Progress& GoOn) {
    Import Current{Files, TimeStamp(), {}, Added};
    const Lines File = FileHelper::ReadFile(Path);
    std::size_t Done = 0;
    for (const std::wstring& Line : File) {
        Current.Counts.IsWhole = Continues(GoOn, Done++, File.size());
        if (!Current.Counts.IsWhole) break;
        if (!Line.empty()) AddLine(Current, WithoutControls(Line));
    }
    return Current.Counts;
}

std::wstring ImportSummary(const ImportCounts& Counts) {
    return std::wstring(Counts.IsWhole ? L"Ban File Parsed Successfully" : L"Ban File Parsed in Part") +
           L"\r\n\r\nTotal Items Found: " + ToText(Counts.Found) + L"\r\nTotal Items Added: " +
           ToText(Counts.Added) + L"\r\nTotal Items Skipped: " + ToText(Counts.Skipped) +
           L"\r\nTotal Invalid Items: " + ToText(Counts.Invalid);
}
