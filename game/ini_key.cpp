#include "game/ini_key.h"

#include "host/platform.h"

namespace {

constexpr TextView OddStarts = L"[; \t";
constexpr TextView OddLetters{L"=\0\r\n", 4};

bool IsQuoted(TextView Text) {
    return Text.size() > 1 && (Text.front() == L'"' || Text.front() == L'\'') && Text.front() == Text.back();
}

} // namespace

bool CanBeKey(TextView Key) {
    return !Key.empty() && OddStarts.find(Key.front()) == TextView::npos &&
           Key.find_first_of(OddLetters) == TextView::npos && Platform::SurvivesSingleByte(Key);
}

bool ReadsBackAs(TextView Written, TextView Read) {
    const std::wstring Kept = Trim(Written);
    return Kept == Read || (IsQuoted(Kept) && TextView(Kept).substr(1, Kept.size() - 2) == Read);
}
