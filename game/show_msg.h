// The one routine for result boxes and error reports, and the trap that every named procedure ends in.
#pragma once

#include <utility>

#include "host/failure.h"
#include "host/text.h"

enum class MsgKind : unsigned char {
    Error = 0,
    Success = 1,
    Failed = 2,
    ActionRequired = 3,
    ErrorReport = 4
};

// Shows a box of the kind, or reports an error: composes the details of ErrObject (may be null) onto Text,
// and logs them through the host. Kind ErrorReport also sends a report when the host's configuration says so
// and has the box shown from the message loop; of unattended work only once for an outage. Line is the source
// line of the error, Procedure its name. Does nothing when the running work has ended with its server. Never
// fails: what cannot be logged or sent is shown all the same.
void ShowMsg(MsgKind Kind, std::wstring& Text, const Failure* ErrObject, Long Profile, Long Line,
             TextView Procedure = {}) noexcept;

// A plain box of kind 0 to 3.
void ShowMsg(MsgKind Kind, TextView Text, Long Profile) noexcept;

// Reports the exception that is being handled under the procedure's name. For catch-all blocks only.
void ReportFailure(TextView Procedure, Long Profile) noexcept;

// How many reports there have been, and what ends the outages of a procedure (game/mdlVNT.h) that has run
// without one since.
long ReportCount() noexcept;
void EndOutages(TextView Procedure, Long Profile, long ReportsBefore);

// Runs a named procedure; a failure is reported under its name and ends here.
// Returns whether Body ran to its end.
template <class F> bool Trapped(TextView Procedure, Long Profile, F&& Body) noexcept {
    const long ReportsBefore = ReportCount();
    try {
        std::forward<F>(Body)();
        EndOutages(Procedure, Profile, ReportsBefore);
        return true;
    } catch (...) {
        ReportFailure(Procedure, Profile);
        return false;
    }
}
