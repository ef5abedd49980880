// What the logic asks of the platform: private profiles, files, the clock, boxes and dialogs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/failure.h"
#include "host/file_helper.h"
#include "host/moment.h"
#include "host/text.h"

namespace Platform {

// The folder that holds the plug-in's DLL, without a trailing "\".
std::wstring PluginFolder(Place Where = Place::current());

// --- Private profiles (the system's single-byte functions).

// At most 254 characters; empty when file, section or key is absent.
std::wstring GetProfileText(TextView Section, TextView Key, TextView File);
// Returns whether the text was written: the file may be read-only or open elsewhere, or the disk full.
bool WriteProfileText(TextView Section, TextView Key, TextView Value, TextView File);
// Nothing to delete is no failure. Errors 75, 76.
void DeleteProfileKey(TextView Section, TextView Key, TextView File, Place Where = Place::current());

// --- Files and folders.

bool FileExists(TextView Path);
bool FolderExists(TextView Path);
// One level: error 76 when the parent is missing, 75 when it cannot be made.
void CreateFolder(TextView Path, Place Where = Place::current());
// Makes an empty file where none is; one that is there stays as it is. Errors 75, 76.
void CreateEmptyFile(TextView Path, Place Where = Place::current());
void DeleteFileAt(TextView Path, Place Where = Place::current());

using Bytes = std::vector<std::byte>;
// Errors 53, 75, 76.
Bytes ReadBytes(TextView Path, Place Where = Place::current());
void WriteBytes(TextView Path, const Bytes& Content, Place Where = Place::current());
// The text in the system's single-byte code page; "?" for what it lacks.
Bytes SingleByteText(TextView Text);
// Returns whether the text comes back unchanged from the system's single-byte code page: "Ж" does not from
// code page 1252, and as a key of an INI file it would be stored as "?".
bool SurvivesSingleByte(TextView Text);

// --- The clock, local time.

Moment Now();
// Milliseconds of a clock that only goes forward.
std::int64_t Milliseconds();

// --- Boxes and dialogs. All but PostErrorBox are modal; sweeps go on behind them.

enum class BoxIcon { Error, Information, Warning };
void ShowBox(BoxIcon Icon, TextView Text, TextView Title);
// True for Yes. Default is the answer of the Enter key.
enum class Answer { Yes, No };
bool AskYesNo(TextView Text, TextView Title, Answer Default);
// The text typed; empty on Cancel.
std::wstring AskText(TextView Prompt, TextView Title);
// The chosen path; absent on Cancel. Filter: "description|pattern".
std::optional<std::wstring> AskOpenFile(TextView Title, TextView Filter, Place Where = Place::current());
// Has the box shown from the message loop, after the running call has returned, without taking the focus. One
// at a time: while one waits or stands, a further text is dropped, unless ToFront is set: then it replaces
// the text, and a box that stands comes to the front.
void PostErrorBox(TextView Text, TextView Title, bool ToFront) noexcept;

} // namespace Platform
