// The conversions between texts and bytes of the system's single-byte code page.
#include "host/win32/single_byte.h"

#include <windows.h>

#include "host/platform.h"
#include "host/win32/automation.h"

namespace {

// No code page takes more bytes for one UTF-16 unit. (The system's own count is not asked for: in East Asian
// code pages, with the flag below, it can be smaller than what the conversion then needs.)
constexpr std::size_t MostBytesPerUnit = 4;
constexpr std::size_t LongestText = 0x7FFFFFFF / MostBytesPerUnit;

int Converted(DWORD Flags, TextView Text, std::string& Bytes) {
    return WideCharToMultiByte(CP_ACP, Flags, Text.data(), static_cast<int>(Text.size()), Bytes.data(),
                               static_cast<int>(Bytes.size()), nullptr, nullptr);
}

} // namespace

std::string SingleByte(TextView Text, Place Where) {
    if (Text.empty()) return {};
    if (Text.size() > LongestText) Fail(ErrorNumber::OutOfMemory, {}, Where);
    std::string Bytes(Text.size() * MostBytesPerUnit, '\0');
    int Count = Converted(WC_NO_BEST_FIT_CHARS, Text, Bytes);
    // UTF-8 refuses the flag, and needs none: it has every character.
    if (Count == 0 && GetLastError() == ERROR_INVALID_FLAGS) Count = Converted(0, Text, Bytes);
    if (Count == 0) FailWith(HRESULT_FROM_WIN32(GetLastError()), Where);
    Bytes.resize(static_cast<std::size_t>(Count));
    return Bytes;
}

std::wstring FromSingleByte(const char* Bytes, std::size_t Count, Place Where) {
    if (Count == 0) return {};
    if (Count > LongestText) Fail(ErrorNumber::OutOfMemory, {}, Where);
    // No byte becomes more than one UTF-16 unit.
    std::wstring Text(Count, L'\0');
    const int Length = static_cast<int>(Count);
    const int Units = MultiByteToWideChar(CP_ACP, 0, Bytes, Length, Text.data(), Length);
    if (Units == 0) FailWith(HRESULT_FROM_WIN32(GetLastError()), Where);
    Text.resize(static_cast<std::size_t>(Units));
    return Text;
}

namespace Platform {

Bytes SingleByteText(TextView Text) {
    const std::string Narrow = SingleByte(Text);
    const auto* First = reinterpret_cast<const std::byte*>(Narrow.data());
    return Bytes(First, First + Narrow.size());
}

bool SurvivesSingleByte(TextView Text) {
    const std::string Narrow = SingleByte(Text);
    return FromSingleByte(Narrow.data(), Narrow.size()) == Text;
}

} // namespace Platform
