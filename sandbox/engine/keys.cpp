#include "sandbox/engine/keys.h"

#include <cstdio>
#include <iterator>

std::string KeyText(const GUID& Key) {
    char Text[40] = "";
    std::snprintf(Text, sizeof Text, "%08lx-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x", Key.Data1,
                  Key.Data2, Key.Data3, Key.Data4[0], Key.Data4[1], Key.Data4[2], Key.Data4[3], Key.Data4[4],
                  Key.Data4[5], Key.Data4[6], Key.Data4[7]);
    return Text;
}

GUID KeyOfText(const std::string& Text) {
    GUID Key{};
    unsigned Last[8] = {};
    std::sscanf(Text.c_str(), "%8lx-%4hx-%4hx-%2x%2x-%2x%2x%2x%2x%2x%2x", &Key.Data1, &Key.Data2, &Key.Data3,
                Last, Last + 1, Last + 2, Last + 3, Last + 4, Last + 5, Last + 6, Last + 7);
    for (std::size_t Index = 0; Index < std::size(Last); ++Index)
        Key.Data4[Index] = static_cast<unsigned char>(Last[Index]);
    return Key;
}
