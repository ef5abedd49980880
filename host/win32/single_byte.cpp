#include "host/win32/single_byte.h"

#include <windows.h>

std::string SingleByte(TextView Text) {
    if (Text.empty()) return {};
    const int Length = static_cast<int>(Text.size());
    const int Needed =
        WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, Text.data(), Length, nullptr, 0, nullptr, nullptr);
    std::string Bytes(static_cast<std::size_t>(Needed), '\0');
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, Text.data(), Length, Bytes.data(), Needed, nullptr,
                        nullptr);
    return Bytes;
}

std::wstring FromSingleByte(const char* Bytes, std::size_t Count) {
    if (Count == 0) return {};
    const int Length = static_cast<int>(Count);
    const int Needed = MultiByteToWideChar(CP_ACP, 0, Bytes, Length, nullptr, 0);
    std::wstring Text(static_cast<std::size_t>(Needed), L'\0');
    MultiByteToWideChar(CP_ACP, 0, Bytes, Length, Text.data(), Needed);
    return Text;
}
