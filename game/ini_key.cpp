#include "game/ini_key.h"

#include <algorithm>

#include "host/platform.h"

namespace {

constexpr TextView OddStarts = L"[; \t";

bool IsQuoted(TextView Text) {
    return Text.size() > 1 && (Text.front() == L'"' || Text.front() == L'\'') && Text.front() == Text.back();
}

} // namespace

bool CanBeKey(TextView Key) {
    return !Key.empty() && OddBeginning(Key) == 0 && CanBeValue(Key) && Key.find(L'=') == TextView::npos &&
           Platform::SurvivesSingleByte(Key);
}

bool CanBeValue(TextView Value) {
    return Value.size() <= LongestText && std::none_of(Value.begin(), Value.end(), IsControl);
}

void RequireOwnKey(TextView Key, Place Where) {
    if (!Platform::SurvivesSingleByte(Key))
        Fail(ErrorNumber::InvalidCall, L"The system's code page lacks letters of " + std::wstring(Key) + L".",
             Where);
}

std::size_t OddBeginning(TextView Text) { return std::min(Text.find_first_not_of(OddStarts), Text.size()); }

bool ReadsBackAs(TextView Written, TextView Read) {
    const std::wstring Kept = Trim(Written);
    return Kept == Read || (IsQuoted(Kept) && TextView(Kept).substr(1, Kept.size() - 2) == Read);
}
