// Blocks addresses by the packet-filter library, and after so many milliseconds ends as a host does that lets
// go of nothing; with 0, when it is killed:
//
//   filter_client LIBRARY MILLISECONDS PORT ADDRESS...
#include <cstdio>
#include <cstdlib>

#include "tests/wine/filter_library.h"

int main(int Count, char** Words) {
    try {
        const std::string Path = Count > 3 ? Words[1] : "";
        const int Life = Count > 3 ? std::atoi(Words[2]) : 0;
        const FilterLibrary Library(std::wstring(Path.begin(), Path.end()));
        Library.LoadAndStart();
        for (int Word = 4; Word < Count; ++Word) {
            unsigned Parts[4] = {};
            std::sscanf(Words[Word], "%u.%u.%u.%u", Parts, Parts + 1, Parts + 2, Parts + 3);
            Library.Block(static_cast<Long>(Parts[3] << 24 | Parts[2] << 16 | Parts[1] << 8 | Parts[0]),
                          static_cast<std::int16_t>(std::atoi(Words[3])));
        }
        Sleep(Life > 0 ? static_cast<DWORD>(Life) : INFINITE);
        std::exit(0);
    } catch (const std::exception& Error) {
        std::fprintf(stderr, "filter_client: %s\n", Error.what());
    }
    return 1;
}
