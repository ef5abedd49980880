// The clock, the boxes and the dialogs of the fakes; the files are in files.cpp.
#include "host/platform.h"

#include "tests/fakes/faults.h"
#include "tests/fakes/outside.h"

using Outside::Enter;

namespace Platform {

namespace {

void BoxOpens(std::wstring What) {
    Outside::Record(std::move(What));
    if (Outside::WhileBoxIsOpen) Outside::WhileBoxIsOpen();
}

template <class T> std::optional<T> TakeFirst(std::vector<T>& Answers) {
    if (Answers.empty()) return std::nullopt;
    const T First = Answers.front();
    Answers.erase(Answers.begin());
    return First;
}

} // namespace

std::wstring PluginFolder(Place) { return std::wstring(Outside::Base) + L"\\Plugins\\dlls\\Vantor"; }

Moment Now() { return Outside::Clock; }
std::int64_t Milliseconds() { return Outside::Elapsed; }

void ShowBox(BoxIcon, TextView Text, TextView Title) {
    BoxOpens(L"Box " + std::wstring(Title) + L" " + std::wstring(Text));
}

bool AskYesNo(TextView Text, TextView Title, Answer Default) {
    BoxOpens((Default == Answer::Yes ? L"Ask " : L"AskNo ") + std::wstring(Title) + L" " +
             std::wstring(Text));
    return TakeFirst(Outside::YesNoAnswers).value_or(false);
}

std::wstring AskText(TextView Prompt, TextView Title) {
    BoxOpens(L"AskText " + std::wstring(Title) + L" " + std::wstring(Prompt));
    return TakeFirst(Outside::TextAnswers).value_or(std::wstring());
}

std::optional<std::wstring> AskOpenFile(TextView Title, TextView Filter, Place Where) {
    if (Enter(L"AskOpenFile", true, Where)) return std::nullopt;
    BoxOpens(L"AskOpenFile " + std::wstring(Title) + L" " + std::wstring(Filter));
    return Outside::OpenFileAnswer;
}

void PostErrorBox(TextView Text, TextView, bool) noexcept {
    try {
        Outside::Record(L"ErrorBox " + std::wstring(Text));
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
}

} // namespace Platform
