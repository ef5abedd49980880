// The single-byte conversions under code pages that this system need not have: in front of the system's own
// functions stand ones that refuse and miscount as they are documented to.
#include "host/win32/single_byte.h"

#include <gtest/gtest.h>

#include <windows.h>

#include "host/platform.h"
#include "host/win32/disk_room.h"

namespace {

UINT Page = CP_ACP; // what CP_ACP stands for in a test
DWORD Refusal = 0;  // when set, every conversion fails with it

template <class F> F System(const char* Name) {
    return reinterpret_cast<F>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), Name)));
}

int Refused(DWORD Error) {
    SetLastError(Error);
    return 0;
}

int WINAPI ToBytes(UINT Asked, DWORD Flags, const wchar_t* Text, int Length, char* Bytes, int Room,
                   const char* Default, BOOL* IsUsed) {
    static const auto Convert = System<decltype(&ToBytes)>("WideCharToMultiByte");
    if (Asked != CP_ACP) return Convert(Asked, Flags, Text, Length, Bytes, Room, Default, IsUsed);
    if (Refusal != 0) return Refused(Refusal);
    if (Page == CP_UTF8 && (Flags & ~DWORD{WC_ERR_INVALID_CHARS}) != 0) return Refused(ERROR_INVALID_FLAGS);
    if (Page == CP_UTF8 && (Default || IsUsed)) return Refused(ERROR_INVALID_PARAMETER);
    if (Page == 932 && Room == 0 && (Flags & WC_NO_BEST_FIT_CHARS) != 0) return Length;
    return Convert(Page, Flags, Text, Length, Bytes, Room, Default, IsUsed);
}

int WINAPI ToUnits(UINT Asked, DWORD Flags, const char* Bytes, int Length, wchar_t* Text, int Room) {
    static const auto Convert = System<decltype(&ToUnits)>("MultiByteToWideChar");
    if (Asked == CP_ACP && Refusal != 0) return Refused(Refusal);
    return Convert(Asked == CP_ACP ? Page : Asked, Flags, Bytes, Length, Text, Room);
}

ULONGLONG Free = ~0ULL; // what every disk has

BOOL WINAPI FreeSpace(const wchar_t*, ULARGE_INTEGER* Available, ULARGE_INTEGER*, ULARGE_INTEGER*) {
    Available->QuadPart = Free;
    return TRUE;
}

} // namespace

// The import slots of the program: calls of these functions arrive above.
extern "C" {
extern decltype(&FreeSpace) FreeSpaceSlot asm("__imp__GetDiskFreeSpaceExW@16");
decltype(&FreeSpace) FreeSpaceSlot = FreeSpace;
extern decltype(&ToBytes) ToBytesSlot asm("__imp__WideCharToMultiByte@32");
decltype(&ToBytes) ToBytesSlot = ToBytes;
extern decltype(&ToUnits) ToUnitsSlot asm("__imp__MultiByteToWideChar@24");
decltype(&ToUnits) ToUnitsSlot = ToUnits;
}

TEST(SingleByte, GoesThroughEveryKindOfCodePage) {
    const struct {
        UINT Page;
        std::wstring Text;
        std::string Bytes;
        std::wstring Back;
    } Cases[] = {
        {1252, L"M\u00FCller \u0416", "M\xFCller ?", L"M\u00FCller ?"},
        {1252, L"\u0101", "?", L"?"}, // never the nearest, "a"
        {CP_UTF8, L"M\u00FCller \u0416 \U0001F600", "M\xC3\xBCller \xD0\x96 \xF0\x9F\x98\x80",
         L"M\u00FCller \u0416 \U0001F600"},
        {932, L"\u65E5\u672C\u8A9E", "\x93\xFA\x96\x7B\x8C\xEA", L"\u65E5\u672C\u8A9E"},
        {1251, L"\u0416", "\xC6", L"\u0416"},
    };
    for (const auto& Case : Cases) {
        Page = Case.Page;
        EXPECT_EQ(SingleByte(Case.Text), Case.Bytes) << Page;
        EXPECT_EQ(FromSingleByte(Case.Bytes.data(), Case.Bytes.size()), Case.Back) << Page;
        EXPECT_EQ(Platform::SurvivesSingleByte(Case.Text), Case.Text == Case.Back) << Page;
    }
    EXPECT_EQ(SingleByte(L""), "");
}

TEST(SingleByte, FailsLoudlyWhenTheSystemRefuses) {
    Page = 1252;
    Refusal = ERROR_NO_UNICODE_TRANSLATION;
    EXPECT_THROW(SingleByte(L"Bob"), Failure);
    EXPECT_THROW(FromSingleByte("Bob", 3), Failure);
    Refusal = 0;
}

TEST(SingleByte, RoomOnTheDiskIsCountedInBytes) {
    const std::wstring File = L"C:\\no folder\\no file.ini", Value(100, L'\u20AC'); // three bytes each
    Page = CP_UTF8;
    Free = 250;
    EXPECT_FALSE(HasRoomForEntry(File, L"Section", L"Key", Value));
    EXPECT_THROW(RequireRoomForLine(File, Value), Failure);
    Free = 350;
    EXPECT_TRUE(HasRoomForEntry(File, L"Section", L"Key", Value));
    EXPECT_NO_THROW(RequireRoomForLine(File, Value));
}
