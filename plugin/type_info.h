// Late binding for clsPlugin, from the type library in the DLL.
#pragma once

#include "host/win32/automation.h"
#include "qrvVNT_h.h"

// The description of _clsPlugin; one reference is the caller's.
HRESULT InterfaceInfo(ITypeInfo** Info) noexcept;
HRESULT IdsOfNames(LPOLESTR* Names, UINT Count, DISPID* Ids) noexcept;
// Calls a member by its dispatch identifier.
HRESULT InvokeMember(_clsPlugin& Object, DISPID Id, WORD Flags, DISPPARAMS* Parameters, VARIANT* Result,
                     EXCEPINFO* Exception, UINT* BadArgument) noexcept;
// Lets go of the library.
void ForgetTypeInfo() noexcept;
