// Another program's session with the stand-in engine that the packet-filter library has.
#pragma once

#include <windows.h>

#include <string>

namespace StandIn {

// A filter as the library has it, but for what is to be wrong with it.
struct Asked {
    USHORT SubLayer, Provider; // whose: the numbers of sessions
    bool HasPort;              // otherwise a second address
    UINT32 Flags;
};

class Session {
public:
    // Opens it in the engine whose state is in that folder, and adds a provider and a sublayer of that
    // number.
    Session(const std::wstring& Folder, USHORT Number);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Begins a transaction, for as long as the session lives.
    void Begin() const;
    DWORD Add(const Asked& Wanted) const;

private:
    HANDLE Handle = nullptr;
};

} // namespace StandIn
