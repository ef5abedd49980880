// The files in memory, as the host's file helper, the platform and the tests see them.

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

#include "host/file_helper.h"
#include "host/platform.h"
#include "tests/fakes/faults.h"
#include "tests/fakes/outside.h"

using Outside::Enter;
using Outside::EnterHost;
using Outside::Keep;

namespace {

std::wstring Lower(TextView Text) {
    std::wstring Folded(Text);
    for (wchar_t& C : Folded)
        if (C >= L'A' && C <= L'Z') C = static_cast<wchar_t>(C + 32);
    return Folded;
}

// A file's text, and what a reader of private profiles makes of it; made anew after a change.
struct File {
    std::wstring Text;
    bool Parsed = false;
    std::vector<std::pair<std::wstring, Lines>> Sections;                                  // as written
    std::unordered_map<std::wstring, std::unordered_map<std::wstring, std::wstring>> Keys; // folded
};

std::map<std::wstring, File> Stored;
std::set<std::wstring> Folders;
bool ReadOnly = false;

std::wstring Unquoted(std::wstring Value) {
    Value = Trim(Value);
    if (Value.size() > 1 && (Value.front() == L'"' || Value.front() == L'\'') &&
        Value.front() == Value.back())
        return Value.substr(1, Value.size() - 2);
    return Value;
}

void ParseLine(File& Parsed, const std::wstring& Line) {
    const auto Bracket = Line.rfind(L']');
    if (Line.starts_with(L'[') && Bracket != std::wstring::npos) {
        Parsed.Sections.push_back({Line.substr(1, Bracket - 1), {}});
        return;
    }
    const auto Equals = Line.find(L'=');
    if (Parsed.Sections.empty() || Equals == std::wstring::npos) return;
    auto& [Section, SectionLines] = Parsed.Sections.back();
    SectionLines.push_back(Trim(Line)); // blanks at the ends are lost, as on the real system
    Parsed.Keys[Lower(Section)].emplace(Lower(Trim(TextView(Line).substr(0, Equals))),
                                        Unquoted(Line.substr(Equals + 1)));
}

File* Find(TextView Path) {
    const auto Found = Stored.find(Lower(Path));
    if (Found == Stored.end()) return nullptr;
    File& Parsed = Found->second;
    if (!Parsed.Parsed) {
        Parsed.Sections.clear();
        Parsed.Keys.clear();
        for (const std::wstring& Line : Split(Parsed.Text, CrLf))
            if (!Line.empty()) ParseLine(Parsed, Line);
        Parsed.Parsed = true;
    }
    return &Parsed;
}

std::wstring ParentOf(TextView Path) { return std::wstring(Path.substr(0, Path.find_last_of(L'\\'))); }

bool CanWrite(TextView Path) {
    return !ReadOnly && (Outside::HasFile(Path) || Platform::FolderExists(ParentOf(Path)));
}

// Replaces a section's lines in the text, or appends the section; without Keep it goes.
void WriteSection(File& Written, TextView Section, const Lines& SectionLines, bool Keep) {
    auto& All = Written.Sections;
    const auto Its = std::find_if(All.begin(), All.end(),
                                  [&](const auto& Item) { return Lower(Item.first) == Lower(Section); });
    if (Its == All.end() && Keep)
        All.emplace_back(Section, SectionLines);
    else if (Keep)
        Its->second = SectionLines;
    else if (Its != All.end())
        All.erase(Its);
    Written.Text.clear();
    for (const auto& [Name, Entries] : All) {
        Written.Text.append(L"[").append(Name).append(L"]\r\n");
        for (const std::wstring& Line : Entries) Written.Text.append(Line).append(L"\r\n");
    }
    Written.Parsed = false;
}

Lines SectionOf(const File& From, TextView Section) {
    for (const auto& [Name, Its] : From.Sections)
        if (Lower(Name) == Lower(Section)) return Its;
    return {};
}

Lines SectionLines(TextView Path, TextView Section) {
    const File* const From = Find(Path);
    Lines Listed;
    if (From == nullptr) return Listed;
    for (const std::wstring& Line : SectionOf(*From, Section))
        if (!Line.starts_with(L';')) Listed.push_back(Line);
    return Listed;
}

Lines SectionNames(TextView Path) {
    Lines Names;
    if (const File* const From = Find(Path))
        for (const auto& [Name, Its] : From->Sections) Names.push_back(Name);
    return Names;
}

void WriteIni(TextView Path, TextView Section, MaybeText Key, MaybeText Value) {
    if (!CanWrite(Path)) return;
    Find(Path);
    File& Written = Stored[Lower(Path)];
    if (!Key) {
        WriteSection(Written, Section, {}, false);
        return;
    }
    Lines Its = SectionOf(Written, Section);
    const auto Same = std::find_if(Its.begin(), Its.end(), [&](const std::wstring& Line) {
        return Lower(Trim(TextView(Line).substr(0, Line.find(L'=')))) == Lower(Trim(*Key));
    });
    if (!Value && Same == Its.end()) return;
    if (!Value)
        Its.erase(Same);
    else if (Same == Its.end())
        Its.push_back(std::wstring(*Key) + L"=" + std::wstring(*Value));
    else
        *Same = std::wstring(*Key) + L"=" + std::wstring(*Value);
    WriteSection(Written, Section, Its, true);
}

} // namespace

