// Failures of system calls, as the error numbers that automation clients know.
#pragma once

#include <windows.h>

#include "host/failure.h"
#include "host/text.h"

// The system's own description of an error, without a line end; empty when it has none.
std::wstring SystemText(HRESULT Error);

// The number of an automation error; any other error keeps its whole value.
Long ErrorNumberOf(HRESULT Error);

// Throws the error that an automation client would report: 6, 7, 9, 13, 438 or 449 for automation's own
// errors, the low word of a control's (0x800Axxxx), the whole value with the system's description for any
// other.
[[noreturn]] void FailWith(HRESULT Error, Place Where);

// Throws error 53 or 76 for a missing file or folder, 75 for any other reason; with the path and the system's
// description.
[[noreturn]] void FailWithFileError(DWORD Error, TextView Path, Place Where);
