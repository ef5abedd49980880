#include "enforcement/permanent_lists.h"

#include "game/mdlVNT.h"
#include "game/player_actions.h"

namespace {

void Prune(NameList& List, const NameSet& Present) {
    Lines Gone;
    for (const auto& Entry : List)
        if (!Entry.Item.empty() && !InArray(Present, Entry.Item)) Gone.push_back(Entry.Item);
    for (const std::wstring& Name : Gone) List.Remove(Name);
}

} // namespace

bool InKillPermList(Long Index, TextView Name) {
    return mdlVNT::KillPermList(Index).Contains(std::wstring(Name));
}

bool InDisarmPermList(Long Index, TextView Name) {
    return mdlVNT::DisarmPermList(Index).Contains(std::wstring(Name));
}

bool InArray(const NameSet& Elements, TextView Value) { return Elements.count(std::wstring(Value)) != 0; }

void EnforcePermanentLists(Long Index, const Lines& NameBySlot) {
    for (std::size_t Slot = 1; Slot < NameBySlot.size(); ++Slot) {
        const std::wstring& Name = NameBySlot[Slot];
        if (Name.empty()) continue;
        if (InKillPermList(Index, Name)) KillPlayer(Index, Name, false);
        if (InDisarmPermList(Index, Name)) ArmPlayer(Index, Name, L"Disarm", false);
    }
}

void PrunePermanentLists(Long Index, const Lines& NameBySlot) {
    if (mdlVNT::KillPermList(Index).Count() == 0 && mdlVNT::DisarmPermList(Index).Count() == 0) return;
    const NameSet Present(NameBySlot.begin(), NameBySlot.end());
    Prune(mdlVNT::KillPermList(Index), Present);
    Prune(mdlVNT::DisarmPermList(Index), Present);
}
