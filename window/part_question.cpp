#include "window/part_question.h"

#include "host/platform.h"
#include "window/player_rows.h"

namespace {

bool IsYes(const std::wstring& Question, TextView Title) {
    return Platform::AskYesNo(Question, Title, Platform::Answer::No);
}

// "J" is in the names of many.
bool IsMeantForAll(const BannedName& Part, TextView Title) {
    const Long Players = PlayersWith(Part.Name);
    return Players < 2 || IsYes(L"\"" + Part.Name + L"\" is part of the names of " + ToText(Players) +
                                    L" players who are here now. Ban everybody whose name contains it?",
                                Title);
}

} // namespace

std::optional<BannedName> AskForEntry(const BannedName& Name, TextView Title, TextView Address) {
    std::optional<BannedName> Part = PartInsteadOf(Name.Name);
    if (!Part) return !Name.IsPart() || IsMeantForAll(Name, Title) ? std::optional(Name) : std::nullopt;
    const std::wstring Question = L"\"" + Name.Name +
                                  L"\" cannot be stored as it is. Ban everybody whose name contains \"" +
                                  Part->Name + L"\" instead?";
    if (Address.empty()) return IsYes(Question, Title) ? Part : std::nullopt;
    switch (Platform::AskYesNoCancel(
        Question + L"\r\n\r\nNo bans only the address " + std::wstring(Address) + L".", Title)) {
    case Platform::Answer::Yes: return Part;
    case Platform::Answer::No: return BannedName();
    case Platform::Answer::Cancel: break;
    }
    return std::nullopt;
}
