// Private profiles, files and the clock.
#include "host/platform.h"

#include <windows.h>

#include "host/win32/automation.h"
#include "host/win32/disk_room.h"
#include "host/win32/module.h"
#include "host/win32/single_byte.h"

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

// The file error that the last system error stands for.
[[noreturn]] void FailWithLastError(TextView Path, Place Where) {
    const DWORD Error = GetLastError();
    const Long Number = Error == ERROR_PATH_NOT_FOUND   ? ErrorNumber::PathNotFound
                        : Error == ERROR_FILE_NOT_FOUND ? ErrorNumber::FileNotFound
                                                        : ErrorNumber::PathAccess;
    Fail(Number,
         ErrorDescription(Number) + L": " + std::wstring(Path) + L" (" +
             SystemText(HRESULT_FROM_WIN32(Error)) + L")",
         Where);
}

DWORD AttributesOf(TextView Path) { return GetFileAttributesW(std::wstring(Path).c_str()); }

HANDLE Open(TextView Path, DWORD Access, DWORD Creation) {
    return CreateFileW(std::wstring(Path).c_str(), Access, FILE_SHARE_READ, nullptr, Creation,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

// The system empties a file before it writes it anew, and a process that is killed in between would lose the
// list: a copy is changed instead, and then takes the file's place. A null value deletes the key.
bool WriteKey(TextView Section, TextView Key, const char* Value, TextView File) {
    const auto WriteTo = [&](TextView Path) {
        return WritePrivateProfileStringA(SingleByte(Section).c_str(), SingleByte(Key).c_str(), Value,
                                          SingleByte(Path).c_str()) != FALSE;
    };
    if (!FileExists(File)) return WriteTo(File);
    if ((AttributesOf(File) & FILE_ATTRIBUTE_READONLY) != 0) {
        SetLastError(ERROR_ACCESS_DENIED);
        return false;
    }
    const std::wstring Path(File);
    const std::wstring Copy = Path + L".new";
    SetFileAttributesW(Copy.c_str(), FILE_ATTRIBUTE_NORMAL); // one that a killed process left
    bool Done = CopyFileW(Path.c_str(), Copy.c_str(), FALSE) && WriteTo(Copy);
    // Open in another program: better in place than not at all.
    if (Done && !MoveFileExW(Copy.c_str(), Path.c_str(), MOVEFILE_REPLACE_EXISTING)) Done = WriteTo(File);
    const DWORD Error = GetLastError();
    DeleteFileW(Copy.c_str());
    SetLastError(Error);
    return Done;
}

} // namespace

std::wstring PluginFolder(Place Where) {
    const std::wstring Path = Module::Path();
    if (Path.empty()) FailWithLastError(L"qrvVNT.dll", Where);
    return Path.substr(0, Path.find_last_of(L'\\'));
}

std::wstring GetProfileText(TextView Section, TextView Key, TextView File) {
    char Buffer[255] = "";
    const DWORD Count = GetPrivateProfileStringA(SingleByte(Section).c_str(), SingleByte(Key).c_str(), "",
                                                 Buffer, sizeof Buffer, SingleByte(File).c_str());
    return FromSingleByte(Buffer, Count);
}

void WriteProfileText(TextView Section, TextView Key, TextView Value, TextView File) {
    if (HasRoomForEntry(File, Section, Key, Value)) WriteKey(Section, Key, SingleByte(Value).c_str(), File);
}

void DeleteProfileKey(TextView Section, TextView Key, TextView File, Place Where) {
    if (FileExists(File) && !WriteKey(Section, Key, nullptr, File)) FailWithLastError(File, Where);
}

bool FileExists(TextView Path) {
    const DWORD Attributes = AttributesOf(Path);
    return Attributes != INVALID_FILE_ATTRIBUTES && (Attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool FolderExists(TextView Path) {
    const DWORD Attributes = AttributesOf(Path);
    return Attributes != INVALID_FILE_ATTRIBUTES && (Attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void CreateFolder(TextView Path, Place Where) {
    if (!CreateDirectoryW(std::wstring(Path).c_str(), nullptr)) FailWithLastError(Path, Where);
}

void CreateEmptyFile(TextView Path, Place Where) {
    const FileHandle File(Open(Path, GENERIC_WRITE, CREATE_ALWAYS));
    if (!File.IsOpen()) FailWithLastError(Path, Where);
}

void DeleteFileAt(TextView Path, Place Where) {
    if (!DeleteFileW(std::wstring(Path).c_str())) FailWithLastError(Path, Where);
}

Bytes ReadBytes(TextView Path, Place Where) {
    // Others may write the lists while they are read.
    const FileHandle File(CreateFileW(std::wstring(Path).c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!File.IsOpen()) FailWithLastError(Path, Where);
    Bytes Content(GetFileSize(File.Get(), nullptr));
    DWORD Count = 0;
    if (!ReadFile(File.Get(), Content.data(), static_cast<DWORD>(Content.size()), &Count, nullptr))
        FailWithLastError(Path, Where);
    Content.resize(Count);
    return Content;
}

void WriteBytes(TextView Path, const Bytes& Content, Place Where) {
    const FileHandle File(Open(Path, GENERIC_WRITE, CREATE_ALWAYS));
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

} // namespace Platform
