#include "sandbox/host/journal.h"

#include <cstdio>
#include <string>

#include <windows.h>

namespace Journal {
namespace {

HANDLE File = INVALID_HANDLE_VALUE;
Pane ShownIn = nullptr;
const ULONGLONG Start = GetTickCount64();

std::string InUtf8(const std::wstring& Text) {
    const int Size = static_cast<int>(Text.size());
    std::string Bytes(Text.size() * 3, '\0');
    const int Used = WideCharToMultiByte(CP_UTF8, 0, Text.c_str(), Size, Bytes.data(),
                                         static_cast<int>(Bytes.size()), nullptr, nullptr);
    Bytes.resize(static_cast<std::size_t>(Used));
    return Bytes;
}

void Put(HANDLE Target, const std::string& Bytes) {
    DWORD Written = 0;
    if (Target && Target != INVALID_HANDLE_VALUE)
        WriteFile(Target, Bytes.data(), static_cast<DWORD>(Bytes.size()), &Written, nullptr);
}

} // namespace

void Open(TextView Path) {
    Close();
    File = CreateFileW(std::wstring(Path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0,
                       nullptr);
}

void Close() {
    if (File != INVALID_HANDLE_VALUE) CloseHandle(File);
    File = INVALID_HANDLE_VALUE;
}

unsigned Elapsed() { return static_cast<unsigned>(GetTickCount64() - Start); }

void Write(TextView Text) {
    wchar_t Stamp[32];
    const unsigned Milliseconds = Elapsed();
    swprintf(Stamp, 32, L"%3u.%03u ", Milliseconds / 1000, Milliseconds % 1000);
    std::wstring Line = Stamp + std::wstring(Text);
    for (wchar_t& Character : Line)
        if (Character < L' ') Character = L' ';
    const std::string Bytes = InUtf8(Line) + "\n";
    Put(File, Bytes);
    Put(GetStdHandle(STD_OUTPUT_HANDLE), Bytes);
    if (ShownIn) ShownIn(Line);
}

void Attach(Pane Shown) { ShownIn = Shown; }

} // namespace Journal
