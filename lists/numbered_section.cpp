#include "lists/numbered_section.h"

#include <algorithm>

#include "host/file_helper.h"
#include "lists/first_failure.h"

namespace {

std::wstring KeyAt(std::size_t Position) { return std::to_wstring(Position); }

// Not when empty: then either nothing is there that could be lost, or the answer was wrong.
bool IsNumbered(const Entries& Present) {
    for (std::size_t Position = 0; Position < Present.size(); ++Position)
        if (Present[Position].first != KeyAt(Position)) return false;
    return !Present.empty();
}

void ChangeInPlace(TextView Section, const Entries& Present, const Lines& Values, TextView File,
                   Place Where) {
    for (std::size_t Position = 0; Position < Values.size(); ++Position)
        if (Position >= Present.size() || Present[Position].second != Values[Position])
            FileHelper::WriteIniKey(Section, KeyAt(Position), Values[Position], File, Where);
    for (std::size_t Position = Present.size(); Position-- > Values.size();)
        FileHelper::WriteIniKey(Section, KeyAt(Position), std::nullopt, File, Where);
}

void WriteAnew(TextView Section, const Lines& Values, TextView File, Place Where) {
    FirstFailure Failed;
    Failed.Try([&] { FileHelper::WriteIniKey(Section, std::nullopt, std::nullopt, File, Where); });
    for (std::size_t Position = 0; Position < Values.size(); ++Position)
        Failed.Try([&] { FileHelper::WriteIniKey(Section, KeyAt(Position), Values[Position], File, Where); });
    Failed.Throw();
}

} // namespace

Entries ReadEntries(TextView Section, TextView File, Place Where) {
    Entries Read;
    for (const std::wstring& Line : FileHelper::GetIniSection(Section, File, Where)) {
        if (Trim(Line).empty()) continue;
        Read.push_back(FileHelper::ParseIniEntry(Line, Where));
        // An empty answer to a line with text would be written back in its place.
        const auto& [Key, Value] = Read.back();
        if (Key.empty() && Value.empty() && Trim(Line) != L"=") Fail(ErrorNumber::TypeMismatch, {}, Where);
    }
    return Read;
}

Lines ValuesOf(const Entries& Present) {
    Lines Values;
    for (const auto& [Key, Value] : Present) Values.push_back(Value);
    return Values;
}

std::wstring FreeKey(const Entries& Present) {
    std::size_t Number = Present.size();
    const auto IsTaken = [&] {
        return std::any_of(Present.begin(), Present.end(),
                           [&](const auto& Entry) { return Entry.first == KeyAt(Number); });
    };
    while (IsTaken()) ++Number;
    return KeyAt(Number);
}

void RewriteNumbered(TextView Section, const Entries& Present, const Lines& Values, TextView File,
                     Place Where) {
    if (!Values.empty() && IsNumbered(Present))
        ChangeInPlace(Section, Present, Values, File, Where);
    else
        WriteAnew(Section, Values, File, Where);
}
