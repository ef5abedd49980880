// The members that remote consoles reach through the host. Each refreshes the profile from the request's
// PDAT, so that it works for a profile that was never loaded, decodes the request, acts, and writes one line
// to the administration log. Each reports under its own name.
#pragma once

#include "plugin/pdat.h"

struct RemoteRequest {
    Long Index; // 0 to MaxProfileIndex
    Pdat Profile;
    std::optional<HostValue> Data; // absent when the caller left it out
};

// The bundle of players, lists and settings, or "Failed" while no game runs; empty after a failure.
std::wstring GetPlayersRem(const RemoteRequest& Request) noexcept;

// 1 when the member ran to its end, also when it found nothing to do; 0 when it failed or refused.
Long PuntPlayerRem(const RemoteRequest& Request) noexcept;
Long ArmPlayerRem(const RemoteRequest& Request) noexcept;
Long RemoveBannedRem(const RemoteRequest& Request) noexcept;
Long AddBannedRem(const RemoteRequest& Request) noexcept;

// Always 0: the consoles have never been told more.
Long SlapPlayerRem(const RemoteRequest& Request) noexcept;
Long AddSlapRem(const RemoteRequest& Request) noexcept;
Long DeleteSlapRem(const RemoteRequest& Request) noexcept;
Long EditSlapRem(const RemoteRequest& Request) noexcept;
Long SetBanMethod(const RemoteRequest& Request) noexcept;
Long SetIdlePunt(const RemoteRequest& Request) noexcept;
Long SetIdleMax(const RemoteRequest& Request) noexcept;
