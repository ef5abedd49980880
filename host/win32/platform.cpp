// Files, folders and the clock.
#include "host/platform.h"

#include <windows.h>

#include "host/win32/held_file.h"
#include "host/win32/module.h"
#include "host/win32/system_error.h"

namespace Platform {

namespace {

class FileHandle {
public:
    explicit FileHandle(HANDLE Opened) : Value(Opened) {}
    ~FileHandle() {
        if (IsOpen()) CloseHandle(Value);
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    bool IsOpen() const { return Value != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return Value; }

private:
    HANDLE Value;
};

[[noreturn]] void FailWithLastError(TextView Path, Place Where) {
    FailWithFileError(GetLastError(), Path, Where);
}

DWORD AttributesOf(TextView Path) { return GetFileAttributesW(std::wstring(Path).c_str()); }

HANDLE Open(TextView Path, DWORD Access, DWORD Sharing, DWORD Creation) {
    const std::wstring File(Path);
    HANDLE Opened = INVALID_HANDLE_VALUE;
    TryWhileHeld([&] {
        Opened =
            CreateFileW(File.c_str(), Access, Sharing, nullptr, Creation, FILE_ATTRIBUTE_NORMAL, nullptr);
        return Opened != INVALID_HANDLE_VALUE;
    });
    return Opened;
}

} // namespace

std::wstring PluginFolder(Place Where) {
    const std::wstring Path = Module::Path();
    if (Path.empty()) FailWithLastError(L"the plug-in's DLL", Where);
    return Path.substr(0, Path.find_last_of(L'\\'));
}

bool FileExists(TextView Path) {
    const DWORD Attributes = AttributesOf(Path);
    return Attributes != INVALID_FILE_ATTRIBUTES && (Attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool FolderExists(TextView Path) {
    const DWORD Attributes = AttributesOf(Path);
    return Attributes != INVALID_FILE_ATTRIBUTES && (Attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsSamePath(TextView A, TextView B) noexcept {
    return CompareStringOrdinal(A.data(), static_cast<int>(A.size()), B.data(), static_cast<int>(B.size()),
                                TRUE) == CSTR_EQUAL;
}

void CreateFolder(TextView Path, Place Where) {
    if (!CreateDirectoryW(std::wstring(Path).c_str(), nullptr)) FailWithLastError(Path, Where);
}

void CreateEmptyFile(TextView Path, Place Where) {
    const FileHandle File(Open(Path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW));
    if (!File.IsOpen() && GetLastError() != ERROR_FILE_EXISTS) FailWithLastError(Path, Where);
}

void DeleteFileAt(TextView Path, Place Where) {
    const std::wstring File(Path);
    if (!TryWhileHeld([&] { return DeleteFileW(File.c_str()) != FALSE; })) FailWithLastError(Path, Where);
}

Bytes ReadBytes(TextView Path, Place Where) {
    // Others may write the lists while they are read.
    const FileHandle File(Open(Path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING));
    LARGE_INTEGER Size{};
    if (!File.IsOpen() || !GetFileSizeEx(File.Get(), &Size)) FailWithLastError(Path, Where);
    if (Size.HighPart != 0) Fail(ErrorNumber::OutOfMemory, {}, Where);
    Bytes Content(Size.LowPart);
    DWORD Count = 0;
    if (!ReadFile(File.Get(), Content.data(), static_cast<DWORD>(Content.size()), &Count, nullptr))
        FailWithLastError(Path, Where);
    Content.resize(Count);
    return Content;
}

void WriteBytes(TextView Path, const Bytes& Content, Place Where) {
    const FileHandle File(Open(Path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS));
    if (!File.IsOpen()) FailWithLastError(Path, Where);
    DWORD Count = 0;
    const bool Written =
        WriteFile(File.Get(), Content.data(), static_cast<DWORD>(Content.size()), &Count, nullptr) != FALSE;
    if (!Written || Count != Content.size()) FailWithLastError(Path, Where);
}

Moment Now() {
    SYSTEMTIME Time;
    GetLocalTime(&Time);
    return {Time.wYear, Time.wMonth, Time.wDay, Time.wHour, Time.wMinute, Time.wSecond};
}

std::int64_t Milliseconds() { return static_cast<std::int64_t>(GetTickCount64()); }

} // namespace Platform
