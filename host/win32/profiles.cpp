// Private profiles, by the system's single-byte functions, so that a write leaves the file whole.
#include <windows.h>

#include "host/platform.h"
#include "host/win32/disk_room.h"
#include "host/win32/held_file.h"
#include "host/win32/single_byte.h"
#include "host/win32/system_error.h"

namespace Platform {

namespace {

// A key and its value as the system's function takes them; without a value the key is deleted.
struct Change {
    std::string Section, Key;
    std::optional<std::string> Value;
};

bool WriteTo(const std::wstring& Path, const Change& Wanted) {
    return WritePrivateProfileStringA(Wanted.Section.c_str(), Wanted.Key.c_str(),
                                      Wanted.Value ? Wanted.Value->c_str() : nullptr,
                                      SingleByte(Path).c_str()) != FALSE;
}

bool MakeCopy(const std::wstring& Path, const std::wstring& Copy) {
    SetFileAttributesW(Copy.c_str(), FILE_ATTRIBUTE_NORMAL); // one that a killed process left
    return TryWhileHeld([&] { return CopyFileW(Path.c_str(), Copy.c_str(), FALSE) != FALSE; });
}

// A renamed copy would have the rights of the folder: give it the file's own. Returns false where that is not
// allowed.
bool CopyRights(const std::wstring& Path, const std::wstring& Copy) {
    DWORD Size = 0;
    GetFileSecurityW(Path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &Size);
    std::vector<unsigned char> Rights(Size);
    return GetFileSecurityW(Path.c_str(), DACL_SECURITY_INFORMATION, Rights.data(), Size, &Size) &&
           SetFileSecurityW(Copy.c_str(), DACL_SECURITY_INFORMATION, Rights.data());
}

// By a rename, which is there or not: ReplaceFile takes the file away before it puts the copy in its place,
// and a process that is killed in between has lost the list.
bool Replace(const std::wstring& Path, const std::wstring& Copy) {
    return CopyRights(Path, Copy) && TryWhileHeld([&] {
               if (MoveFileExW(Copy.c_str(), Path.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
               // What the rename says of a file that another program reads.
               if (GetLastError() == ERROR_ACCESS_DENIED) SetLastError(ERROR_SHARING_VIOLATION);
               return false;
           });
}

// The system empties a file before it writes it anew, and a process that is killed in between would lose the
// list: a copy is changed instead, and then takes the file's place.
bool WriteByCopy(const std::wstring& Path, const Change& Wanted) {
    const std::wstring Copy = Path + L".new";
    if (!MakeCopy(Path, Copy)) return false;
    const bool IsDone = WriteTo(Copy, Wanted) && Replace(Path, Copy);
    if (!IsDone) DeleteFileW(Copy.c_str());
    return IsDone;
}

// When no copy can be made or put in its place (no right to create files, a folder of that name, the file
// open in another program), in place is better than not at all.
bool Write(const std::wstring& Path, const Change& Wanted) {
    if (!FileExists(Path)) return WriteTo(Path, Wanted);
    // Windows writes to such a file neither way, Wine would.
    if ((GetFileAttributesW(Path.c_str()) & FILE_ATTRIBUTE_READONLY) != 0) {
        SetLastError(ERROR_ACCESS_DENIED);
        return false;
    }
    return WriteByCopy(Path, Wanted) || WriteTo(Path, Wanted);
}

} // namespace

std::wstring GetProfileText(TextView Section, TextView Key, TextView File) {
    char Buffer[255] = "";
    const DWORD Count = GetPrivateProfileStringA(SingleByte(Section).c_str(), SingleByte(Key).c_str(), "",
                                                 Buffer, sizeof Buffer, SingleByte(File).c_str());
    return FromSingleByte(Buffer, Count);
}

bool WriteProfileText(TextView Section, TextView Key, TextView Value, TextView File) {
    return HasRoomForEntry(File, Section, Key, Value) &&
           Write(std::wstring(File), {SingleByte(Section), SingleByte(Key), SingleByte(Value)});
}

void DeleteProfileKey(TextView Section, TextView Key, TextView File, Place Where) {
    if (FileExists(File) && !Write(std::wstring(File), {SingleByte(Section), SingleByte(Key), std::nullopt}))
        FailWithFileError(GetLastError(), File, Where);
}

} // namespace Platform
