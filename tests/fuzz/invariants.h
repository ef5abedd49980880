// What holds whatever the input was. A broken one ends the process, which is what a fuzzer looks for.
#pragma once

#include "tests/fakes/outside.h"

namespace Invariants {

// Ends the process with What and what was done, unless it holds.
void Require(bool Holds, const char* What);

// The two halves of Run.
void Begin();
void End(const char* Name, long MostCalls, std::size_t MostReports);

// Runs one call of the plug-in: it may make at most MostCalls outside calls and log at most MostReports
// errors, and leaves every file whole. Journal holds what this call did.
template <class F> void Run(const char* Name, long MostCalls, std::size_t MostReports, F&& Call) {
    Begin();
    Call();
    End(Name, MostCalls, MostReports);
}

// No list file, setting or line of the log has a line that is cut or holds what breaks lines.
void RequireWholeFiles();

} // namespace Invariants
