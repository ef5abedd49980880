// Registration: class, programmatic identifier and type library, for the machine or for the current user.
#pragma once

#include <windows.h>

enum class RegistrationScope { Machine, User };

// SELFREG_E_CLASS or SELFREG_E_TYPELIB when a key cannot be written.
HRESULT Register(RegistrationScope Scope) noexcept;
// Removes what Register wrote; keys that are not there are no failure.
HRESULT Unregister(RegistrationScope Scope) noexcept;
