#include "enforcement/ban_checks.h"

#include "enforcement/kernel_method.h"
#include "enforcement/name_fragments.h"
#include "game/memory_map.h"
#include "game/player_actions.h"
#include "game/player_table.h"
#include "game/settings.h"
#include "lists/ban_lists.h"

namespace {

struct Checks {
    Tick& Current;
    BanFiles Files;
    Lines NameLines;                // of the section of banned names
    std::vector<Long> FragmentHits; // by slot; empty until somebody is there to be checked
};

struct Player {
    Long Slot;
    const std::wstring& Name;
    const std::wstring& Address;
};

// --- The checks. They do not stop at the first hit: a player who matches several entries is punted once for
// each.

void Punt(Checks& Running, const Player& Banned) {
    SendInTick(Running.Current, [&] {
        return PuntPlayer({.Profile = Running.Current.Profile,
                           .Name = Banned.Name,
                           .Ip = Banned.Address,
                           .Slot = Banned.Slot,
                           .Quiet = true})
            .Done;
    });
}

void CheckInvalidAddress(Checks& Running, const Player& Checked) {
    if (!IsValidIp(Checked.Address)) Punt(Running, Checked);
}

void CheckExactAddress(Checks& Running, const Player& Checked) {
    if (HasBannedIp(Running.Files, Checked.Address)) Punt(Running, Checked);
}

void CheckAddressPrefixes(Checks& Running, const Player& Checked) {
    if (Trim(Checked.Address).empty()) return;
    // "1.*", "1.2.*" and "1.2.3.*"
    std::size_t Point = 0;
    for (int Parts = 1; Parts <= 3; ++Parts, ++Point) {
        Point = Checked.Address.find(L'.', Point);
        if (Point == std::wstring::npos) return;
        if (HasBannedIp(Running.Files, Checked.Address.substr(0, Point + 1) + L'*')) Punt(Running, Checked);
    }
}

void CheckWholeName(Checks& Running, const Player& Checked) {
    if (HasBannedName(Running.Files, Checked.Name)) Punt(Running, Checked);
}

void CheckPartOfName(Checks& Running, const Player& Checked) {
    if (Running.FragmentHits.empty())
        Running.FragmentHits = CountFragments(Running.Current.Names, NameFragments(Running.NameLines));
    for (Long Hits = Running.FragmentHits[static_cast<std::size_t>(Checked.Slot)]; Hits > 0; --Hits)
        Punt(Running, Checked);
}

void CheckMarker(Checks& Running, const Player& Checked) {
    if (Checked.Name == NamelessPlayer) Punt(Running, Checked);
}

void CheckPlayer(Checks& Running, const Player& Checked, bool KernelMethod) {
    Naming(Checked.Address, [&] {
        CheckInvalidAddress(Running, Checked);
        // Under the kernel method the filter holds exact addresses; patterns are not enforced at all. Under
        // both nobody is punted for an address that the server does not know yet: "0.*" would match it.
        if (KernelMethod || Checked.Address == NoAddress) return;
        CheckExactAddress(Running, Checked);
        CheckAddressPrefixes(Running, Checked);
    });
    CheckWholeName(Running, Checked);
    CheckPartOfName(Running, Checked);
}

void CheckPlayers(Checks& Running, bool KernelMethod) {
    const Tick& Current = Running.Current;
    // Slot 0 is the server's own and never examined.
    for (std::size_t Slot = 1; Slot < Current.Names.size(); ++Slot) {
        // The table may have shrunk between the two reads. Nobody is judged by an address that was not read.
        if (Slot >= Current.Addrs.size()) Fail(ErrorNumber::SubscriptOutOfRange);
        const Player Checked{static_cast<Long>(Slot), Current.Names[Slot], Current.Addrs[Slot]};
        if (!Checked.Name.empty()) CheckPlayer(Running, Checked, KernelMethod);
        CheckMarker(Running, Checked);
    }
}

} // namespace

void EnforceBans(Tick& Current) {
    const BanFiles Files(Current.Profile);
    Checks Running{Current, Files, ReadNameLines(Files), {}};
    const bool KernelMethod = KernelMethodIsSet(Current.Profile);
    if (KernelMethod) {
        const auto GamePort = static_cast<std::int16_t>(ReadMapped(Current.Profile, L"GamePort"));
        EnsureFilterRuns();
        RebuildFilters(Files, GamePort);
    }
    CheckPlayers(Running, KernelMethod);
}
