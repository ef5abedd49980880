#include "sandbox/helpers/text_files.h"

#include <zlib.h>

#include <cstdio>
#include <memory>

#include "sandbox/helpers/automation.h"

namespace TextFiles {

namespace {

using Automation::Error;

struct Close {
    void operator()(std::FILE* File) const { std::fclose(File); }
};
using File = std::unique_ptr<std::FILE, Close>;

void Write(const std::wstring& Path, const wchar_t* Mode, const std::string& Text) {
    const File To(_wfopen(Path.c_str(), Mode));
    const std::string Line = Text + "\r\n";
    if (!To || std::fwrite(Line.data(), 1, Line.size(), To.get()) != Line.size() ||
        std::fflush(To.get()) != 0)
        throw Error{Automation::PathAccess, "Cannot write " + Automation::ToBytes(Path)};
}

std::string ReadWhole(const std::wstring& Path) {
    if (GetFileAttributesW(Path.c_str()) == INVALID_FILE_ATTRIBUTES)
        throw Error{Automation::FileNotFound, "File not found: " + Automation::ToBytes(Path)};
    const File From(_wfopen(Path.c_str(), L"rb"));
    if (!From) throw Error{Automation::PathAccess, "Cannot read " + Automation::ToBytes(Path)};
    std::string Result;
    char Buffer[4096];
    while (const std::size_t Length = std::fread(Buffer, 1, sizeof Buffer, From.get()))
        Result.append(Buffer, Length);
    return Result;
}

std::wstring FolderOf(const std::wstring& Path) { return Path.substr(0, Path.rfind(L'\\')); }

// The host's folder: the one above ours when ours is called "helpers", otherwise ours.
std::wstring BaseFolder() {
    const std::wstring Own = FolderOf(Automation::ModulePath());
    const std::wstring Name = Own.substr(Own.rfind(L'\\') + 1);
    return lstrcmpiW(Name.c_str(), L"helpers") == 0 ? FolderOf(Own) : Own;
}

std::string Stamp() {
    SYSTEMTIME Local;
    GetLocalTime(&Local);
    char Text[32];
    std::snprintf(Text, sizeof Text, "%04u-%02u-%02u %02u:%02u:%02u", Local.wYear, Local.wMonth, Local.wDay,
                  Local.wHour, Local.wMinute, Local.wSecond);
    return Text;
}

std::string OneLine(const std::string& Text) {
    std::string Result;
    for (const char Byte : Text) {
        if (Byte == '\r') {
            Result += "\\r";
        } else if (Byte == '\n') {
            Result += "\\n";
        } else {
            Result += Byte;
        }
    }
    return Result;
}

} // namespace

void Append(const std::wstring& Path, const std::string& Text) { Write(Path, L"ab", Text); }
void Replace(const std::wstring& Path, const std::string& Text) { Write(Path, L"wb", Text); }

std::vector<std::string> ReadLines(const std::wstring& Path) {
    const std::string Whole = ReadWhole(Path);
    std::vector<std::string> Result;
    for (std::size_t At = 0; At < Whole.size();) {
        const std::size_t End = Whole.find('\n', At);
        std::string Line = Whole.substr(At, End - At);
        if (Line.ends_with('\r')) Line.pop_back();
        Result.push_back(std::move(Line));
        if (End == std::string::npos) break;
        At = End + 1;
    }
    return Result;
}

void Log(const wchar_t* Name, const std::vector<std::string>& Fields) {
    const std::wstring Folder = BaseFolder() + L"\\logs";
    CreateDirectoryW(Folder.c_str(), nullptr); // there already, mostly
    std::string Line = Stamp();
    for (const auto& Field : Fields) Line += '\t' + OneLine(Field);
    Append(Folder + L'\\' + Name, Line);
}

std::string Compress(const std::string& Bytes) {
    uLongf Length = compressBound(static_cast<uLong>(Bytes.size()));
    std::string Result(Length, '\0');
    if (compress(reinterpret_cast<Bytef*>(Result.data()), &Length,
                 reinterpret_cast<const Bytef*>(Bytes.data()), static_cast<uLong>(Bytes.size())) != Z_OK)
        throw Error{Automation::OutOfMemory, "Out of memory"};
    Result.resize(Length);
    return Result;
}

std::string Decompress(const std::string& Bytes, std::size_t Length) {
    std::string Result(Length, '\0');
    auto Got = static_cast<uLongf>(Length);
    const int Status =
        uncompress(reinterpret_cast<Bytef*>(Result.data()), &Got,
                   reinterpret_cast<const Bytef*>(Bytes.data()), static_cast<uLong>(Bytes.size()));
    if (Status != Z_OK || Got != Length)
        throw Error{Automation::InvalidCall, "The compressed text is damaged"};
    return Result;
}

} // namespace TextFiles
