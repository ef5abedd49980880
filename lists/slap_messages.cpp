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

} // namespace

std::optional<Lines> ReadSlaps(Long Index, Place Where) {
    if (!Platform::FileExists(mdlVNT::SlapsPath(Index))) return std::nullopt;
    Lines Messages;
    for (auto& [Key, Message] : ReadSection(Index, Where)) Messages.push_back(std::move(Message));
    return Messages;
}

void AddSlap(Long Index, TextView Message, Place Where) {
    const Entries Present = ReadSection(Index, Where);
    std::size_t Key = Present.size();
    // In a file with gaps, edited by hand, the key may be taken.
    const auto Taken = [&] {
        return std::any_of(Present.begin(), Present.end(),
                           [&](const auto& Slap) { return Slap.first == std::to_wstring(Key); });
    };
    while (Taken()) ++Key;
    EnsureSettingsFolder(Index, Where);
    WriteSlap(Index, std::to_wstring(Key), Message, Where);
}

void EditSlap(Long Index, std::size_t Position, TextView Message, Place Where) {
    const Entries Present = ReadSection(Index, Where);
    if (Position < Present.size()) WriteSlap(Index, Present[Position].first, Message, Where);
}

void RewriteSlaps(Long Index, const Lines& Messages, Place Where) {
    RewriteNumbered(MessagesSection, ReadSection(Index, Where), Messages, mdlVNT::SlapsPath(Index), Where);
}

void SendSlap(Long Index, TextView Name, TextView Message, Place Where) {
    SendServerMessage(Index, std::wstring(Name) + L"....." + std::wstring(Message), 3, Where);
}
