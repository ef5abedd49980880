#include "game/mdlVNT.h"

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
PerProfile<bool> TakesNoCommands;
PerProfile<std::vector<Outage>> Outages;

namespace {

// Does the same to each array of what is collected while a server runs.
template <class F> void ForEachCollected(F&& Do) {
    Do(MemoryMap);
    Do(KillPermList);
    Do(DisarmPermList);
    Do(SwitchQueue);
    Do(LifeStates);
    Do(ArmedFlags);
    Do(IdleTables);
    Do(TakesNoCommands);
    Do(Outages);
}

// Does the same to each per-profile array.
template <class F> void ForEachArray(F&& Do) {
    Do(Profiles);
    Do(IpListChanged);
    ForEachCollected(Do);
}

template <class T> void ResetElement(PerProfile<T>& Array, Long Profile) {
    if (Array.Has(Profile)) Array(Profile) = T();
}

} // namespace

void GrowProfileArrays(Long Profile, Place Where) {
    CheckProfileIndex(Profile, Where);
    ForEachArray([&](auto& Array) { Array.Grow(Profile, Where); });
}

void ClearProfile(Long Profile) {
    if (IpListChanged.Has(Profile)) IpListChanged(Profile) = true;
    ForEachCollected([&](auto& Array) { ResetElement(Array, Profile); });
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

bool IsOtherServer(const ProfileRecord& A, const ProfileRecord& B) noexcept {
    return A.ProcessRef != B.ProcessRef || A.MessageRef != B.MessageRef ||
           !Platform::IsSamePath(A.ProfileFolder, B.ProfileFolder);
}
