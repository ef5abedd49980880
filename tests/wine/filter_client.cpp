// Blocks addresses by the packet-filter library until it is killed:
//
//   filter_client LIBRARY PORT ADDRESS...
#include <cstdio>
#include <cstdlib>

#include "tests/wine/filter_library.h"

int main(int Count, char** Words) {
    try {
        const std::string Path = Count > 2 ? Words[1] : "";
        const FilterLibrary Library(std::wstring(Path.begin(), Path.end()));
        Library.LoadAndStart();
        for (int Word = 3; Word < Count; ++Word) {
            unsigned Parts[4] = {};
            std::sscanf(Words[Word], "%u.%u.%u.%u", Parts, Parts + 1, Parts + 2, Parts + 3);
            Library.Block(static_cast<Long>(Parts[3] << 24 | Parts[2] << 16 | Parts[1] << 8 | Parts[0]),
                          static_cast<std::int16_t>(std::atoi(Words[2])));
        }
        Sleep(INFINITE);
    } catch (const std::exception& Error) {
        std::fprintf(stderr, "filter_client: %s\n", Error.what());
    }
    return 1;
}
