// INI files through the system's single-byte functions, without their limits of size.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace IniFiles {

std::string ReadKey(const std::string& Section, const std::string& Key, const std::string& File);
// Without a value the key is removed, without a key the section. Automation::Error 75 when the file cannot
// be written; removing what is not there is no error. A copy is changed and then takes the file's place: the
// system's function may empty the file before it writes it, and a process killed in between would lose the
// list.
void WriteKey(const std::string& Section, const std::optional<std::string>& Key,
              const std::optional<std::string>& Value, const std::string& File);
// The lines "key=value" of a section; the names of all sections. Both end with one empty element.
std::vector<std::string> ReadSection(const std::string& Section, const std::string& File);
std::vector<std::string> ReadSectionNames(const std::string& File);

} // namespace IniFiles
