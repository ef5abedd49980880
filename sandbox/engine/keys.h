// Keys of the engine's objects as the state file has them.
#pragma once

#include <windows.h>

#include <cstdio>
#include <string>

inline std::string KeyText(const GUID& Key) {
    char Text[40] = "";
    std::snprintf(Text, sizeof Text, "%08lx-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x", Key.Data1,
                  Key.Data2, Key.Data3, Key.Data4[0], Key.Data4[1], Key.Data4[2], Key.Data4[3], Key.Data4[4],
                  Key.Data4[5], Key.Data4[6], Key.Data4[7]);
    return Text;
}
