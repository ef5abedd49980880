#include "filter/win32/failure_text.h"

#include <windows.h>

namespace {

std::wstring SystemText(DWORD Code) {
    wchar_t Text[300] = L"";
    DWORD Length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, Code,
                                  0, Text, ARRAYSIZE(Text), nullptr);
    while (Length > 0 && Text[Length - 1] <= L' ') --Length;
    return {Text, Length};
}

std::wstring CodeText(DWORD Code) {
    wchar_t Text[20] = L"";
    wsprintfW(Text, Code < 0x10000 ? L"%lu" : L"0x%08lX", Code);
    return Text;
}

const wchar_t* Remedy(DWORD Code) {
    switch (Code) {
    case RPC_S_SERVER_UNAVAILABLE:
    case RPC_S_UNKNOWN_IF:
    case EPT_S_NOT_REGISTERED: return L" Start the Windows service \"Base Filtering Engine\" (BFE).";
    default: return L"";
    }
}

} // namespace

std::wstring FailureText(const Failure& Failed, const wchar_t* ForRights) {
    const std::string Call = Failed.Call;
    std::wstring Text(Call.begin(), Call.end());
    Text += L" failed with error " + CodeText(Failed.Code);
    if (const std::wstring Said = SystemText(Failed.Code); !Said.empty()) Text += L": " + Said;
    return Text + (Failed.Code == ERROR_ACCESS_DENIED ? ForRights : Remedy(Failed.Code));
}
