// The files of the fakes, with INI files as the system's private-profile functions see them.
#pragma once

#include "host/file_helper.h"
#include "host/text.h"

namespace Files {

void Reset();
bool IsReadOnly();

std::wstring IniValue(TextView Path, TextView Section, TextView Key);
// Lines "key=value" of a section as the host's helper lists them: keys that begin with ";" are left out.
Lines IniSection(TextView Path, TextView Section);
Lines IniSectionNames(TextView Path);
// Without a value the key goes, without a key the section. Does nothing when nothing can be written.
void WriteIni(TextView Path, TextView Section, MaybeText Key, MaybeText Value);

} // namespace Files
