// Text files of lines, the host's two logs, and compression.
#pragma once

#include <string>
#include <vector>

namespace TextFiles {

// The text and CR LF, behind what the file holds or instead of it. Automation::Error 75.
void Append(const std::wstring& Path, const std::string& Text);
void Replace(const std::wstring& Path, const std::string& Text);
// The lines without their ends (CR LF or LF). Automation::Error 53, 75.
std::vector<std::string> ReadLines(const std::wstring& Path);

// Appends a line of the fields, with a time stamp in front and tabs between, to a log of the host.
void Log(const wchar_t* Name, const std::vector<std::string>& Fields);

// zlib's format.
std::string Compress(const std::string& Bytes);
// Automation::Error 5 when the bytes are damaged or do not become Length bytes.
std::string Decompress(const std::string& Bytes, std::size_t Length);

} // namespace TextFiles
