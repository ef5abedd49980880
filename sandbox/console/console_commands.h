// The commands of a remote console, each made into the plug-in's request and its answer into words.
#pragma once

#include <functional>
#include <optional>

#include "host/text.h"

namespace ConsoleCommands {

// Sends one request to the host; returns the plug-in's result. Fails when the host refuses it.
using Sender =
    std::function<std::wstring(const std::wstring& Member, const std::optional<std::wstring>& Data)>;

// Carries a command out. Returns what to print, with line ends. Fails when there is no such command, when a
// word is missing, when the host refuses, and when the plug-in says that nothing was done.
std::wstring Run(const Lines& Words, const Sender& Send);

// Every command with its words and what it does, a line each.
std::wstring Usage();

} // namespace ConsoleCommands
