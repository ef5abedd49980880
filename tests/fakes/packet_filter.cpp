// A packet filter that only records.
#include "host/packet_filter.h"

#include "tests/fakes/faults.h"
#include "tests/fakes/outside.h"

namespace PacketFilter {

namespace {

void Called(TextView Name, std::wstring Arguments, Place Where) {
    if (Outside::EnterHost(Name, true, Where)) return;
    if (Outside::FilterMissing) Fail(ErrorNumber::LoadingDll, {}, Where);
    Outside::Record(std::wstring(Name) + L" " + std::move(Arguments));
}

} // namespace

Long IsServiceRunning(TextView Service, Place Where) {
    Called(L"IsServiceRunning", std::wstring(Service), Where);
    return Outside::ServiceState;
}

void LoadFWDriver(TextView Device, TextView Service, TextView DriverFile, Place Where) {
    Called(L"LoadFWDriver",
           std::wstring(Device) + L" " + std::wstring(Service) + L" " + std::wstring(DriverFile), Where);
}

void StartFW(TextView Device, Place Where) { Called(L"StartFW", std::wstring(Device), Where); }

void SetFilters(TextView, Long Address, std::int16_t Port, Place Where) {
    Called(L"SetFilters", ToText(Address) + L" " + ToText(Port), Where);
}

void ClearFilters(TextView Device, Place Where) { Called(L"ClearFilters", std::wstring(Device), Where); }
void StopDriver(TextView Service, Place Where) { Called(L"StopDriver", std::wstring(Service), Where); }
void UnloadDriver(TextView Service, Place Where) { Called(L"UnloadDriver", std::wstring(Service), Where); }
void Release() noexcept {}

} // namespace PacketFilter
