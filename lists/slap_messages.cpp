#include "lists/slap_messages.h"

#include <algorithm>

#include "game/mdlVNT.h"
#include "game/player_actions.h"
#include "host/file_helper.h"
#include "host/platform.h"
#include "lists/ban_lists.h"
#include "lists/numbered_section.h"

namespace {

constexpr TextView MessagesSection = L"Messages";

Entries ReadSection(Long Index, Place Where) {
    return ReadEntries(MessagesSection, mdlVNT::SlapsPath(Index), Where);
}

void WriteSlap(Long Index, TextView Key, TextView Message, Place Where) {
    FileHelper::WriteIniKey(MessagesSection, Key, Message, mdlVNT::SlapsPath(Index), Where);
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

std::optional<Lines> ReadSlaps(Long Index, Place Where) {
    if (!Platform::FileExists(mdlVNT::SlapsPath(Index))) return std::nullopt;
    return ValuesOf(ReadSection(Index, Where));
}

void AddSlap(Long Index, TextView Message, Place Where) {
    const Entries Present = ReadSection(Index, Where);
    EnsureSettingsFolder(Index, Where);
    WriteSlap(Index, FreeKey(Present), Message, Where);
}

bool EditSlap(Long Index, TextView Old, TextView New, std::size_t Expected, Place Where) {
    const Entries Present = ReadSection(Index, Where);
    const std::size_t Position = PositionOf(Present, Old, Expected);
    if (Position == Present.size()) return false;
    WriteSlap(Index, Present[Position].first, New, Where);
    return true;
}

void DeleteSlap(Long Index, TextView Message, std::size_t Expected, Place Where) {
    const Entries Present = ReadSection(Index, Where);
    const std::size_t Position = PositionOf(Present, Message, Expected);
    if (Position == Present.size()) return;
    Lines Kept = ValuesOf(Present);
    Kept.erase(Kept.begin() + static_cast<std::ptrdiff_t>(Position));
    RewriteNumbered(MessagesSection, Present, Kept, mdlVNT::SlapsPath(Index), Where);
}

void SendSlap(Long Index, TextView Name, TextView Message, Place Where) {
    SendServerMessage(Index, std::wstring(Name) + L"....." + std::wstring(Message), 3, Where);
}
