// What the host passes, on its way from automation types to the logic's own.
#pragma once

#include <oaidl.h>

#include "plugin/remote.h"

// The elements of PDAT, an array of Variants or of strings, directly or by reference; fails with 13 for
// anything else and 449 when it was left out.
Pdat PdatFrom(const VARIANT& PDAT);

// One Variant in the forms the plug-in asks for.
HostValue HostValueFrom(const VARIANT& Value);

RemoteRequest RequestFrom(Long Profile, const VARIANT& PDAT, const VARIANT& Data);
