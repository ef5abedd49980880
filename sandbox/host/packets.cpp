#include "sandbox/host/packets.h"

#include <cstring>

namespace Packets {
namespace {

constexpr DWORD MaxTexts = 16;
constexpr DWORD MaxCharacters = 16 * 1024 * 1024;

bool WriteBytes(HANDLE Pipe, const char* Bytes, std::size_t Size) {
    while (Size > 0) {
        DWORD Written = 0;
        if (!WriteFile(Pipe, Bytes, static_cast<DWORD>(Size), &Written, nullptr) || Written == 0)
            return false;
        Bytes += Written;
        Size -= Written;
    }
    return true;
}

bool ReadBytes(HANDLE Pipe, void* Target, std::size_t Size) {
    char* Bytes = static_cast<char*>(Target);
    while (Size > 0) {
        DWORD Read = 0;
        if (!ReadFile(Pipe, Bytes, static_cast<DWORD>(Size), &Read, nullptr) || Read == 0) return false;
        Bytes += Read;
        Size -= Read;
    }
    return true;
}

void Append(std::string& Bytes, const void* Content, std::size_t Size) {
    Bytes.append(static_cast<const char*>(Content), Size);
}

} // namespace

std::wstring PipePath(TextView Name) { return L"\\\\.\\pipe\\" + std::wstring(Name); }

bool Write(HANDLE Pipe, const Lines& Texts) {
    std::string Bytes;
    const DWORD Count = static_cast<DWORD>(Texts.size());
    Append(Bytes, &Count, sizeof Count);
    for (const std::wstring& Text : Texts) {
        const DWORD Length = static_cast<DWORD>(Text.size());
        Append(Bytes, &Length, sizeof Length);
        Append(Bytes, Text.data(), Text.size() * sizeof(wchar_t));
    }
    return WriteBytes(Pipe, Bytes.data(), Bytes.size());
}

bool Read(HANDLE Pipe, Lines& Texts) {
    DWORD Count = 0;
    Texts.clear();
    if (!ReadBytes(Pipe, &Count, sizeof Count) || Count > MaxTexts) return false;
    for (DWORD At = 0; At < Count; ++At) {
        DWORD Length = 0;
        if (!ReadBytes(Pipe, &Length, sizeof Length) || Length > MaxCharacters) return false;
        std::wstring Text(Length, L'\0');
        if (!ReadBytes(Pipe, Text.data(), Length * sizeof(wchar_t))) return false;
        Texts.push_back(std::move(Text));
    }
    return true;
}

} // namespace Packets
