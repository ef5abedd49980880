// What the stand-in host is told: its profiles, its administrators and the script of timed actions.
#pragma once

#include <vector>

#include "host/text.h"

struct HostProfile {
    Long Index = 0; // 1 upward
    std::wstring Name;
    std::wstring Folder; // below "profiles" in the host's base folder
    std::wstring GameId; // ends in "_AFF" for the affiliate build
    std::wstring Server; // the command line that starts the game server; empty: none is started
    // What the memory helper finds the game server by: its process and its main thread. Known when it has
    // been started here, or given.
    Long ProcessId = 0;
    Long MessageTarget = 0;
};

struct Administrator {
    std::wstring Name;
    std::wstring Description; // what an action is logged under
    Lines Privileges;         // the plug-in's names for them; "*" is all
};

struct HostConfiguration {
    std::wstring BaseFolder; // the folder of the file, without a trailing "\"
    std::wstring Title;
    std::wstring Pipe; // the name under which remote consoles find this host
    bool HostWideLogs = false;
    std::vector<HostProfile> Profiles;
    std::vector<Administrator> Administrators;
};

// Reads the sections [Host], [Profile1]..., [Admin1]... of the file; error 53 when there is none.
HostConfiguration ReadConfiguration(TextView Path);

struct TimedAction {
    unsigned Milliseconds; // after the host's start
    std::wstring Action;   // as sandbox/host/actions.h takes it
};
// One action a line: milliseconds, a blank, the action. Empty lines and lines that begin with "#" are passed
// over. Error 53 when there is no such file, error 13 when a line does not begin with a number.
std::vector<TimedAction> ReadScript(TextView Path);
