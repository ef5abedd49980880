#include "tests/wine/remove_folder.h"

#include <windows.h>

#include <cstdio>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Returns something that is left; nothing when all is gone. std::filesystem::remove_all is not for this: with
// our compiler it never returns once a file that it has listed goes by another's hand.
fs::path DeleteOnce(const fs::path& Folder) {
    std::error_code Error;
    std::vector<fs::path> Entries;
    for (fs::directory_iterator Entry(Folder, Error), End; Entry != End; Entry.increment(Error))
        Entries.push_back(Entry->path());
    fs::path Left;
    for (const fs::path& Entry : Entries) {
        if (fs::is_directory(Entry, Error)) {
            if (const fs::path Inside = DeleteOnce(Entry); !Inside.empty()) Left = Inside;
        } else if (!fs::remove(Entry, Error) && fs::exists(Entry, Error)) {
            Left = Entry;
        }
    }
    fs::remove(Folder, Error);
    return Left.empty() && fs::exists(Folder, Error) ? Folder : Left;
}

} // namespace

bool RemoveFolder(const fs::path& Folder, unsigned Milliseconds) {
    const ULONGLONG Deadline = GetTickCount64() + Milliseconds;
    for (;;) {
        const fs::path Left = DeleteOnce(Folder);
        if (Left.empty()) return true;
        if (GetTickCount64() >= Deadline) {
            std::fprintf(stderr, "cannot be removed: %ls\n", Left.c_str());
            return false;
        }
        Sleep(20);
    }
}
