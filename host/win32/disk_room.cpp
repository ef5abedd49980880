// How much room the disk has for a file that grows.
#include "host/win32/disk_room.h"

#include <windows.h>

#include "host/win32/single_byte.h"
#include "host/win32/system_error.h"

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

bool HasRoom(TextView Path, std::uint64_t Growth, bool WithCopy) {
    const std::wstring File(Path);
    const std::wstring Folder = File.substr(0, File.find_last_of(L'\\'));
    ULARGE_INTEGER Free{};
    // If the free space is unknown, let the write succeed or fail.
    if (!GetDiskFreeSpaceExW(Folder.c_str(), &Free, nullptr, nullptr)) return true;
    const Extent Present = ExtentOf(File);
    return Present.Slack >= Growth || Free.QuadPart >= Growth + (WithCopy ? Present.Size : 0);
}

[[noreturn]] void FailDiskFull(TextView File, Place Where) {
    FailWithFileError(ERROR_DISK_FULL, File, Where);
}

// A character may take up to four bytes in the file.
std::uint64_t BytesOf(TextView Text, Place Where = Place::current()) {
    return SingleByte(Text, Where).size();
}

} // namespace

bool HasRoomForEntry(TextView File, TextView Section, TextView Key, TextView Value) {
    const std::size_t Marks = TextView(L"\r\n[]\r\n=\r\n").size();
    return HasRoom(File, BytesOf(Section) + BytesOf(Key) + BytesOf(Value) + Marks, true);
}

void RequireRoomForEntry(TextView File, TextView Section, TextView Key, TextView Value, Place Where) {
    if (!HasRoomForEntry(File, Section, Key, Value)) FailDiskFull(File, Where);
}

void RequireRoomForLine(TextView File, TextView Text, Place Where) {
    if (!HasRoom(File, BytesOf(Text, Where) + CrLf.size(), false)) FailDiskFull(File, Where);
}
