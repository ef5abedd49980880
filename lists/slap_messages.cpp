#include "lists/slap_messages.h"

#include <algorithm>

#include "game/mdlVNT.h"
#include "game/player_actions.h"
#include "host/file_helper.h"
#include "host/platform.h"
#include "lists/ban_lists.h"
#include "lists/first_failure.h"

namespace {

constexpr TextView MessagesSection = L"Messages";

// Keys and messages in file order.
using Slaps = std::vector<std::pair<std::wstring, std::wstring>>;

Slaps ReadSection(Long Index, Place Where) {
    Slaps Read;
    for (const std::wstring& Line :
         FileHelper::GetIniSection(MessagesSection, mdlVNT::SlapsPath(Index), Where))
        if (!Line.empty()) Read.push_back(FileHelper::ParseIniEntry(Line, Where));
    return Read;
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
    const Slaps Present = ReadSection(Index, Where);
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
    const Slaps Present = ReadSection(Index, Where);
    if (Position < Present.size()) WriteSlap(Index, Present[Position].first, Message, Where);
}

void RewriteSlaps(Long Index, const Lines& Messages, Place Where) {
    FirstFailure Failed;
    Failed.Try([&] {
        FileHelper::WriteIniKey(MessagesSection, std::nullopt, std::nullopt, mdlVNT::SlapsPath(Index), Where);
    });
    for (std::size_t Position = 0; Position < Messages.size(); ++Position)
        Failed.Try([&] { WriteSlap(Index, std::to_wstring(Position), Messages[Position], Where); });
    Failed.Throw();
}

void SendSlap(Long Index, TextView Name, TextView Message, Place Where) {
    SendServerMessage(Index, std::wstring(Name) + L"....." + std::wstring(Message), 3, Where);
}
