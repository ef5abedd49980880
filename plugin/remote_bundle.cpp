#include "plugin/remote_bundle.h"

#include "game/mdlVNT.h"
#include "game/player_table.h"
#include "game/settings.h"
#include "host/file_helper.h"
#include "host/platform.h"
#include "host/work.h"
#include "lists/ban_lists.h"

namespace {

constexpr TextView LengthMark = L"[-]Tessoral[-]";

// Appends the file's bytes through the shared buffer. Consoles know this rule: the buffer takes a file's size
// only when the file is longer than one byte; for a shorter one it keeps size and contents, but for the byte
// read over its first, and the whole buffer is appended again.
void AppendFileBytes(Platform::Bytes& Bundle, Platform::Bytes& Buffer, const std::wstring& Path) {
    Platform::Bytes Content;
    if (Platform::FileExists(Path)) Content = Platform::ReadBytes(Path);
    if (Content.size() > 1)
        Buffer = Content;
    else if (!Buffer.empty() && !Content.empty())
        Buffer.front() = Content.front();
    Bundle.insert(Bundle.end(), Buffer.begin(), Buffer.end());
}

std::wstring SettingText(Long Profile, const Setting& Kind) {
    const std::wstring Text = ReadSetting(Profile, Kind);
    // No separator between name and value: the consoles cut by the length of the name.
    return L"\r\n" + std::wstring(Kind.Name) +
           (Kind.IsValidForConsoles(Text) ? Text : std::wstring(Kind.Default));
}

std::wstring SettingsText(Long Profile) {
    return L"[Settings]" + SettingText(Profile, Settings::BanMethod) +
           SettingText(Profile, Settings::IdlePunt) + SettingText(Profile, Settings::IdleMax);
}

void WriteBundle(const BanFiles& Files, const std::wstring& PlayersFile, const std::wstring& BundleFile) {
    Platform::Bytes Bundle;
    Platform::Bytes Buffer;
    for (const std::wstring& Path : {PlayersFile, Files.Names, Files.Ips, mdlVNT::SlapsPath(Files.Profile)})
        AppendFileBytes(Bundle, Buffer, Path);
    const Platform::Bytes Tail = Platform::SingleByteText(SettingsText(Files.Profile));
    Bundle.insert(Bundle.end(), Tail.begin(), Tail.end());
    Platform::WriteBytes(BundleFile, Bundle);
}

} // namespace

void BuildReply(Long Profile, std::wstring& Reply) {
    const BanFiles Files(Profile);
    const Work OneAtATime(Work::Kind::Reply, Profile, Files.Folder); // two would share the temporary files
    // Send the players that could be read; a failed read is reported already.
    const PlayerTable Players = GetPlayerList(Profile, L"REMOTE");
    if (Players.BySlot.empty()) return;
    EnsureFolder(Files.Folder);
    const std::wstring PlayersFile = Files.Folder + L"\\tmpplayerlist.txt";
    const std::wstring BundleFile = Files.Folder + L"\\tmpplayerlistzip.txt";
    FileHelper::WriteFile(PlayersFile, Join(Players.BySlot, CrLf));
    WriteBundle(Files, PlayersFile, BundleFile);
    const std::wstring Text = Join(FileHelper::ReadFile(BundleFile), CrLf);
    Reply = std::to_wstring(Text.size()) + std::wstring(LengthMark) + FileHelper::CompressString(Text);
    Platform::DeleteFileAt(PlayersFile);
    Platform::DeleteFileAt(BundleFile);
}
