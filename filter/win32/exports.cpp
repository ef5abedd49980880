// The seven calls of the library. Device and driver file mean nothing to the filtering engine and are
// ignored. Results: 1 done, 0 not; IsServiceRunning returns the state.
#include <cstring>
#include <new>

#include "filter/service.h"

namespace {

// The two services that a caller knows. One of them was the maker's driver, the other the platform's hook for
// it; here both stand for the one session with the engine.
bool IsKnown(const char* Name) {
    return Name != nullptr && (_stricmp(Name, "DrvFltIp2") == 0 || _stricmp(Name, "IpFilterDriver") == 0);
}

std::int32_t StopKnown(const char* Name) {
    if (!IsKnown(Name)) return 0;
    Service::Stop();
    return 1;
}

} // namespace

extern "C" {

std::int32_t __stdcall IsServiceRunning(const char* Name) {
    return IsKnown(Name) ? Service::State() : Service::NotInstalled;
}

std::int32_t __stdcall LoadFWDriver(const char*, const char*, const char*) { return Service::Load() ? 1 : 0; }

std::int32_t __stdcall StartFW(const char*) {
    Service::Start();
    return 1;
}

std::int32_t __stdcall SetFilters(const char*, std::int32_t Address, std::int32_t, std::int32_t,
                                  std::int16_t Port) {
    try {
        Service::AddRule(RuleOfCall(Address, Port));
        return 1;
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

std::int32_t __stdcall ClearFilters(const char*) {
    Service::ClearRules();
    return 1;
}

std::int32_t __stdcall StopDriver(const char* Name) { return StopKnown(Name); }
std::int32_t __stdcall UnloadDriver(const char* Name) { return StopKnown(Name); }

} // extern "C"
