// Visual styles for the windows of a DLL in a host that may have none.
#pragma once

#include <windows.h>

// Windows created while one lives get the styled controls, as the module's manifest asks; where the system
// has no styles, the plain ones.
class Styled {
public:
    Styled() noexcept;
    ~Styled();
    Styled(const Styled&) = delete;
    Styled& operator=(const Styled&) = delete;

private:
    HANDLE Context;
    ULONG_PTR Cookie = 0;
};
