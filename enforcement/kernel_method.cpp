#include "enforcement/kernel_method.h"

#include "game/mdlVNT.h"
#include "host/file_helper.h"
#include "host/packet_filter.h"
#include "host/platform.h"
#include "lists/ban_lists.h"

namespace {

constexpr TextView Device = L"\\\\.\\DrvFltIp";
constexpr TextView FilterService = L"DrvFltIp2";
constexpr TextView PlatformService = L"IpFilterDriver";
constexpr Long Running = 3;

bool IsPattern(TextView LineOrKey) { return LineOrKey.find(L".*") != TextView::npos; }

} // namespace

void EnsureFilterRuns(Place Where) {
    const Long Platform = PacketFilter::IsServiceRunning(PlatformService, Where);
    const Long Filter = PacketFilter::IsServiceRunning(FilterService, Where);
    if (Platform == Running && Filter == Running) return;
    PacketFilter::LoadFWDriver(Device, FilterService, mdlVNT::HostBaseFolder + L"\\DrvFltIp.sys", Where);
    PacketFilter::StartFW(Device, Where);
}

void RebuildFilters(Long Index, std::int16_t GamePort, Place Where) {
    if (!mdlVNT::IpListChanged(Index, Where)) return;
    PacketFilter::ClearFilters(Device, Where);
    const std::wstring File = mdlVNT::BannedIpsPath(Index);
    if (Platform::FileExists(File)) {
        for (const std::wstring& Line : FileHelper::GetIniSection(IpsSection, File, Where)) {
            if (Line.empty() || IsPattern(Line)) continue;
            const std::wstring Key = FileHelper::ParseIniEntry(Line, Where).first;
            if (Key.empty() || Key == L"*") continue; // "=..." by hand; a pattern as well
            PacketFilter::SetFilters(Device, IpToLong(Key, Where), GamePort, Where);
        }
    }
    mdlVNT::IpListChanged(Index, Where) = false;
}

void TakeDownFilter(Place Where) {
    PacketFilter::ClearFilters(Device, Where);
    for (const TextView Service : {FilterService, PlatformService}) {
        PacketFilter::StopDriver(Service, Where);
        PacketFilter::UnloadDriver(Service, Where);
    }
}

Long IpToLong(TextView Address, Place Where) {
    const Lines Parts = Split(Address, L".");
    if (Parts.size() < 4) Fail(ErrorNumber::SubscriptOutOfRange, {}, Where);
    std::uint32_t Packed = 0;
    for (std::size_t Part = 4; Part-- > 0;) {
        const Long Value = ToWhole(Parts[Part], Where);
        if (Value < 0 || Value > 255) Fail(ErrorNumber::Overflow, {}, Where);
        Packed = Packed << 8 | static_cast<std::uint32_t>(Value);
    }
    return static_cast<Long>(Packed);
}
