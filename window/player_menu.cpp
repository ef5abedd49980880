// What the grid's pop-up menu does with the player in the selected row.
#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_actions.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "lists/slap_messages.h"
#include "window/ban_tabs.h"
#include "window/handlers.h"
#include "window/menus.h"
#include "window/player_rows.h"
#include "window/toolkit.h"

namespace {

// Runs an action on the selected player, who is read here and nowhere else: whatever the grid shows later,
// the action stays with whom the administrator chose. Without a selected player there is nothing to do.
template <class F> void OnSelectedPlayer(TextView Procedure, F&& Action) noexcept {
    Trapped(Procedure, mdlVNT::CurrentProfile, [&] {
        const std::optional<ChosenPlayer> Chosen = SelectedPlayer();
        if (!Chosen) return;
        const Hourglass WhileItRuns;
        Action(Chosen->Index, Chosen->Player);
    });
}

// Whether a read by slot still shows this text for the slot. A failed read shows nothing and has been
// reported.
bool SlotShows(Long Index, TextView Mode, Long Slot, TextView Text) {
    const PlayerArray Now = GetPlayerList(Index, Mode);
    const auto Place = static_cast<std::size_t>(Slot);
    return Place < Now.BySlot.size() && Now.BySlot[Place] == Text;
}

// A slot number outlives its player. The address is compared, too, because two players may bear one name.
bool IsStillThere(Long Index, const ListedPlayer& Player) {
    const Long Slot = ToWhole(Player.Slot);
    const TextView Name = Trim(Player.Name).empty() ? NamelessPlayer : TextView(Player.Name);
    return SlotShows(Index, L"ARRAY", Slot, Name) && SlotShows(Index, L"IPARRAY", Slot, Player.Ip);
}

void PuntFromSlot(Long Index, const ListedPlayer& Player, bool Ban, TextView Reason) {
    const Hourglass AfterTheReasonBox;
    const bool There = IsStillThere(Index, Player);
    if (There && PuntPlayer(Index, Player.Name, Player.Ip, Player.Slot, Ban, Reason, false) && Ban)
        ShowNewBan(Index, WithoutLineBreaks(Player.Name), Player.Ip);
    RefreshGrid();
    if (!There) ShowMsg(MsgKind::Failed, L"The selected player is no longer in this slot!", Index);
}

std::wstring AskForReason(TextView Name) {
    const GridHold WhileItIsOpen;
    return Platform::AskText(L"Enter a reason why you have banned this player!",
                             L"Ban Player: " + std::wstring(Name));
}

void AddToPermanentList(PerProfile<NameList>& List, Long Index, const std::wstring& Name) {
    List.Grow(Index);
    List(Index).Add(Name, Name);
}

} // namespace

void mnuPunt_Click() noexcept {
    OnSelectedPlayer(L"mnuPunt",
                     [](Long Index, const ListedPlayer& Player) { PuntFromSlot(Index, Player, false, L""); });
}

void mnuBan1_Click() noexcept {
    OnSelectedPlayer(L"mnuBan1", [](Long Index, const ListedPlayer& Player) {
        const std::wstring Reason = AskForReason(Player.Name);
        if (Trim(Reason).empty())
            CatchUpRefresh();
        else
            PuntFromSlot(Index, Player, true, Reason);
    });
}

void mnuBan2_Click() noexcept {
    OnSelectedPlayer(L"mnuBan2",
                     [](Long Index, const ListedPlayer& Player) { PuntFromSlot(Index, Player, true, L""); });
}

void mnuSwitch_Click() noexcept {
    OnSelectedPlayer(L"mnuSwitch", [](Long Index, const ListedPlayer& Player) {
        if (Player.Team != 1 && Player.Team != 2) return;
        if (ReadMapped(Index, L"GameState") >= 1) {
            SwitchTeam(Index, Player.Name);
            return;
        }
        // No game yet: the sweep switches the player as soon as there is one.
        mdlVNT::SwitchQueue.Grow(Index);
        NameList& Queue = mdlVNT::SwitchQueue(Index);
        if (!Queue.Contains(Player.Name)) Queue.Add(Player.Name, Player.Name);
    });
}

void mnuKill_Click() noexcept {
    OnSelectedPlayer(L"mnuKill",
                     [](Long Index, const ListedPlayer& Player) { KillPlayer(Index, Player.Name, true); });
}

void mnuDisarm_Click() noexcept {
    OnSelectedPlayer(L"mnuDisarm", [](Long Index, const ListedPlayer& Player) {
        ArmPlayer(Index, Player.Name, L"Disarm", true);
    });
}

void mnuRearm_Click() noexcept {
    OnSelectedPlayer(L"mnuRearm", [](Long Index, const ListedPlayer& Player) {
        ArmPlayer(Index, Player.Name, L"Rearm", true);
    });
}

void mnuKillPerm_Click() noexcept {
    OnSelectedPlayer(L"mnuKillPerm", [](Long Index, const ListedPlayer& Player) {
        AddToPermanentList(mdlVNT::KillPermList, Index, Player.Name);
    });
}

void mnuDisarmPerm_Click() noexcept {
    OnSelectedPlayer(L"mnuDisarmPerm", [](Long Index, const ListedPlayer& Player) {
        AddToPermanentList(mdlVNT::DisarmPermList, Index, Player.Name);
    });
}

void mnuSlapItem_Click(int Item) noexcept {
    OnSelectedPlayer(L"mnuSlapItemClick", [&](Long Index, const ListedPlayer& Player) {
        SendSlap(Index, Player.Name, SlapItem(Item));
    });
}

void mnuRefresh_Click() noexcept {
    Trapped(L"mnuRefresh", mdlVNT::CurrentProfile, [] {
        const Hourglass WhileItRuns;
        RefreshGrid();
    });
}
