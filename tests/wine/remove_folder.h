// The end of a test's folder, in which a program that is just ending may still have a hand.
#pragma once

#include <filesystem>

// Deletes the folder and what is in it, again and again while somebody holds a file there or writes another.
// After so many milliseconds it gives up, says on the standard error what is left, and returns false.
bool RemoveFolder(const std::filesystem::path& Folder, unsigned Milliseconds = 10000);
