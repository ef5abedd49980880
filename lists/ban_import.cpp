#include "lists/ban_import.h"

#include "game/mdlVNT.h"
#include "host/file_helper.h"
#include "lists/ban_lists.h"
#include "lists/ban_references.h"

namespace {

// Columns from 0 and lengths; the columns between the fields are ignored.
struct Field {
    std::size_t Start;
    std::size_t Length;
};
constexpr Field AddressField{0, 17};
constexpr Field NameField{19, 20};
constexpr Field ReasonField{40, std::wstring::npos};

struct ForeignBan {
    std::wstring Address;
    std::wstring Name;
    std::wstring Reason;
    TextView Tag;
};

std::wstring Cut(const std::wstring& Line, Field Where) {
    return Where.Start < Line.size() ? Trim(TextView(Line).substr(Where.Start, Where.Length))
                                     : std::wstring();
}

// The other manager ends names and reasons with one character of its own. A field without it is no ban
// file's.
std::wstring WithoutLast(std::wstring Text) {
    if (Text.empty()) Fail(ErrorNumber::InvalidCall);
    Text.pop_back();
    return Text;
}

ForeignBan ParseLine(const std::wstring& Line) {
    ForeignBan Ban{};
    Ban.Address = Cut(Line, AddressField);
    Ban.Name = WithoutLast(Cut(Line, NameField));
    Ban.Reason = WithoutLast(Cut(Line, ReasonField));
    if (Ban.Reason.empty()) Ban.Reason = L"None";
    const bool Part = !Ban.Name.empty() && (Ban.Name.front() == L'*' || Ban.Name.back() == L'*');
    Ban.Tag = Part ? PartOfName : WholeName;
    return Ban;
}

class Import {
public:
    Import(Long Profile, std::vector<ImportedEntry>& AddedEntries)
        : Index(Profile), Added(AddedEntries), Stamp(TimeStamp()),
          NamesFile(mdlVNT::BannedNamesPath(Profile)), IpsFile(mdlVNT::BannedIpsPath(Profile)) {}

    // Name and address are judged apart: who bears a name that no list can hold is banned by his address.
    void AddLine(const std::wstring& Line) {
        const ForeignBan Ban = ParseLine(Line);
        const bool HasName = IsPresent(Ban.Name);
        const bool HasAddress = IsPresent(Ban.Address);
        if (Ban.Name.empty() && Ban.Address.empty()) ++Counts.Invalid;
        if (HasName) AddName(Ban);
        if (HasAddress) AddAddress(Ban.Address);
        if (!Ban.Name.empty() && HasAddress)
            AddBanReference(mdlVNT::SettingsFolder(Index), mdlVNT::BannedReferencePath(Index), Ban.Name,
                            Ban.Address);
    }

    ImportCounts Counts;

private:
    // Whether there is something to store; what cannot be is counted as invalid.
    bool IsPresent(const std::wstring& Field) {
        const bool CanBeStored = CanBeKey(Field);
        if (!CanBeStored) ++Counts.Invalid;
        return CanBeStored && !Field.empty();
    }

    void AddName(const ForeignBan& Ban) {
        ++Counts.Found;
        // Kept on purpose: the bare tag digit never finds a stored entry, so that an import refreshes the
        // stamps.
        const std::wstring Digit(Ban.Tag.substr(1, 1));
        if (!FileHelper::GetIniKey(NamesSection, Ban.Name + Digit, NamesFile).empty()) {
            ++Counts.Skipped;
            return;
        }
        const std::wstring Key = Ban.Name + std::wstring(Ban.Tag);
        FileHelper::WriteIniKey(NamesSection, Key, Stamp + std::wstring(ReasonSeparator) + Ban.Reason,
                                NamesFile);
        ++Counts.Added;
        Added.push_back({true, ItemOfKey(Key)});
    }

    void AddAddress(const std::wstring& Address) {
        ++Counts.Found;
        if (!FileHelper::GetIniKey(IpsSection, Address, IpsFile).empty()) {
            ++Counts.Skipped;
            return;
        }
        StoreBannedIp(Index, Address, Stamp);
        ++Counts.Added;
        Added.push_back({false, Address});
        mdlVNT::IpListChanged(Index) = true;
    }

    Long Index;
    std::vector<ImportedEntry>& Added;
    std::wstring Stamp, NamesFile, IpsFile;
};

} // namespace

ImportCounts ImportBanFile(Long Index, TextView Path, std::vector<ImportedEntry>& Added, Place Where) {
    Import Running(Index, Added);
    for (const std::wstring& Line : FileHelper::ReadFile(Path, Where))
        if (!Line.empty()) Running.AddLine(WithoutLineBreaks(Line));
    return Running.Counts;
}

std::wstring ImportSummary(const ImportCounts& Counts) {
    return L"Ban File Parsed Successfully\r\n\r\nTotal Items Found: " + ToText(Counts.Found) +
           L"\r\nTotal Items Added: " + ToText(Counts.Added) + L"\r\nTotal Items Skipped: " +
           ToText(Counts.Skipped) + L"\r\nTotal Invalid Items: " + ToText(Counts.Invalid);
}