namespace Outside {

void ResetFiles() {
    Stored.clear();
    Folders.clear();
    ReadOnly = false;
}

void PutFile(TextView Path, std::wstring Content) {
    PutFolder(ParentOf(Path));
    Stored[Lower(Path)] = File{std::move(Content), false, {}, {}};
}

std::wstring FileText(TextView Path) {
    const File* const Found = Find(Path);
    return Found == nullptr ? std::wstring() : Found->Text;
}

bool HasFile(TextView Path) { return Stored.count(Lower(Path)) != 0; }

void PutFolder(TextView Path) {
    for (std::wstring Folder(Path); Folder.size() > 2; Folder = ParentOf(Folder))
        Folders.insert(Lower(Folder));
}

void RemoveAll(TextView Folder) {
    const std::wstring Prefix = Lower(Folder);
    std::erase_if(Stored, [&](const auto& Entry) { return Entry.first.starts_with(Prefix); });
    std::erase_if(Folders, [&](const auto& Entry) { return Entry.starts_with(Prefix); });
}

void SetReadOnly(bool On) { ReadOnly = On; }

std::wstring IniValue(TextView Path, TextView Section, TextView Key) {
    const File* const From = Find(Path);
    if (From == nullptr) return {};
    const auto Its = From->Keys.find(Lower(Section));
    if (Its == From->Keys.end()) return {};
    const auto Found = Its->second.find(Lower(Trim(Key)));
    return Found == Its->second.end() ? std::wstring() : Found->second;
}

void PutIni(TextView Path, TextView Section, TextView Key, TextView Value) {
    PutFolder(ParentOf(Path));
    WriteIni(Path, Section, Key, Value);
}

} // namespace Outside

// --- The platform's files

