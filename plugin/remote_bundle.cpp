#include "plugin/remote_bundle.h"

#include "game/mdlVNT.h"
#include "game/player_table.h"
#include "game/settings.h"
#include "host/file_helper.h"
#include "host/platform.h"
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

std::wstring SettingsText(Long Index) {
    std::wstring BanMethod = ReadSetting(Index, Setting::BanMethod);
    std::wstring IdlePunt = ReadSetting(Index, Setting::IdlePunt);
    std::wstring IdleMax = ReadSetting(Index, Setting::IdleMax);
    if (BanMethod.empty()) BanMethod = L"0";
    if (IdlePunt.empty()) IdlePunt = L"0";
    if (!IsNumeric(IdleMax)) IdleMax = L"5";
    // No separator between name and value: the consoles cut by the length of the name.
    return L"[Settings]\r\nBanMethod" + BanMethod + L"\r\nIdlePunt" + IdlePunt + L"\r\nIdleMax" + IdleMax;
}

void WriteBundle(Long Index, const std::wstring& PlayersFile, const std::wstring& BundleFile) {
    Platform::Bytes Bundle;
    Platform::Bytes Buffer;
    for (const std::wstring& Path : {PlayersFile, mdlVNT::BannedNamesPath(Index),
                                     mdlVNT::BannedIpsPath(Index), mdlVNT::SlapsPath(Index)})
        AppendFileBytes(Bundle, Buffer, Path);
    const Platform::Bytes Settings = Platform::SingleByteText(SettingsText(Index));
    Bundle.insert(Bundle.end(), Settings.begin(), Settings.end());
    Platform::WriteBytes(BundleFile, Bundle);
}

} // namespace

void BuildReply(Long Index, std::wstring& Reply) {
    // Players who were read are worth having although another one could not be; a failure is reported
    // already.
    const PlayerArray Players = GetPlayerList(Index, L"REMOTE");
    if (Players.BySlot.empty()) return;
    EnsureSettingsFolder(Index);
    const std::wstring PlayersFile = mdlVNT::SettingsFolder(Index) + L"\\tmpplayerlist.txt";
    const std::wstring BundleFile = mdlVNT::SettingsFolder(Index) + L"\\tmpplayerlistzip.txt";
    FileHelper::WriteFile(PlayersFile, Join(Players.BySlot, CrLf));
    WriteBundle(Index, PlayersFile, BundleFile);
    const std::wstring Text = Join(FileHelper::ReadFile(BundleFile), CrLf);
    Reply = std::to_wstring(Text.size()) + std::wstring(LengthMark) + FileHelper::CompressString(Text);
    Platform::DeleteFileAt(PlayersFile);
    Platform::DeleteFileAt(BundleFile);
}
