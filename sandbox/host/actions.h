// Everything that this host can be told to do, by its menu, its script, its command line and remote consoles.
#pragma once

#include <optional>

#include <windows.h>

#include "sandbox/host/configuration.h"

namespace Actions {

// Starts the game servers and creates the plug-in; what cannot be done is written to the journal.
// The area is the window that holds the plug-in's.
void Begin(HostConfiguration Read, HWND PluginArea);
// Unloads and releases the plug-in and ends the game servers.
void End();

// One action and its arguments, blanks between them (double quotes hold a text with blanks together):
//   load N      select profile N and have its interface loaded      hide        hide the interface
//   disable N   stop the profile's work                             unload      unload the interface
//   start N     start the profile's game server                     stop N      end it
//   remote N ADMIN MEMBER [DATA]   a raw request of a remote console
//   console N ADMIN COMMAND...     a command as console.exe takes it
//   menu ROW CAPTION               choose from the pop-up menu of the player list
//   tab N                          click the interface's tab N, from 1
//   closeboxes  close the plug-in's open boxes                      note TEXT   write a line
//   quit        end the host
// Whatever fails is written to the journal.
void Run(TextView Action);

// A request of a remote console, checked against the administrator's privileges. Fails with the reason.
std::wstring Serve(Long Index, TextView AdministratorName, const std::wstring& Member,
                   const std::optional<std::wstring>& Data);

const HostConfiguration& Configured();
// Of the window's list: the profile whose interface is shown, 0 when none is; and a profile's state in words.
Long ShownProfile();
std::wstring StateOf(Long Index);

} // namespace Actions
