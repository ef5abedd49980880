#include "enforcement/kernel_method.h"

#include "game/mdlVNT.h"
#include "host/packet_filter.h"

namespace {

constexpr TextView Device = L"\\\\.\\DrvFltIp";
constexpr TextView FilterService = L"DrvFltIp2";
constexpr TextView PlatformService = L"IpFilterDriver";
constexpr Long Running = 3;

void SendRules(const BanFiles& Files, std::int16_t GamePort) {
    PacketFilter::ClearFilters(Device);
    for (const std::wstring& Address : ExactAddresses(Files))
        Naming(Address, [&] { PacketFilter::SetFilters(Device, IpToLong(Address), GamePort); });
}

} // namespace

void EnsureFilterRuns() {
    const Long PlatformState = PacketFilter::IsServiceRunning(PlatformService);
    const Long FilterState = PacketFilter::IsServiceRunning(FilterService);
    if (PlatformState == Running && FilterState == Running) return;
    PacketFilter::LoadFWDriver(Device, FilterService, mdlVNT::HostBaseFolder + L"\\DrvFltIp.sys");
    PacketFilter::StartFW(Device);
}

void RebuildFilters(const BanFiles& Files, std::int16_t GamePort) {
    if (!mdlVNT::IpListChanged(Files.Profile)) return;
    // Cleared first: an address that is added while the rules are sent asks for another rebuild.
    mdlVNT::IpListChanged(Files.Profile) = false;
    try {
        SendRules(Files, GamePort);
    } catch (...) {
        mdlVNT::IpListChanged(Files.Profile) = true;
        throw;
    }
}

void TakeDownFilter() {
    PacketFilter::ClearFilters(Device);
    for (const TextView Service : {FilterService, PlatformService}) {
        PacketFilter::StopDriver(Service);
        PacketFilter::UnloadDriver(Service);
    }
}

Long IpToLong(TextView Address) {
    const Lines Parts = Split(Address, L".");
    if (Parts.size() < 4) Fail(ErrorNumber::SubscriptOutOfRange);
    std::uint32_t Packed = 0;
    for (std::size_t Part = 4; Part-- > 0;) {
        const Long Value = ToWhole(Parts[Part]);
        if (Value < 0 || Value > 255) Fail(ErrorNumber::Overflow);
        Packed = Packed << 8 | static_cast<std::uint32_t>(Value);
    }
    return static_cast<Long>(Packed);
}
