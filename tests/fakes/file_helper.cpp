// The host's file helper over the files in memory.
#include "host/file_helper.h"

#include "tests/fakes/faults.h"
#include "tests/fakes/files.h"
#include "tests/fakes/outside.h"

using Outside::EnterHost;
using Outside::Keep;

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
    return Files::IniValue(File, Section, Key);
}

void WriteIniKey(TextView Section, MaybeText Key, MaybeText Value, TextView File, Place Where) {
    if (EnterHost(L"WriteIniKey", true, Where)) return;
    Outside::Record(L"WriteIniKey [" + std::wstring(Section) + L"] " + Shown(Key) + L"=" + Shown(Value));
    Files::WriteIni(File, Section, Key, Value);
}

Lines GetIniSection(TextView Section, TextView File, Place Where) {
    if (EnterHost(L"GetIniSection", true, Where)) return {};
    Keep([S = std::wstring(Section), F = std::wstring(File)] { GetIniSection(S, F); });
    return WithEnd(Files::IniSection(File, Section));
}

Lines GetAllIniSections(TextView File, Place Where) {
    if (EnterHost(L"GetAllIniSections", true, Where)) return {};
    return WithEnd(Files::IniSectionNames(File));
}

void ClearIniSection(TextView Section, TextView File, Place Where) {
    if (EnterHost(L"ClearIniSection", true, Where)) return;
    Outside::Record(L"ClearIniSection [" + std::wstring(Section) + L"]");
    Files::WriteIni(File, Section, std::nullopt, std::nullopt);
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
    if (Files::IsReadOnly()) Fail(ErrorNumber::PathAccess, {}, Where);
    Outside::PutFile(Path, Outside::FileText(Path) + std::wstring(Text) + L"\r\n");
}

void WriteFile(TextView Path, TextView Text, Place Where) {
    if (EnterHost(L"WriteFile", true, Where)) return;
    Keep([P = std::wstring(Path), T = std::wstring(Text)] { WriteFile(P, T); });
    if (Files::IsReadOnly()) Fail(ErrorNumber::PathAccess, {}, Where);
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
