// Failures of the engine in words, for the event log and for whoever asks.
#pragma once

#include <string>

#include "filter/engine.h"

// The call, its error code, what Windows says about it, and what helps when that is known: ForRights if
// rights are missing.
std::wstring FailureText(const Failure& Failed, const wchar_t* ForRights);
