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
                   const Progress& Shown) {
    for (std::size_t Position = 0; Position < Values.size(); ++Position) {
        Continues(Shown, Position, Values.size());
        if (Position >= Present.size() || Present[Position].second != Values[Position])
            FileHelper::WriteIniKey(Section, KeyAt(Position), Values[Position], File);
    }
    for (std::size_t Position = Present.size(); Position-- > Values.size();)
        FileHelper::WriteIniKey(Section, KeyAt(Position), std::nullopt, File);
}

void WriteAnew(TextView Section, const Lines& Values, TextView File, const Progress& Shown) {
    FirstFailure Failed;
    Failed.Try([&] { FileHelper::ClearIniSection(Section, File); });
    for (std::size_t Position = 0; Position < Values.size(); ++Position) {
        Continues(Shown, Position, Values.size());
        Failed.Try([&] { FileHelper::WriteIniKey(Section, KeyAt(Position), Values[Position], File); });
    }
    Failed.Throw();
}

} // namespace

Entries ReadEntries(TextView Section, TextView File) {
    Entries Present;
    for (const std::wstring& Line : FileHelper::GetIniSection(Section, File)) {
        if (Trim(Line).empty()) continue;
        Present.push_back(FileHelper::ParseIniEntry(Line));
        const auto& [Key, Value] = Present.back();
        if (Key.empty() && Value.empty() && Trim(Line) != L"=")
            Fail(ErrorNumber::TypeMismatch, ErrorDescription(ErrorNumber::TypeMismatch) + L": " + Line);
    }
    return Present;
}

Lines ValuesOf(const Entries& Present) {
    Lines Values;
    for (const auto& [Key, Value] : Present) Values.push_back(Value);
    return Values;
}

std::wstring FreeKey(const Entries& Present) {
    std::size_t Position = Present.size();
    const auto IsTaken = [&](const auto& Entry) { return Entry.first == KeyAt(Position); };
    while (std::ranges::any_of(Present, IsTaken)) ++Position;
    return KeyAt(Position);
}

void RewriteNumbered(TextView Section, const Entries& Present, const Lines& Values, TextView File,
                     const Progress& Shown) {
    if (!Values.empty() && IsNumbered(Present))
        ChangeInPlace(Section, Present, Values, File, Shown);
    else
        WriteAnew(Section, Values, File, Shown);
}