namespace Platform {

bool FileExists(TextView Path) {
    if (Enter(L"FileExists", false)) return false;
    Keep([P = std::wstring(Path)] { FileExists(P); });
    return Outside::HasFile(Path);
}

bool FolderExists(TextView Path) { return Folders.count(Lower(Path)) != 0; }

bool IsSamePath(TextView A, TextView B) noexcept { return Lower(A) == Lower(B); }

void CreateFolder(TextView Path, Place Where) {
    if (Enter(L"CreateFolder", true, Where)) return;
    if (ReadOnly) Fail(ErrorNumber::PathAccess, {}, Where);
    if (!FolderExists(ParentOf(Path))) Fail(ErrorNumber::PathNotFound, {}, Where);
    Folders.insert(Lower(Path));
    Outside::Record(L"CreateFolder " + std::wstring(Path));
}

void CreateEmptyFile(TextView Path, Place Where) {
    if (!Outside::HasFile(Path)) WriteBytes(Path, {}, Where);
}

void DeleteFileAt(TextView Path, Place Where) {
    if (Enter(L"DeleteFile", true, Where)) return;
    if (ReadOnly) Fail(ErrorNumber::PathAccess, {}, Where);
    if (Stored.erase(Lower(Path)) == 0) Fail(ErrorNumber::FileNotFound, {}, Where);
}

// A byte is one character 0 to 255.
Bytes ReadBytes(TextView Path, Place Where) {
    if (Enter(L"ReadBytes", true, Where)) return {};
    Keep([P = std::wstring(Path)] { ReadBytes(P); });
    if (!Outside::HasFile(Path)) Fail(ErrorNumber::FileNotFound, {}, Where);
    return SingleByteText(Outside::FileText(Path));
}

void WriteBytes(TextView Path, const Bytes& Content, Place Where) {
    if (Enter(L"WriteBytes", true, Where)) return;
    Keep([P = std::wstring(Path), C = Content] { WriteBytes(P, C); });
    if (ReadOnly) Fail(ErrorNumber::PathAccess, {}, Where);
    if (!FolderExists(ParentOf(Path))) Fail(ErrorNumber::PathNotFound, {}, Where);
    std::wstring Text;
    for (const std::byte Item : Content) Text += static_cast<wchar_t>(Item);
    Outside::PutFile(Path, Text);
}

Bytes SingleByteText(TextView Text) {
    Bytes Made;
    for (const wchar_t C : Text) Made.push_back(static_cast<std::byte>(C < 256 ? C : L'?'));
    return Made;
}

// Latin-1, whose 256 characters are all there are.
bool SurvivesSingleByte(TextView Text) {
    return std::all_of(Text.begin(), Text.end(), [](wchar_t C) { return C < 256; });
}

std::wstring GetProfileText(TextView Section, TextView Key, TextView File) {
    if (Enter(L"GetProfileText", false)) return {};
    Keep([S = std::wstring(Section), K = std::wstring(Key), F = std::wstring(File)] {
        GetProfileText(S, K, F);
    });
    return Outside::IniValue(File, Section, Key).substr(0, 254);
}

bool WriteProfileText(TextView Section, TextView Key, TextView Value, TextView File) {
    if (Enter(L"WriteProfileText", false)) return false;
    Outside::Record(L"WriteProfile [" + std::wstring(Section) + L"] " + std::wstring(Key) + L"=" +
                    std::wstring(Value));
    if (CanWrite(File)) WriteIni(File, Section, Key, Value);
    return CanWrite(File);
}

void DeleteProfileKey(TextView Section, TextView Key, TextView File, Place Where) {
    if (Enter(L"DeleteProfileKey", true, Where)) return;
    if (ReadOnly) Fail(ErrorNumber::PathAccess, {}, Where);
    Outside::Record(L"DeleteProfileKey [" + std::wstring(Section) + L"] " + std::wstring(Key));
    WriteIni(File, Section, Key, std::nullopt);
}

} // namespace Platform

// --- The host's file helper

