#include "lists/slap_messages.h"

#include <algorithm>

#include "game/ini_key.h"
#include "game/mdlVNT.h"
#include "game/player_actions.h"
#include "host/file_helper.h"
#include "host/platform.h"
#include "host/work.h"
#include "lists/ban_lists.h"
#include "lists/numbered_section.h"

namespace {

constexpr TextView MessagesSection = L"Messages";

[[noreturn]] void FailNotStored() {
    Fail(ErrorNumber::InvalidCall, L"The message could not be stored in the list.");
}

// Writes a message and looks whether it is there; when it is not, puts back what was there before (absent:
// nothing) and fails.
void WriteSlap(const std::wstring& File, TextView Key, TextView Message, MaybeText Before) {
    if (Trim(Message).empty() || !CanBeValue(Message) || !Platform::SurvivesSingleByte(Message))
        FailNotStored();
    FileHelper::WriteIniKey(MessagesSection, Key, Message, File);
    if (ReadsBackAs(Message, FileHelper::GetIniKey(MessagesSection, Key, File))) return;
    FileHelper::WriteIniKey(MessagesSection, Key, Before, File);
    FailNotStored();
}

// Where a message stands: where it is expected, else where it stands first; the number of entries when it
// does not.
std::size_t PositionOf(const Entries& Present, TextView Message, std::size_t Expected) {
    if (Expected < Present.size() && Present[Expected].second == Message) return Expected;
    const auto Found = std::find_if(Present.begin(), Present.end(),
                                    [&](const auto& Slap) { return Slap.second == Message; });
    return static_cast<std::size_t>(Found - Present.begin());
}

} // namespace

std::optional<Lines> ReadSlaps(Long Profile) {
    const std::wstring File = mdlVNT::SlapsPath(Profile);
    if (!Platform::FileExists(File)) return std::nullopt;
    return ValuesOf(ReadEntries(MessagesSection, File));
}

void AddSlap(Long Profile, TextView Message) {
    const std::wstring File = mdlVNT::SlapsPath(Profile);
    const Work Change(Work::Kind::FileChange, Profile, File);
    EnsureFolder(mdlVNT::SettingsFolder(Profile));
    WriteSlap(File, FreeKey(ReadEntries(MessagesSection, File)), Message, std::nullopt);
}

bool EditSlap(Long Profile, TextView Old, TextView New, std::size_t Expected) {
    const std::wstring File = mdlVNT::SlapsPath(Profile);
    const Work Change(Work::Kind::FileChange, Profile, File);
    const Entries Present = ReadEntries(MessagesSection, File);
    const std::size_t Position = PositionOf(Present, Old, Expected);
    if (Position == Present.size()) return false;
    WriteSlap(File, Present[Position].first, New, Old);
    return true;
}

void DeleteSlap(Long Profile, TextView Message, std::size_t Expected, const Progress& Shown) {
    const std::wstring File = mdlVNT::SlapsPath(Profile);
    const Work Change(Work::Kind::FileChange, Profile, File);
    const Entries Present = ReadEntries(MessagesSection, File);
    const std::size_t Position = PositionOf(Present, Message, Expected);
    if (Position == Present.size()) return;
    Lines Kept = ValuesOf(Present);
    Kept.erase(Kept.begin() + static_cast<std::ptrdiff_t>(Position));
    RewriteNumbered(MessagesSection, Present, Kept, File, Shown);
}

void SendSlap(Long Profile, TextView Name, TextView Message) {
    SendServerMessage(Profile, std::wstring(Name) + L"....." + std::wstring(Message));
}
