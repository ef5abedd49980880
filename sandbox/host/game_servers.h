// The game servers: child processes of the stand-in host, one for each profile, that end with it.
#pragma once

#include "sandbox/host/configuration.h"

namespace GameServers {

// Starts the profile's server in the base folder and notes how it is found. Does nothing when the profile has
// no command line or its server runs already. Error 53 when it cannot be started.
void Start(HostProfile& Profile, const std::wstring& BaseFolder);
// Ends the profile's server when this host started it.
void Stop(Long Index);
void StopAll();
bool IsRunning(Long Index);

} // namespace GameServers
