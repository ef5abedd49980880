// The host's real helper objects behind wrappers: for programs that look at what passes between plug-in and
// host, or that play a host which does more in a call than it was asked for.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <functional>
#include <string>

namespace HelperWrappers {

// One call of a member, on its way to the real object.
struct Call {
    IDispatch* Real;
    std::wstring Name;
    DISPID Member;
    WORD Flags;
    DISPPARAMS* Parameters; // the arguments come last first
    VARIANT* Result;
    EXCEPINFO* Exception;
    UINT* BadArgument;

    HRESULT PassOn() const {
        return Real->Invoke(Member, IID_NULL, LOCALE_USER_DEFAULT, Flags, Parameters, Result, Exception,
                            BadArgument);
    }
};

// Takes every call while it is set; otherwise calls are passed on.
extern std::function<HRESULT(const Call&)> OnCall;

// While it lives, whoever in this process creates a helper object by its program identifier gets a wrapper.
class Installed {
public:
    Installed();
    ~Installed();
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;

private:
    unsigned long Cookies[2];
};

} // namespace HelperWrappers
