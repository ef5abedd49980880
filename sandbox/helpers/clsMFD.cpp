// qrvMFM.clsMFD: INI files, text files, compression and the host's error reports.
#include "sandbox/helpers/automation.h"
#include "sandbox/helpers/ini_files.h"
#include "sandbox/helpers/text_files.h"

namespace {

using Automation::Arguments;

std::string Trimmed(std::string_view Text) {
    constexpr std::string_view Blanks = " \t";
    const auto First = Text.find_first_not_of(Blanks);
    if (First == std::string_view::npos) return {};
    return std::string(Text.substr(First, Text.find_last_not_of(Blanks) - First + 1));
}

void GetIniKey(const Arguments& Given, VARIANT& Result) {
    Automation::SetText(Result, IniFiles::ReadKey(Given.Text(0), Given.Text(1), Given.Text(2)));
}

void WriteIniKey(const Arguments& Given, VARIANT&) {
    IniFiles::WriteKey(Given.Text(0), Given.MaybeText(1), Given.MaybeText(2), Given.Text(3));
}

void GetIniSection(const Arguments& Given, VARIANT& Result) {
    Automation::SetTexts(Result, IniFiles::ReadSection(Given.Text(0), Given.Text(1)));
}

void GetAllIniSections(const Arguments& Given, VARIANT& Result) {
    Automation::SetTexts(Result, IniFiles::ReadSectionNames(Given.Text(0)));
}

void ClearIniSection(const Arguments& Given, VARIANT&) {
    IniFiles::WriteKey(Given.Text(0), {}, {}, Given.Text(1));
}

void ParseIniKey(const Arguments& Given, VARIANT& Result) {
    const std::string Line = Given.Text(0);
    const auto Equals = Line.find('=');
    const std::string Value = Equals == std::string::npos ? std::string() : Trimmed(Line.substr(Equals + 1));
    if (Given.Count() > 1 && Given.Boolean(1)) {
        Automation::SetTexts(Result, {Trimmed(Line.substr(0, Equals)), Value});
    } else {
        Automation::SetText(Result, Value);
    }
}

void AppendFile(const Arguments& Given, VARIANT&) { TextFiles::Append(Given.Wide(0), Given.Text(1)); }
void WriteFile(const Arguments& Given, VARIANT&) { TextFiles::Replace(Given.Wide(0), Given.Text(1)); }
void ReadFile(const Arguments& Given, VARIANT& Result) {
    Automation::SetTexts(Result, TextFiles::ReadLines(Given.Wide(0)));
}

void CompressString(const Arguments& Given, VARIANT& Result) {
    Automation::SetText(Result, TextFiles::Compress(Given.Text(0)), Automation::ByteForByte);
}

void DecompressString(const Arguments& Given, VARIANT& Result) {
    const std::int32_t Length = Given.Long(1);
    if (Length < 0) throw Automation::Error{Automation::InvalidCall, "Bad length"};
    Automation::SetText(Result, TextFiles::Decompress(Given.Bytes(0), static_cast<std::size_t>(Length)));
}

void LogError(const Arguments& Given, VARIANT&) {
    TextFiles::Log(L"errors.log",
                   {Given.Text(0), Given.Property(2, L"Number"), Given.Property(2, L"Description"),
                    Given.Property(2, L"Source"), std::to_string(Given.Long(3)), Given.Text(1)});
}

void SendErrorReport(const Arguments& Given, VARIANT& Result) {
    const auto Values = Given.Texts(0);
    if (Values.size() != 6) throw Automation::Error{Automation::TypeMismatch, "Six values are wanted"};
    TextFiles::Log(L"reports.log", Values);
    Automation::SetBoolean(Result, true);
}

constexpr Automation::Member Members[] = {
    {L"GetIniKey", 3, 3, GetIniKey},
    {L"WriteIniKey", 4, 4, WriteIniKey},
    {L"GetIniSection", 2, 2, GetIniSection},
    {L"GetAllIniSections", 1, 1, GetAllIniSections},
    {L"ClearIniSection", 2, 2, ClearIniSection},
    {L"ParseIniKey", 1, 2, ParseIniKey},
    {L"AppendFile", 2, 2, AppendFile},
    {L"WriteFile", 2, 2, WriteFile},
    {L"ReadFile", 1, 1, ReadFile},
    {L"CompressString", 1, 1, CompressString},
    {L"DecompressString", 2, 2, DecompressString},
    {L"LogError", 4, 4, LogError},
    {L"SendErrorReport", 1, 1, SendErrorReport},
};

} // namespace

const Automation::Class Automation::TheClass{
    L"qrvMFM.clsMFD",
    {0x4700ad30, 0x74ee, 0x424b, {0xbd, 0x9e, 0x9f, 0xbe, 0xfe, 0xbd, 0xf0, 0xd5}},
    Members};
