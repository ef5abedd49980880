// The packet-filter control library, qrvudpfw.dll: one procedure for each of its exports.
//
// The library is bound at the first call, all seven exports or none, by full path only: from the plug-in's
// own folder, the host base folder or the system folder. Error 48 when it cannot be loaded, 453 when it lacks
// an export; the next call tries again.
#pragma once

#include "host/failure.h"
#include "host/text.h"

namespace PacketFilter {

// The state of a service; 3 is running.
Long IsServiceRunning(TextView Service, Place Where = Place::current());
void LoadFWDriver(TextView Device, TextView Service, TextView DriverFile, Place Where = Place::current());
void StartFW(TextView Device, Place Where = Place::current());
// Adds one blocking rule. Address holds the four parts of the dotted address, the first in the lowest byte.
void SetFilters(TextView Device, Long Address, std::int16_t Port, Place Where = Place::current());
void ClearFilters(TextView Device, Place Where = Place::current());
void StopDriver(TextView Service, Place Where = Place::current());
void UnloadDriver(TextView Service, Place Where = Place::current());

// Lets go of the library.
void Release() noexcept;

} // namespace PacketFilter
