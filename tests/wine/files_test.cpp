// Files that others hold, and whatever else is in the way of a write: the Windows side of the files by
// itself.
#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/platform.h"
#include "tests/wine/remove_folder.h"

namespace fs = std::filesystem;

namespace {

constexpr DWORD Moment = 50;    // milliseconds, as a scanner takes
constexpr DWORD Patience = 100; // as the plug-in has

DWORD WINAPI LetGoLater(void* File) {
    Sleep(Moment);
    return static_cast<DWORD>(CloseHandle(File));
}

// A file in a folder of its own, as nobody else may open it while it is held.
class Files : public testing::Test {
protected:
    Files() {
        RemoveFolder(Folder);
        fs::create_directories(Folder);
        std::ofstream(Path, std::ios::binary) << "[Section]\r\nKey=old\r\n";
    }
    ~Files() override { RemoveFolder(Folder); }

    void Hold() {
        Held = CreateFileW(Path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(Held, INVALID_HANDLE_VALUE);
    }
    void LetGo() { CloseHandle(Held); }
    // Holds the file while the action begins.
    template <class F> void HoldingForAMoment(F&& Action) {
        Hold();
        const HANDLE Thread = CreateThread(nullptr, 0, LetGoLater, Held, 0, nullptr);
        Action();
        WaitForSingleObject(Thread, INFINITE);
        CloseHandle(Thread);
    }
    std::string Content() const {
        std::ifstream File(Path, std::ios::binary);
        return {std::istreambuf_iterator<char>(File), {}};
    }
    bool Write(const wchar_t* Value) const {
        return Platform::WriteProfileText(L"Section", L"Key", Value, Path.wstring());
    }
    std::wstring Read() const { return Platform::GetProfileText(L"Section", L"Key", Path.wstring()); }

    fs::path Folder = fs::temp_directory_path() / (L"files " + std::to_wstring(GetCurrentProcessId()));
    fs::path Path = Folder / L"file.ini";
    HANDLE Held = INVALID_HANDLE_VALUE;
};

} // namespace

TEST_F(Files, WhatOthersHoldForAMomentIsWaitedFor) {
    HoldingForAMoment([&] { EXPECT_TRUE(Write(L"new")); });
    EXPECT_EQ(Read(), L"new");
    EXPECT_FALSE(fs::exists(Path.wstring() + L".new"));
    const std::wstring Name = Path.wstring();
    HoldingForAMoment([&] { EXPECT_EQ(Platform::ReadBytes(Name).size(), 20u); });
    HoldingForAMoment([&] { EXPECT_NO_THROW(Platform::DeleteProfileKey(L"Section", L"Key", Name)); });
    EXPECT_EQ(Read(), L"");
    HoldingForAMoment([&] { EXPECT_NO_THROW(Platform::WriteBytes(Name, {std::byte{'x'}})); });
    EXPECT_EQ(Content(), "x");
    HoldingForAMoment([&] { EXPECT_NO_THROW(Platform::DeleteFileAt(Name)); });
    EXPECT_FALSE(fs::exists(Path));
}

DWORD WINAPI DeleteBackwards(void* Given) {
    for (int File = 300; File-- > 0;)
        DeleteFileW((static_cast<const fs::path*>(Given)->wstring() + L"\\" + std::to_wstring(File)).c_str());
    return 0;
}

// Both delete the same files; the standard library's own removal does not return from this.
TEST_F(Files, AFolderGoesAlthoughAnotherDeletesInIt) {
    for (int File = 0; File < 300; ++File) std::ofstream(Folder / std::to_string(File)) << "x";
    const HANDLE Thread = CreateThread(nullptr, 0, DeleteBackwards, &Folder, 0, nullptr);
    EXPECT_TRUE(RemoveFolder(Folder));
    WaitForSingleObject(Thread, INFINITE);
    CloseHandle(Thread);
}

TEST_F(Files, WhatOthersHoldForLongIsReportedSoon) {
    const std::wstring Name = Path.wstring();
    Hold();
    const ULONGLONG Start = GetTickCount64();
    EXPECT_FALSE(Write(L"new"));
    EXPECT_THROW(Platform::DeleteProfileKey(L"Section", L"Key", Name), Failure);
    EXPECT_THROW(Platform::ReadBytes(Name), Failure);
    EXPECT_THROW(Platform::DeleteFileAt(Name), Failure);
    EXPECT_LT(GetTickCount64() - Start, 4 * (Patience + 100));
    LetGo();
    EXPECT_EQ(Content(), "[Section]\r\nKey=old\r\n");
    EXPECT_FALSE(fs::exists(Name + L".new"));
}

// No copy can be made where a folder has its name; a folder without the right to create files is the same.
TEST_F(Files, WithoutACopyAFileIsChangedInPlace) {
    fs::create_directory(Path.wstring() + L".new");
    EXPECT_TRUE(Write(L"new"));
    EXPECT_EQ(Read(), L"new");
    EXPECT_NO_THROW(Platform::DeleteProfileKey(L"Section", L"Key", Path.wstring()));
    EXPECT_EQ(Read(), L"");
}

TEST_F(Files, AnEmptyFileIsMadeOnlyWhereNoneIs) {
    EXPECT_NO_THROW(Platform::CreateEmptyFile(Path.wstring()));
    EXPECT_EQ(Content(), "[Section]\r\nKey=old\r\n");
    const fs::path Other = Folder / L"other.ini";
    EXPECT_NO_THROW(Platform::CreateEmptyFile(Other.wstring()));
    EXPECT_EQ(fs::file_size(Other), 0u);
    EXPECT_THROW(Platform::CreateEmptyFile((Folder / L"missing" / L"x.ini").wstring()), Failure);
}
