// The host's file helper object, qrvMFM.clsMFD: one procedure for each of its members.
//
// Every procedure fails with the object's own error, with 91 when the object could not be created, with 438
// when it lacks the member, with 13, 6 or 9 when its result is of another kind, out of range or too short,
// and with 75 before it writes when the disk has no room.
#pragma once

#include <optional>
#include <utility>

#include "host/failure.h"
#include "host/text.h"

// A text that may be absent; absent means "delete" to the members that write.
using MaybeText = std::optional<TextView>;

namespace FileHelper {

// Creates the object by its program identifier; error 429 when that is not possible.
void Create(Place Where = Place::current());
void Release() noexcept;

// The value of a key; empty when file, section or key is absent.
std::wstring GetIniKey(TextView Section, TextView Key, TextView File, Place Where = Place::current());
// Writes one key. Without a value the key is deleted, without a key the whole section.
void WriteIniKey(TextView Section, MaybeText Key, MaybeText Value, TextView File,
                 Place Where = Place::current());
// The section's lines. The host's array ends with one empty element, which stays: the array's upper bound
// (size minus one) is the number of lines. No array at all counts as no elements.
Lines GetIniSection(TextView Section, TextView File, Place Where = Place::current());
// The names of all sections, ending with one empty element.
Lines GetAllIniSections(TextView File, Place Where = Place::current());
void ClearIniSection(TextView Section, TextView File, Place Where = Place::current());
// The value of a line "key=value".
std::wstring ParseIniKey(TextView Line, Place Where = Place::current());
// Key and value of a line "key=value".
std::pair<std::wstring, std::wstring> ParseIniEntry(TextView Line, Place Where = Place::current());

// Appends the text and a line end.
void AppendFile(TextView Path, TextView Text, Place Where = Place::current());
// Replaces the file by the text and a line end.
void WriteFile(TextView Path, TextView Text, Place Where = Place::current());
// The file's lines without their line ends.
Lines ReadFile(TextView Path, Place Where = Place::current());
std::wstring CompressString(TextView Text, Place Where = Place::current());

// Writes the host's error log.
void LogError(TextView Dll, TextView Text, const Failure& Error, Long Line, Place Where = Place::current());

struct ErrorReport {
    std::wstring Number;
    std::wstring Description;
    std::wstring Version;
    std::wstring Text;
    bool IsAffiliate;
    Long Line;
};
// Sends the six values in this order as one array; returns whether the report was delivered.
bool SendErrorReport(const ErrorReport& Report, Place Where = Place::current());

} // namespace FileHelper
