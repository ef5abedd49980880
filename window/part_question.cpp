// The question about a name that no file can hold as a whole.
#include "window/part_question.h"

#include "host/platform.h"
#include "lists/banned_name.h"

std::wstring AskForPartOf(TextView Name, TextView Title) {
    const std::optional<BannedName> Part = PartInsteadOf(Name);
    if (!Part) return {};
    const std::wstring Question =
        L"\"" + std::wstring(Name) +
        L"\" cannot be stored as a whole name. Ban everybody whose name contains \"" + Part->Name +
        L"\" instead?";
    return Platform::AskYesNo(Question, Title, Platform::Answer::No) ? Part->Name : std::wstring();
}
