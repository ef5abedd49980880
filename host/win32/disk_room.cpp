#include "host/win32/disk_room.h"

#include <windows.h>

#include "host/win32/automation.h"

namespace {

// In bytes: a file's length, and what the disk holds ready for it beyond its end.
struct Extent {
    std::uint64_t Size = 0, Slack = 0;
};

Extent ExtentOf(const std::wstring& Path) {
    const HANDLE File = CreateFileW(Path.c_str(), FILE_READ_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (File == INVALID_HANDLE_VALUE) return {};
    FILE_STANDARD_INFO Info{};
    GetFileInformationByHandleEx(File, FileStandardInfo, &Info, sizeof Info);
    CloseHandle(File);
    const auto Size = static_cast<std::uint64_t>(Info.EndOfFile.QuadPart);
    const auto Held = static_cast<std::uint64_t>(Info.AllocationSize.QuadPart);
    return {Size, Held > Size ? Held - Size : 0};
}

void RequireRoom(TextView Path, std::uint64_t Growth, bool WithCopy, Place Where) {
    const std::wstring File(Path);
    const std::wstring Folder = File.substr(0, File.find_last_of(L'\\'));
    ULARGE_INTEGER Free{};
    // Where nobody says how much is free, the write itself has to tell.
    if (!GetDiskFreeSpaceExW(Folder.c_str(), &Free, nullptr, nullptr)) return;
    const Extent Present = ExtentOf(File);
    if (Present.Slack >= Growth || Free.QuadPart >= Growth + (WithCopy ? Present.Size : 0)) return;
    Fail(ErrorNumber::PathAccess,
         ErrorDescription(ErrorNumber::PathAccess) + L": " + File + L" (" +
             SystemText(HRESULT_FROM_WIN32(ERROR_DISK_FULL)) + L")",
         Where);
}

} // namespace

void RequireRoomForEntry(TextView File, TextView Section, TextView Key, TextView Value, Place Where) {
    const std::size_t Marks = TextView(L"\r\n[]\r\n=\r\n").size();
    RequireRoom(File, Section.size() + Key.size() + Value.size() + Marks, true, Where);
}

void RequireRoomToAppend(TextView File, std::size_t Bytes, Place Where) {
    RequireRoom(File, Bytes, false, Where);
}
