#include "tests/wine/remove_folder.h"

#include <windows.h>

#include <cstdio>
#include <vector>

namespace fs = std::filesystem;

// std::filesystem::remove_all is not for this: with our compiler it never returns once a file that it has
// listed goes by another's hand.
bool RemoveFolder(const fs::path& Folder, unsigned Milliseconds) {
    const ULONGLONG Deadline = GetTickCount64() + Milliseconds;
    for (std::error_code Error; fs::exists(Folder, Error); Sleep(20)) {
        std::vector<fs::path> Paths{Folder}; // each folder before what is in it
        for (fs::recursive_directory_iterator Entry(Folder, Error), End; Entry != End; Entry.increment(Error))
            Paths.push_back(Entry->path());
        if (GetTickCount64() > Deadline) {
            std::fprintf(stderr, "cannot be removed: %ls\n", Paths.back().c_str());
            return false;
        }
        for (; !Paths.empty(); Paths.pop_back()) fs::remove(Paths.back(), Error);
    }
    return true;
}