namespace FileHelper {

namespace {

std::wstring Shown(MaybeText Text) { return Text ? std::wstring(*Text) : std::wstring(L"(null)"); }

// The helper's arrays end with one empty element.
Lines WithEnd(Lines Elements) {
    Elements.emplace_back();
    return Elements;
}

} // namespace

void Create(Place) {}
void Release() noexcept {}

std::wstring GetIniKey(TextView Section, TextView Key, TextView File, Place Where) {
    if (EnterHost(L"GetIniKey", true, Where)) return {};
    Keep([S = std::wstring(Section), K = std::wstring(Key), F = std::wstring(File)] { GetIniKey(S, K, F); });
    return Outside::IniValue(File, Section, Key);
}

void WriteIniKey(TextView Section, MaybeText Key, MaybeText Value, TextView File, Place Where) {
    if (EnterHost(L"WriteIniKey", true, Where)) return;
    Outside::Record(L"WriteIniKey [" + std::wstring(Section) + L"] " + Shown(Key) + L"=" + Shown(Value));
    WriteIni(File, Section, Key, Value);
}

Lines GetIniSection(TextView Section, TextView File, Place Where) {
    if (EnterHost(L"GetIniSection", true, Where)) return {};
    Keep([S = std::wstring(Section), F = std::wstring(File)] { GetIniSection(S, F); });
    return WithEnd(SectionLines(File, Section));
}

Lines GetAllIniSections(TextView File, Place Where) {
    if (EnterHost(L"GetAllIniSections", true, Where)) return {};
    return WithEnd(SectionNames(File));
}

void ClearIniSection(TextView Section, TextView File, Place Where) {
    if (EnterHost(L"ClearIniSection", true, Where)) return;
    Outside::Record(L"ClearIniSection [" + std::wstring(Section) + L"]");
    WriteIni(File, Section, std::nullopt, std::nullopt);
}

std::wstring ParseIniKey(TextView Line, Place Where) {
    if (EnterHost(L"ParseIniKey", true, Where)) return {};
    const auto Equals = Line.find(L'=');
    return Equals == TextView::npos ? std::wstring() : std::wstring(Line.substr(Equals + 1));
}

std::pair<std::wstring, std::wstring> ParseIniEntry(TextView Line, Place Where) {
    if (EnterHost(L"ParseIniKey", true, Where)) return {};
    Keep([L = std::wstring(Line)] { ParseIniEntry(L); });
    const auto Equals = Line.find(L'=');
    if (Equals == TextView::npos) return {std::wstring(Line), std::wstring()};
    return {std::wstring(Line.substr(0, Equals)), std::wstring(Line.substr(Equals + 1))};
}

void AppendFile(TextView Path, TextView Text, Place Where) {
    if (EnterHost(L"AppendFile", true, Where)) return;
    if (ReadOnly) Fail(ErrorNumber::PathAccess, {}, Where);
    Outside::PutFile(Path, Outside::FileText(Path) + std::wstring(Text) + L"\r\n");
}

void WriteFile(TextView Path, TextView Text, Place Where) {
    if (EnterHost(L"WriteFile", true, Where)) return;
    Keep([P = std::wstring(Path), T = std::wstring(Text)] { WriteFile(P, T); });
    if (ReadOnly) Fail(ErrorNumber::PathAccess, {}, Where);
    Outside::PutFile(Path, std::wstring(Text) + L"\r\n");
}

Lines ReadFile(TextView Path, Place Where) {
    if (EnterHost(L"ReadFile", true, Where)) return {};
    Keep([P = std::wstring(Path)] { ReadFile(P); });
    if (!Outside::HasFile(Path)) Fail(ErrorNumber::FileNotFound, {}, Where);
    Lines Read = Split(Outside::FileText(Path), L"\n");
    if (Read.back().empty()) Read.pop_back();
    for (std::wstring& Line : Read)
        if (Line.ends_with(L'\r')) Line.pop_back();
    return Read;
}

// Readable on purpose: what is compressed is the host's affair.
std::wstring CompressString(TextView Text, Place Where) {
    if (EnterHost(L"CompressString", true, Where)) return {};
    Keep([T = std::wstring(Text)] { CompressString(T); });
    return L"zip:" + std::wstring(Text);
}

// Not counted: a report of a failure is no step of the scenario that failed.
void LogError(TextView, TextView Text, const Failure& Error, Long, Place) {
    const auto Name = Text.rfind(L"Function/Sub: ");
    Outside::Reports.push_back(std::wstring(Text.substr(Name + 14)) + L": " + ToText(Error.Number) + L" " +
                               Error.Description);
}

bool SendErrorReport(const ErrorReport& Report, Place) {
    Outside::Record(L"SendErrorReport " + Report.Number + L" " + Report.Version);
    return Outside::ReportsArrive;
}

} // namespace FileHelper
