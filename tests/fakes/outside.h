// The outside of the plug-in, in memory: what the tests set up, what they look at afterwards, and how an
// outside call is made to fail. The fakes behind it define host/'s procedures and are linked by native tests
// in place of host/win32/.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/platform.h"
#include "host/text.h"
#include "sandbox/game/game_memory.h"

namespace Simulation {
struct Game;
}

namespace Outside {

// Everything as on a machine where the host was just installed: no files but the folders of Base, the clock
// at 2024-05-06 7:08:09, no answers prepared, nothing recorded. The plug-in's own state is forgotten as well.
void Reset();

inline constexpr TextView Base = L"C:\\Host";

// --- What happened, in order: everything with an effect (messages and writes to the game, changed INI keys,
// filter calls, boxes), one text each. Reads are only counted; what whole files hold is asked for below.
extern Lines Journal;
void Record(std::wstring What); // for the fakes
// The recorded texts that begin with Prefix.
Lines Recorded(TextView Prefix);

// The errors logged so far: procedure, number and description ("tmrVN: 13 Type mismatch").
extern Lines Reports;

// --- Counting and failing.
enum class Fault { Failure, WrongType, OutOfMemory, Empty };
extern long Calls; // outside calls since Reset
// Fails the Nth outside call from now (1 is the next, 0 none); logging and boxes are not counted.
void FailCall(long Number, Fault Kind);
std::wstring FaultyCall(); // the call that failed; empty when none has yet
// Runs before every counted outside call; for calls that come back into the plug-in.
extern std::function<void(TextView Name)> BeforeCall;

// --- Files. Paths are compared without regard to case; INI files are files.
void PutFile(TextView Path, std::wstring Content); // makes its folders
std::wstring FileText(TextView Path);              // empty when there is none
bool HasFile(TextView Path);
void PutFolder(TextView Path);
void RemoveAll(TextView Folder);
void SetReadOnly(bool On); // every write fails from now on
std::wstring IniValue(TextView Path, TextView Section, TextView Key);
void PutIni(TextView Path, TextView Section, TextView Key, TextView Value);

// --- The game behind a process reference; none: reads of it fail.
void AttachMemory(Long Process, const Simulation::GameMemory* Memory);
void AttachGame(Long Process, Simulation::Game* Game); // memory, and the messages sent to it
void DetachAll();

// --- The clock and the answers to boxes.
extern Moment Clock;
extern bool ReportsArrive;                         // what SendErrorReport returns
extern std::int64_t Elapsed;                       // milliseconds of the clock that only goes forward
extern std::vector<bool> YesNoAnswers;             // used from the front; No when empty
extern Lines TextAnswers;                          // input box; Cancel when empty
extern std::optional<std::wstring> OpenFileAnswer; // absent: Cancel
extern std::function<void()> WhileBoxIsOpen;       // runs inside every modal box

// --- The packet filter.
extern Long ServiceState; // what IsServiceRunning answers
extern bool FilterMissing;

} // namespace Outside
