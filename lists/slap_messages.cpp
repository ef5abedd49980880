#include "lists/slap_messages.h"

#include <algorithm>
#include <set>

#include "game/ini_key.h"
#include "game/mdlVNT.h"
#include "game/player_actions.h"
#include "host/file_helper.h"
#include "host/platform.h"
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
    if (Trim(Message).empty() || !Platform::SurvivesSingleByte(Message)) FailNotStored();
    FileHelper::WriteIniKey(MessagesSection, Key, Message, File);
    if (ReadsBackAs(Message, FileHelper::GetIniKey(MessagesSection, Key, File))) return;
    FileHelper::WriteIniKey(MessagesSection, Key, Before, File);
    FailNotStored();
}

// One change of a file at a time: one that the host starts inside a call of another would take the places
// that the other has read, and a message would be lost.
class Changing {
public:
    explicit Changing(const std::wstring& Changed) : File(Changed) {
        if (!Files.insert(File).second)
            Fail(ErrorNumber::InvalidCall, L"The slap messages are being changed already.");
    }
    ~Changing() { Files.erase(File); }
    Changing(const Changing&) = delete;
    Changing& operator=(const Changing&) = delete;

private:
    const std::wstring& File;
    static inline std::set<std::wstring> Files;
};

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
    return ReadValues(MessagesSection, File);
}

void AddSlap(Long Profile, TextView Message) {
    const std::wstring File = mdlVNT::SlapsPath(Profile);
    const Changing OneAtATime(File);
    EnsureSettingsFolder(Profile); // before the first call that may give the index to another folder
    const std::size_t Count = ReadValues(MessagesSection, File).size();
    WriteSlap(File, FreeKey(MessagesSection, File, Count), Message, std::nullopt);
}

bool EditSlap(Long Profile, TextView Old, TextView New, std::size_t Expected) {
    const std::wstring File = mdlVNT::SlapsPath(Profile);
    const Changing OneAtATime(File);
    const Entries Present = ReadEntries(MessagesSection, File);
    const std::size_t Position = PositionOf(Present, Old, Expected);
    if (Position == Present.size()) return false;
    WriteSlap(File, Present[Position].first, New, Old);
    return true;
}

void DeleteSlap(Long Profile, TextView Message, std::size_t Expected) {
    const std::wstring File = mdlVNT::SlapsPath(Profile);
    const Changing OneAtATime(File);
    const Entries Present = ReadEntries(MessagesSection, File);
    const std::size_t Position = PositionOf(Present, Message, Expected);
    if (Position == Present.size()) return;
    Lines Kept = ValuesOf(Present);
    Kept.erase(Kept.begin() + static_cast<std::ptrdiff_t>(Position));
    RewriteNumbered(MessagesSection, Present, Kept, File);
}

void SendSlap(Long Profile, TextView Name, TextView Message) {
    SendServerMessage(Profile, std::wstring(Name) + L"....." + std::wstring(Message));
}
