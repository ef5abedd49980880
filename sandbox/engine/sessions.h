// Sessions and transactions of the stand-in for the filtering engine, and its switches.
#pragma once

#include <windows.h>

#include <exception>
#include <functional>

#include "sandbox/engine/engine_state.h"

namespace Sessions {

// The error codes are the platform's; 0 is success.

// Folder is where the state file and the switches lie.
std::wstring Folder();

// What the switches of engine.fail have the call return; 0 when they leave it alone. Filters is how many
// there would be after the call.
DWORD Refusal(const std::string& Call, std::size_t Filters = 0);

// A call of the engine, unless a switch forbids it. Nothing escapes from it.
template <class Procedure> DWORD Call(const char* Name, Procedure Body) noexcept {
    try {
        if (const DWORD Error = Refusal(Name)) return Error;
        return Body();
    } catch (const std::exception&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

DWORD Open(bool IsDynamic, DWORD WaitMilliseconds, HANDLE* Session);
DWORD Close(HANDLE Session);
DWORD Begin(HANDLE Session);
DWORD Commit(HANDLE Session);
DWORD Abort(HANDLE Session);

// What the session sees: the state, with what its transaction has changed so far.
DWORD View(HANDLE Session, EngineState& State);

// Lets Alter change the state, in the session's transaction or in one for this call alone. Alter refuses by
// an error code, before it has changed anything.
using Alteration = std::function<DWORD(EngineState& State, const std::string& Session)>;
DWORD Change(HANDLE Session, const Alteration& Alter);

} // namespace Sessions
