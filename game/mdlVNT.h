// mdlVNT: the plug-in's process-wide state, filled once by SubMain, and the per-profile arrays.
//
// Nobody keeps a reference into these arrays across a call to the outside or a box: the call may come back
// into the plug-in and change them (host/work.h).
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "game/collection.h"
#include "game/per_profile.h"
#include "host/failure.h"
#include "host/text.h"
#include "version.h"

// The plug-in's copy of what the host says of a profile. The host texts are not read: they are kept so that a
// crash dump shows the whole of it.
struct ProfileRecord {
    std::wstring HostText5;
    std::wstring GameId;
    Long ProcessRef = 0;
    std::wstring HostText0;
    std::wstring HostText3;
    std::wstring HostText4;
    Long MessageRef = 0;
    std::wstring ProfileFolder;
    bool IsAffiliate = false;
    std::wstring HostText8;
};

// What the sweep remembers of each player id to tell who is idle. Ids are 1 to 150.
struct IdleTable {
    static constexpr int Bound = 150;
    template <class T> using ById = std::array<T, Bound + 1>;
    ById<std::wstring> IdleName{};
    ById<Long> IdleByteD7{};
    ById<Long> IdleByteD6{};
    ById<Long> IdleLong38{};
    ById<Long> IdleLong9C{};
    ById<Long> IdleSeconds{};
};

using NameList = Collection<std::wstring>;

// Whether an index stands for another server: another folder, compared as the files are, process or message
// target.
bool IsOtherServer(const ProfileRecord& A, const ProfileRecord& B) noexcept;

// An outage of unattended work lasts from a report until the procedure has run without one; it is shown once.
struct Outage {
    std::wstring Procedure;
    Long Number; // of the error
    long LastReport;
};

namespace mdlVNT {

inline constexpr TextView DllName = L"qrvVNT.dll";
inline constexpr TextView Version = VANTOR_VERSION_WIDE; // "major.minor.revision"

// --- Set by SubMain.
extern std::wstring HostBaseFolder;
extern std::wstring PlayersIniPath;

// --- Single values.
extern Long CurrentProfile;      // the index of the last LoadInterface; 0 is none
extern Long BlueCount, RedCount; // players of each team, counted by the last "LIST" read
// Never read; kept for crash dumps: the process reference of the last SetProfileData, and the host's name for
// itself from dllVersion.
extern Long LastProcessRef;
extern std::wstring HostName;

// --- Per-profile arrays.
extern PerProfile<ProfileRecord> Profiles;
extern PerProfile<Collection<Long>> MemoryMap;
extern PerProfile<NameList> KillPermList;
extern PerProfile<NameList> DisarmPermList;
extern PerProfile<NameList> SwitchQueue;
// As of the last "LIST" read, by name, "_", slot. Actions do not trust them: they read the game afresh.
extern PerProfile<Collection<Long>> LifeStates;
extern PerProfile<Collection<Long>> ArmedFlags;
extern PerProfile<IdleTable> IdleTables;
extern PerProfile<bool> IpListChanged;
extern PerProfile<bool> TakesNoCommands; // the last command of a tick has failed after others did
extern PerProfile<std::vector<Outage>> Outages;

// Makes every per-profile array hold the profile; error 9 outside 0 to MaxProfileIndex.
void GrowProfileArrays(Long Profile, Place Where = Place::current());
// Forgets what was collected for a profile's server. Does nothing for an index without arrays.
void ClearProfile(Long Profile);
// Back to the state before the first call, helper objects released.
void Forget() noexcept;

// "<base>\profiles\<ProfileFolder>" and what lies below it.
std::wstring ProfilePath(Long Profile);
std::wstring SettingsFolder(Long Profile);
std::wstring SlapsPath(Long Profile);

} // namespace mdlVNT
