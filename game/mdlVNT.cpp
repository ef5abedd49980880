#include "game/mdlVNT.h"

#include "game/show_msg.h"
#include "host/file_helper.h"
#include "host/memory_helper.h"
#include "host/packet_filter.h"
#include "host/platform.h"

namespace mdlVNT {

std::wstring HostBaseFolder;
std::wstring PlayersIniPath;
Long CurrentProfile = 0;
Long LastProcessRef = 0;
std::wstring HostName;
Long BlueCount = 0;
Long RedCount = 0;

PerProfile<ProfileRecord> Profiles;
PerProfile<Collection<Long>> MemoryMap;
PerProfile<NameList> KillPermList;
PerProfile<NameList> DisarmPermList;
PerProfile<NameList> SwitchQueue;
PerProfile<Collection<Long>> LifeStates;
PerProfile<Collection<Long>> ArmedFlags;
PerProfile<IdleTable> IdleTables;
PerProfile<bool> IpListChanged;

namespace {

// Does the same to each per-profile array.
template <class F> void ForEachArray(F&& Do) {
    Do(Profiles);
    Do(MemoryMap);
    Do(KillPermList);
    Do(DisarmPermList);
    Do(SwitchQueue);
    Do(LifeStates);
    Do(ArmedFlags);
    Do(IdleTables);
    Do(IpListChanged);
}

} // namespace

void GrowProfileArrays(Long Index, Place Where) {
    CheckProfileIndex(Index, Where);
    ForEachArray([&](auto& Array) { Array.Grow(Index, Where); });
}

void Forget() noexcept {
    ForEachArray([](auto& Array) { Array.Forget(); });
    CurrentProfile = 0;
    LastProcessRef = 0;
    HostName.clear();
    PacketFilter::Release();
    MemoryHelper::Release();
    FileHelper::Release();
}

std::wstring ProfilePath(Long Index) {
    return HostBaseFolder + L"\\profiles\\" + Profiles(Index).ProfileFolder;
}
std::wstring SettingsFolder(Long Index) { return ProfilePath(Index) + L"\\settings"; }
std::wstring BannedNamesPath(Long Index) { return SettingsFolder(Index) + L"\\BannedNames.ini"; }
std::wstring BannedIpsPath(Long Index) { return SettingsFolder(Index) + L"\\BannedIps.ini"; }
std::wstring BannedReferencePath(Long Index) { return SettingsFolder(Index) + L"\\BannedReference.ini"; }
std::wstring SlapsPath(Long Index) { return SettingsFolder(Index) + L"\\Slaps.ini"; }

} // namespace mdlVNT

void SubMain() noexcept {
    // Each step on its own: a missing helper object must not take the other one and the paths with it.
    Trapped(L"SubMain", 0, [] {
        mdlVNT::HostBaseFolder = HostBaseOf(Platform::PluginFolder());
        mdlVNT::PlayersIniPath = mdlVNT::HostBaseFolder + L"\\Plugins\\Players.ini";
    });
    Trapped(L"SubMain", 0, [] { FileHelper::Create(); });
    Trapped(L"SubMain", 0, [] { MemoryHelper::Create(); });
}
