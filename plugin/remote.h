// The members that remote consoles reach through the host. Each refreshes the profile from the request's
// PDAT, so that it works for a profile that was never loaded, decodes the request, acts, and writes one line
// to the administration log.
#pragma once

#include "game/show_msg.h"
#include "host/work.h"
#include "lists/first_failure.h"
#include "plugin/lifecycle.h"
#include "plugin/pdat.h"

struct RemoteRequest {
    Long Profile; // 0 to MaxProfileIndex
    Pdat HostData;
    std::optional<HostValue> Data; // absent when the caller left it out
};

// A member by the name that it reports failures under. Run sets Result as far as it comes.
template <class T> struct RemoteMember {
    TextView Name;
    void (*Run)(const RemoteRequest& Request, T& Result);
};

// Runs a member for the server that the request names. When the host gives the index to another one
// meanwhile, inside a call of ours, the request is refused: error 5 and an empty result.
template <class T> void RunForServer(const RemoteMember<T>& Member, const RemoteRequest& Request, T& Result) {
    const Work Own(Work::Kind::Request, Request.Profile);
    FirstFailure Failed;
    Failed.Try([&] { Member.Run(Request, Result); });
    if (Own.ItsFate() == Work::Fate::Runs) return Failed.Throw();
    Result = {};
    if (Own.ItsFate() == Work::Fate::Exchanged)
        Fail(ErrorNumber::InvalidCall, L"The profile has changed meanwhile.");
}

// Runs a member on the request that MakeRequest returns, after the profile has been refreshed from it. A
// failure of either is reported under the member's name; Result is then what the member had set.
template <class T, class F>
void CallMember(const RemoteMember<T>& Member, Long Profile, T& Result, F&& MakeRequest) noexcept {
    const Work Call(Work::Kind::RemoteCall, Profile);
    Trapped(Member.Name, Profile, [&] {
        const RemoteRequest& Request = std::forward<F>(MakeRequest)();
        if (SetProfileData(Request.Profile, Request.HostData)) RunForServer(Member, Request, Result);
    });
}

// The bundle of players, lists and settings, or "Failed" while no game runs; empty after a failure.
extern const RemoteMember<std::wstring> GetPlayersRem;

// 1 when the member ran to its end, also when it found nothing to do; 0 when it failed or refused.
extern const RemoteMember<Long> PuntPlayerRem, ArmPlayerRem, RemoveBannedRem, AddBannedRem;

// Always 0: the consoles have never been told more.
extern const RemoteMember<Long> SlapPlayerRem, AddSlapRem, DeleteSlapRem, EditSlapRem, SetBanMethod,
    SetIdlePunt, SetIdleMax;
