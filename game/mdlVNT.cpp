#include "game/mdlVNT.h"

#include "host/file_helper.h"
#include "host/memory_helper.h"
#include "host/packet_filter.h"

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

void GrowProfileArrays(Long Profile, Place Where) {
    CheckProfileIndex(Profile, Where);
    ForEachArray([&](auto& Array) { Array.Grow(Profile, Where); });
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

std::wstring ProfilePath(Long Profile) {
    return HostBaseFolder + L"\\profiles\\" + Profiles(Profile).ProfileFolder;
}
std::wstring SettingsFolder(Long Profile) { return ProfilePath(Profile) + L"\\settings"; }
std::wstring SlapsPath(Long Profile) { return SettingsFolder(Profile) + L"\\Slaps.ini"; }

} // namespace mdlVNT

ServerRef::ServerRef(Long Index)
    : Profile(Index), ProcessRef(mdlVNT::Profiles(Index).ProcessRef),
      MessageRef(mdlVNT::Profiles(Index).MessageRef), ProfileFolder(mdlVNT::Profiles(Index).ProfileFolder) {}

bool ServerRef::IsStillThere() const {
    const ProfileRecord& Present = mdlVNT::Profiles(Profile);
    return Present.ProcessRef == ProcessRef && Present.MessageRef == MessageRef &&
           Present.ProfileFolder == ProfileFolder;
}
