// The actions of the grid's pop-up menu.
#include "window/player_menu.h"

#include "game/game_state.h"
#include "game/mdlVNT.h"
#include "game/player_actions.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "lists/slap_messages.h"
#include "window/ban_list_boxes.h"
#include "window/menus.h"
#include "window/part_question.h"
#include "window/player_rows.h"
#include "window/toolkit.h"

namespace {

// Runs an action on the selected player, who is read here and nowhere else: whatever the grid shows later,
// the action stays with the player that the administrator chose. Without a selected player nothing happens.
template <class F> void OnSelectedPlayer(F&& Action) {
    const std::optional<ChosenPlayer> Chosen = SelectedPlayer();
    if (!Chosen) return;
    const Hourglass WhileItRuns;
    Action(Chosen->Profile, Chosen->Player);
}

// Whether a read by slot still shows this text for the slot. A failed read shows nothing and has been
// reported.
bool SlotShows(Long Profile, TextView Mode, Long Slot, TextView Text) {
    const Lines BySlot = GetPlayerList(Profile, Mode).BySlot;
    const auto Element = static_cast<std::size_t>(Slot);
    return Element < BySlot.size() && BySlot[Element] == Text;
}

// A slot number outlives its player. The address is compared, too, because two players may bear one name.
bool IsStillThere(Long Profile, const ListedPlayer& Player) {
    const ServerRef Meant(Profile);
    const TextView Name = Trim(Player.Name).empty() ? NamelessPlayer : TextView(Player.Name);
    return SlotShows(Profile, L"ARRAY", Player.Slot, Name) &&
           SlotShows(Profile, L"IPARRAY", Player.Slot, Player.Ip) && Meant.IsStillThere();
}

void PuntFromSlot(Long Profile, const ListedPlayer& Player, bool Ban, TextView Reason, TextView Part) {
    const Hourglass AfterTheBoxes;
    const bool There = IsStillThere(Profile, Player);
    const PuntRequest Punt{.Profile = Profile,
                           .Name = Player.Name,
                           .Ip = Player.Ip,
                           .Slot = Player.Slot,
                           .Ban = Ban,
                           .Part = Part,
                           .Reason = Reason};
    if (There && PuntPlayer(Punt) && Ban) {
        const std::wstring Name = WithoutLineBreaks(Player.Name);
        ShowNewBan(Profile, Part.empty() ? BannedName::Whole(Name) : BannedName::Part(Part), Player.Ip);
    }
    RefreshGrid();
    if (!There) ShowMsg(MsgKind::Failed, L"The selected player is no longer in this slot!", Profile);
}

// Before any question: the answers would be lost.
bool GameRuns(Long Profile) {
    if (ReadGameState(Profile) == GameState::Running) return true;
    ShowMsg(MsgKind::Failed, L"There is no game running!", Profile);
    return false;
}

std::wstring BanTitle(const ListedPlayer& Player) { return L"Ban Player: " + Player.Name; }

std::wstring AskForReason(const ListedPlayer& Player) {
    const GridHold WhileItIsOpen;
    return Platform::AskText(L"Enter a reason why you have banned this player!", BanTitle(Player));
}

std::wstring AskForPart(const ListedPlayer& Player) {
    const GridHold WhileItIsOpen;
    return AskForPartOf(Player.Name, BanTitle(Player));
}

void AddToPermanentList(PerProfile<NameList>& List, Long Profile, const std::wstring& Name) {
    List.Grow(Profile);
    List(Profile).Add(Name, Name);
}

} // namespace

void mnuPunt_Click() {
    OnSelectedPlayer([](Long Profile, const ListedPlayer& Player) {
        if (GameRuns(Profile)) PuntFromSlot(Profile, Player, false, {}, {});
    });
}

void mnuBan1_Click() {
    OnSelectedPlayer([](Long Profile, const ListedPlayer& Player) {
        if (!GameRuns(Profile)) return;
        const std::wstring Reason = AskForReason(Player);
        if (Trim(Reason).empty())
            CatchUpRefresh();
        else
            PuntFromSlot(Profile, Player, true, Reason, AskForPart(Player));
    });
}

void mnuBan2_Click() {
    OnSelectedPlayer([](Long Profile, const ListedPlayer& Player) {
        if (GameRuns(Profile)) PuntFromSlot(Profile, Player, true, {}, AskForPart(Player));
    });
}

void mnuSwitch_Click() {
    OnSelectedPlayer([](Long Profile, const ListedPlayer& Player) {
        if (Player.Team != 1 && Player.Team != 2) return;
        if (ReadGameState(Profile) != GameState::NoGame) {
            SwitchTeam(Profile, Player.Name);
            return;
        }
        // No game: the sweep switches the player as soon as the server is between games.
        mdlVNT::SwitchQueue.Grow(Profile);
        NameList& Queue = mdlVNT::SwitchQueue(Profile);
        if (!Queue.Contains(Player.Name)) Queue.Add(Player.Name, Player.Name);
    });
}

void mnuKill_Click() {
    OnSelectedPlayer(
        [](Long Profile, const ListedPlayer& Player) { KillPlayer(Profile, Player.Name, true); });
}

void mnuDisarm_Click() {
    OnSelectedPlayer(
        [](Long Profile, const ListedPlayer& Player) { ArmPlayer(Profile, Player.Name, L"Disarm", true); });
}

void mnuRearm_Click() {
    OnSelectedPlayer(
        [](Long Profile, const ListedPlayer& Player) { ArmPlayer(Profile, Player.Name, L"Rearm", true); });
}

void mnuKillPerm_Click() {
    OnSelectedPlayer([](Long Profile, const ListedPlayer& Player) {
        AddToPermanentList(mdlVNT::KillPermList, Profile, Player.Name);
    });
}

void mnuDisarmPerm_Click() {
    OnSelectedPlayer([](Long Profile, const ListedPlayer& Player) {
        AddToPermanentList(mdlVNT::DisarmPermList, Profile, Player.Name);
    });
}

void mnuSlapItem_Click(int Message) {
    OnSelectedPlayer(
        [&](Long Profile, const ListedPlayer& Player) { SendSlap(Profile, Player.Name, SlapItem(Message)); });
}

void mnuRefresh_Click() {
    const Hourglass WhileItRuns;
    RefreshGrid();
}
