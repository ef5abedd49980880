#include "sandbox/helpers/ini_files.h"

#include "sandbox/helpers/automation.h"

namespace IniFiles {

namespace {

// Calls Read(buffer, size) with ever larger buffers until the answer leaves more than Unused characters free,
// which is how the functions say that all of it fitted.
template <class Reader> std::string ReadAll(DWORD Unused, Reader Read) {
    for (std::size_t Size = 4096;; Size *= 4) {
        std::string Buffer(Size, '\0');
        const DWORD Length = Read(Buffer.data(), static_cast<DWORD>(Size));
        if (Length + Unused < Size) return Buffer.substr(0, Length);
    }
}

// The texts of a list in which each ends with a zero, and one empty text.
std::vector<std::string> SplitList(const std::string& List) {
    std::vector<std::string> Result;
    for (std::size_t At = 0; At < List.size();) {
        const std::size_t End = List.find('\0', At);
        if (End != At) Result.push_back(List.substr(At, End - At));
        if (End == std::string::npos) break;
        At = End + 1;
    }
    Result.emplace_back();
    return Result;
}

const char* Pointer(const std::optional<std::string>& Text) { return Text ? Text->c_str() : nullptr; }

} // namespace

std::string ReadKey(const std::string& Section, const std::string& Key, const std::string& File) {
    return ReadAll(1, [&](char* Buffer, DWORD Size) {
        return GetPrivateProfileStringA(Section.c_str(), Key.c_str(), "", Buffer, Size, File.c_str());
    });
}

void WriteKey(const std::string& Section, const std::optional<std::string>& Key,
              const std::optional<std::string>& Value, const std::string& File) {
    const DWORD Attributes = GetFileAttributesA(File.c_str());
    const bool Exists = Attributes != INVALID_FILE_ATTRIBUTES;
    if (!Exists && !(Key && Value)) return; // nothing to remove
    const bool IsReadOnly = Exists && (Attributes & FILE_ATTRIBUTE_READONLY) != 0;
    const std::string Copy = File + ".new";
    const auto WriteTo = [&](const std::string& Target) {
        return WritePrivateProfileStringA(Section.c_str(), Pointer(Key), Pointer(Value), Target.c_str()) !=
               FALSE;
    };
    SetFileAttributesA(Copy.c_str(), FILE_ATTRIBUTE_NORMAL); // one that a killed process left
    bool Done = !IsReadOnly && (!Exists || CopyFileA(File.c_str(), Copy.c_str(), FALSE)) && WriteTo(Copy);
    if (Done && !MoveFileExA(Copy.c_str(), File.c_str(), MOVEFILE_REPLACE_EXISTING))
        Done = WriteTo(File); // somebody has it open: better in place than not at all
    DeleteFileA(Copy.c_str());
    if (!Done) throw Automation::Error{Automation::PathAccess, "Cannot write " + File};
}

std::vector<std::string> ReadSection(const std::string& Section, const std::string& File) {
    return SplitList(ReadAll(2, [&](char* Buffer, DWORD Size) {
        return GetPrivateProfileSectionA(Section.c_str(), Buffer, Size, File.c_str());
    }));
}

std::vector<std::string> ReadSectionNames(const std::string& File) {
    return SplitList(ReadAll(2, [&](char* Buffer, DWORD Size) {
        return GetPrivateProfileSectionNamesA(Buffer, Size, File.c_str());
    }));
}

} // namespace IniFiles
