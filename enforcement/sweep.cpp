#include "enforcement/sweep.h"

#include "enforcement/idle_punt.h"
#include "enforcement/kernel_method.h"
#include "enforcement/name_fragments.h"
#include "enforcement/permanent_lists.h"
#include "enforcement/tick_punts.h"
#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_actions.h"
#include "game/player_table.h"
#include "game/settings.h"
#include "game/show_msg.h"
#include "host/file_helper.h"
#include "host/platform.h"
#include "lists/ban_lists.h"

namespace {

constexpr Long BetweenGames = 1; // the game state in which teams can be switched

bool TickRuns = false;

// Set while a tick is on the stack: an outside call may let the message loop run and bring the next one.
struct TickGuard {
    TickGuard() { TickRuns = true; }
    ~TickGuard() { TickRuns = false; }
    TickGuard(const TickGuard&) = delete;
    TickGuard& operator=(const TickGuard&) = delete;
};

// What one tick works with; nothing of it outlives the tick.
struct Tick {
    Long Index;
    std::wstring NamesFile, IpsFile;
    Lines Names, Addrs;
    Lines NameSection;
    std::vector<Long> FragmentHits; // by slot; empty until somebody is there to be checked
};

struct Player {
    Long Slot;
    const std::wstring& Name;
    const std::wstring& Address;
};

// --- The checks. They do not stop at the first hit: who matches several entries is punted once for each.

void Punt(const Tick& Now, const Player& Who) { PuntInTick(Now.Index, Who.Name, Who.Address, Who.Slot); }

void CheckInvalidAddress(Tick& Now, const Player& Who) {
    if (!IsValidIp(Who.Address)) Punt(Now, Who);
}

void PuntIfBanned(Tick& Now, const Player& Who, TextView Section, const std::wstring& File,
                  const std::wstring& Key) {
    if (!FileHelper::GetIniKey(Section, Key, File).empty()) Punt(Now, Who);
}

void CheckExactAddress(Tick& Now, const Player& Who) {
    PuntIfBanned(Now, Who, IpsSection, Now.IpsFile, Who.Address);
}

void CheckAddressPrefixes(Tick& Now, const Player& Who) {
    if (Trim(Who.Address).empty()) return;
    // "1.*", "1.2.*" and "1.2.3.*"
    std::size_t Point = 0;
    for (int Parts = 1; Parts <= 3; ++Parts, ++Point) {
        Point = Who.Address.find(L'.', Point);
        if (Point == std::wstring::npos) return;
        PuntIfBanned(Now, Who, IpsSection, Now.IpsFile, Who.Address.substr(0, Point + 1) + L'*');
    }
}

void CheckWholeName(Tick& Now, const Player& Who) {
    PuntIfBanned(Now, Who, NamesSection, Now.NamesFile, Who.Name + std::wstring(WholeName));
}

// The part-of-name entries, each parsed once in a tick.
Lines ReadFragments(const Tick& Now) {
    Lines Fragments;
    for (const std::wstring& Entry : Now.NameSection) {
        if (Entry.empty()) continue;
        std::wstring Key = FileHelper::ParseIniEntry(Entry).first;
        if (!Key.ends_with(PartOfName)) continue;
        Key.resize(Key.size() - PartOfName.size());
        Fragments.push_back(std::move(Key));
    }
    return Fragments;
}

void CheckPartOfName(Tick& Now, const Player& Who) {
    if (Now.FragmentHits.empty()) Now.FragmentHits = CountFragments(Now.Names, ReadFragments(Now));
    for (Long Hits = Now.FragmentHits[static_cast<std::size_t>(Who.Slot)]; Hits > 0; --Hits) Punt(Now, Who);
}

void CheckMarker(Tick& Now, const Player& Who) {
    if (Who.Name == NamelessPlayer) Punt(Now, Who);
}

// A failure in the checks of one player's address says which address it was.
template <class F> void WithAddressInReport(const Player& Who, F&& Check) {
    try {
        std::forward<F>(Check)();
    } catch (Failure& Caught) {
        Caught.Description += L" [" + Who.Address + L"]";
        throw;
    }
}

// --- The two ban methods.

// Whether an array has been read.
bool IsArrayReady(const Lines& Array) { return !Array.empty(); }

void CheckPlayer(Tick& Now, const Player& Who, bool KernelMethod) {
    WithAddressInReport(Who, [&] {
        CheckInvalidAddress(Now, Who);
        // Under the kernel method the filter holds exact addresses; patterns are not enforced at all.
        if (KernelMethod) return;
        CheckExactAddress(Now, Who);
        CheckAddressPrefixes(Now, Who);
    });
    CheckWholeName(Now, Who);
    CheckPartOfName(Now, Who);
}

void CheckPlayers(Tick& Now, bool KernelMethod) {
    if (!IsArrayReady(Now.Names)) return;
    // Slot 0 is the server's own and never examined.
    for (std::size_t Slot = 1; Slot < Now.Names.size() && HasMemoryMap(Now.Index); ++Slot) {
        // The table may have shrunk between the two reads. Nobody is judged by an address that was not read.
        if (Slot >= Now.Addrs.size()) Fail(ErrorNumber::SubscriptOutOfRange);
        const Player Who{static_cast<Long>(Slot), Now.Names[Slot], Now.Addrs[Slot]};
        if (!Who.Name.empty()) CheckPlayer(Now, Who, KernelMethod);
        CheckMarker(Now, Who);
    }
}

bool KernelMethodIsSet(Long Index) {
    return PlayersIniExists() && ReadSetting(Index, Setting::BanMethod) == L"1";
}

void EnforceBans(Tick& Now) {
    const bool KernelMethod = KernelMethodIsSet(Now.Index);
    if (KernelMethod) {
        const auto GamePort = static_cast<std::int16_t>(ReadMapped(Now.Index, L"GamePort"));
        EnsureFilterRuns();
        RebuildFilters(Now.Index, GamePort);
    }
    CheckPlayers(Now, KernelMethod);
}

// --- The steps of a tick.

void SwitchQueuedTeams(Long Index) {
    // Taken out first: a name that is queued while the switches run waits for the next tick.
    const NameList Queue = std::exchange(mdlVNT::SwitchQueue(Index), NameList());
    for (const auto& Entry : Queue) SwitchTeam(Index, Entry.Item);
}

// The names or addresses by slot. A read that failed is reported already; half a table must neither be judged
// nor empty the permanent lists, so that the tick ends.
bool ReadSlots(Long Index, TextView Mode, Lines& BySlot) {
    if (!HasMemoryMap(Index)) return false; // unloaded in the middle of the tick
    PlayerArray Read = GetPlayerList(Index, Mode);
    BySlot = std::move(Read.BySlot);
    return Read.Complete;
}

void Enforce(Long Index) {
    Tick Now{Index, mdlVNT::BannedNamesPath(Index), mdlVNT::BannedIpsPath(Index), {}, {}, {}, {}};
    if (!ReadSlots(Index, L"ARRAY", Now.Names) || !ReadSlots(Index, L"IPARRAY", Now.Addrs)) return;
    Now.NameSection = FileHelper::GetIniSection(NamesSection, Now.NamesFile);
    EnforceBans(Now);
    Lines Names;
    if (!ReadSlots(Index, L"ARRAY", Names)) return;
    EnforcePermanentLists(Index, Names);
    PrunePermanentLists(Index, Names);
    PuntIdlePlayers(Index);
}

} // namespace

void tmrVN_Timer(Long Index) noexcept {
    if (TickRuns) return;
    const TickGuard Guard;
    // cppcheck-suppress throwInNoexceptFunction ; Trapped lets no failure out
    Trapped(L"tmrVN", Index, [&] {
        BeginTickPunts();
        if (ReadMapped(Index, L"GameState") == BetweenGames)
            SwitchQueuedTeams(Index);
        else
            Enforce(Index);
    });
}
