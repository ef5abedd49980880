#include "enforcement/permanent_lists.h"

#include "game/mdlVNT.h"
#include "game/player_actions.h"

namespace {

void Prune(NameList& List, const NameSet& Present, const NameSet& Listed) {
    Lines Gone;
    for (const auto& Entry : List)
        if (!Entry.Item.empty() && InArray(Listed, Entry.Item) && !InArray(Present, Entry.Item))
            Gone.push_back(Entry.Item);
    for (const std::wstring& Name : Gone) List.Remove(Name);
}

} // namespace

bool InKillPermList(Long Profile, TextView Name) {
    return mdlVNT::KillPermList(Profile).Contains(std::wstring(Name));
}

bool InDisarmPermList(Long Profile, TextView Name) {
    return mdlVNT::DisarmPermList(Profile).Contains(std::wstring(Name));
}

bool InArray(const NameSet& Elements, TextView Value) { return Elements.count(std::wstring(Value)) != 0; }

void EnforcePermanentLists(Tick& Current) {
    const Long Profile = Current.Profile;
    for (std::size_t Slot = 1; Slot < Current.Names.size(); ++Slot) {
        const std::wstring& Name = Current.Names[Slot];
        if (Name.empty()) continue;
        if (InKillPermList(Profile, Name))
            SendInTick(Current, [&] { return KillPlayer(Profile, Name, false); });
        if (InDisarmPermList(Profile, Name))
            SendInTick(Current, [&] { return ArmPlayer(Profile, Name, L"Disarm", false); });
    }
}

NameSet PermanentNames(Long Profile) {
    NameSet Names;
    for (const NameList* List : {&mdlVNT::KillPermList(Profile), &mdlVNT::DisarmPermList(Profile)})
        for (const auto& Entry : *List) Names.insert(Entry.Item);
    return Names;
}

void PrunePermanentLists(const Tick& Current, const NameSet& Listed) {
    NameList& Kill = mdlVNT::KillPermList(Current.Profile);
    NameList& Disarm = mdlVNT::DisarmPermList(Current.Profile);
    if (Kill.Count() == 0 && Disarm.Count() == 0) return;
    const NameSet Present(Current.Names.begin(), Current.Names.end());
    Prune(Kill, Present, Listed);
    Prune(Disarm, Present, Listed);
}
