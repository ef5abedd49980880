// The actions of the grid's pop-up menu.
#include "window/player_menu.h"

#include <algorithm>

#include "game/game_state.h"
#include "game/mdlVNT.h"
#include "game/player_actions.h"
#include "game/show_msg.h"
#include "host/platform.h"
#include "host/work.h"
#include "lists/slap_messages.h"
#include "window/ban_list_boxes.h"
#include "window/ids.h"
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

// Whether the slot still holds the player: two may have the same name, and an address may not be known yet.
bool StandsIn(const PlayerTable& Table, const ListedPlayer& Player) {
    return std::ranges::any_of(Table.Rows, [&](const ListedPlayer& Present) {
        return Present.Slot == Player.Slot && Present.Name == Player.Name &&
               (Present.Ip == Player.Ip || !IsKnownIp(Present.Ip) || !IsKnownIp(Player.Ip));
    });
}

// A slot number outlives its player, so look again, after all questions. Returns what became of the punt.
PuntOutcome PuntFromSlot(const PuntRequest& Request, const ListedPlayer& Player) {
    const Hourglass AfterTheBoxes;
    const PlayerTable Present = GetPlayerList(Request.Profile, L"LIST");
    const bool There = StandsIn(Present, Player);
    PuntOutcome Outcome;
    if (There) Outcome = PuntPlayer(Request);
    ShowNewBan(Outcome.Ban);
    RefreshGrid();
    if (!There && Present.Complete) // a failed read has been reported
        ShowMsg(MsgKind::Failed, L"The selected player is no longer in this slot!", Request.Profile);
    return Outcome;
}

PuntRequest RequestFor(Long Profile, const ListedPlayer& Player) {
    return {.Profile = Profile, .Name = Player.Name, .Ip = Player.Ip, .Slot = Player.Slot};
}

// Before any question: the answers would be lost.
bool GameRuns(Long Profile) {
    if (ReadGameState(Profile) == GameState::Running) return true;
    ShowMsg(MsgKind::Failed, L"There is no game running!", Profile);
    return false;
}

std::wstring BanTitle(const ListedPlayer& Player) { return L"Ban Player: " + Player.Name; }

std::wstring AskForReason(const ListedPlayer& Player) {
    const Work WhileItIsOpen(Work::Kind::GridHold, 0);
    return Platform::AskText(L"Enter a reason why you have banned this player!", BanTitle(Player));
}

std::optional<BannedName> AskForEntry(const ListedPlayer& Player) {
    const Work WhileItIsOpen(Work::Kind::GridHold, 0);
    return AskForEntry(BannedName::Whole(WithoutControls(Player.Name)), BanTitle(Player),
                       IsKnownIp(Player.Ip) ? Player.Ip : std::wstring());
}

// What the questions have led to, where it is not just the name and the address.
std::wstring BanSummary(const BanOutcome& Stored) {
    std::wstring Text;
    if (Stored.Name) Text = L"Everybody is banned whose name contains \"" + Stored.Name->Name + L"\".";
    if (!Stored.Ip.empty())
        Text += (Text.empty() ? L"The address " : L"\r\nThe address ") + Stored.Ip + L" is banned.";
    return Text;
}

void BanFromSlot(Long Profile, const ListedPlayer& Player, TextView Reason) {
    const std::optional<BannedName> Entry = AskForEntry(Player);
    if (!Entry) return CatchUpRefresh();
    PuntRequest Request = RequestFor(Profile, Player);
    Request.Ban = true;
    Request.Entry = Entry;
    Request.Reason = Reason;
    const BanOutcome Stored = PuntFromSlot(Request, Player).Ban;
    if (Entry->Tag != BannedName::Whole({}).Tag && Stored.IsBan())
        ShowMsg(MsgKind::Success, BanSummary(Stored), Profile);
}

void AddToPermanentList(PerProfile<NameList>& List, Long Profile, const std::wstring& Name) {
    List.Grow(Profile);
    Naming(Name, [&] { List(Profile).Add(Name, Name); });
}

} // namespace

void mnuPunt_Click() {
    OnSelectedPlayer([](Long Profile, const ListedPlayer& Player) {
        if (GameRuns(Profile)) PuntFromSlot(RequestFor(Profile, Player), Player);
    });
}

void mnuBan1_Click() {
    OnSelectedPlayer([](Long Profile, const ListedPlayer& Player) {
        if (!GameRuns(Profile)) return;
        const std::wstring Reason = AskForReason(Player);
        if (Trim(Reason).empty())
            CatchUpRefresh();
        else
            BanFromSlot(Profile, Player, Reason);
    });
}

void mnuBan2_Click() {
    OnSelectedPlayer([](Long Profile, const ListedPlayer& Player) {
        if (GameRuns(Profile)) BanFromSlot(Profile, Player, {});
    });
}

void mnuSwitch_Click() {
    OnSelectedPlayer([](Long Profile, const ListedPlayer& Player) {
        if (Player.Team != 1 && Player.Team != 2) return;
        if (ReadGameState(Profile) != GameState::NoGame) {
            SwitchTeam(Profile, Player.Name);
            return RefreshGrid(); // or a second try would switch back
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

std::vector<int> LastingEntries() {
    const std::optional<ChosenPlayer> Chosen = SelectedPlayer();
    std::vector<int> Entries;
    const auto AddIfListed = [&](int Entry, PerProfile<NameList>& List) {
        if (Chosen && List.Has(Chosen->Profile) && List(Chosen->Profile).Contains(Chosen->Player.Name))
            Entries.push_back(Entry);
    };
    AddIfListed(ID_mnuKillPerm, mdlVNT::KillPermList);
    AddIfListed(ID_mnuDisarmPerm, mdlVNT::DisarmPermList);
    AddIfListed(ID_mnuSwitch, mdlVNT::SwitchQueue);
    return Entries;
}

void mnuRefresh_Click() {
    const Hourglass WhileItRuns;
    RefreshGrid();
}
