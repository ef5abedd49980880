#include "plugin/lifecycle.h"

#include "enforcement/kernel_method.h"
#include "enforcement/tick.h"
#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/show_msg.h"
#include "window/frmVNT.h"

namespace {

ProfileRecord RecordFrom(const Pdat& Data) {
    ProfileRecord Record;
    Record.HostText0 = PdatText(Data, PdatElement::HostText0);
    Record.GameId = PdatText(Data, PdatElement::GameId);
    Record.ProcessRef = PdatNumber(Data, PdatElement::ProcessRef);
    Record.HostText3 = PdatText(Data, PdatElement::HostText3);
    Record.HostText4 = PdatText(Data, PdatElement::HostText4);
    Record.HostText5 = PdatText(Data, PdatElement::HostText5);
    Record.MessageRef = PdatNumber(Data, PdatElement::MessageRef);
    Record.ProfileFolder = PdatText(Data, PdatElement::ProfileFolder);
    RefuseLineBreaks(Record.ProfileFolder); // it becomes a key of Players.ini
    Record.HostText8 = PdatText(Data, PdatElement::HostText8);
    Record.IsAffiliate = IsAffiliateGame(Record.GameId);
    return Record;
}

template <class T> void ResetElement(PerProfile<T>& Array, Long Index) {
    if (Array.Has(Index)) Array(Index) = T();
}

} // namespace

bool SetProfileData(Long Index, const Pdat& Data) noexcept {
    return Trapped(L"SetProfileData", Index, [&] {
        CheckProfileIndex(Index);
        mdlVNT::LastProcessRef = PdatNumber(Data, PdatElement::ProcessRef);
        mdlVNT::GrowProfileArrays(Index);
        mdlVNT::IpListChanged(Index) = true;
        // As a whole or not at all: half a record would read one server and send its commands to another.
        mdlVNT::Profiles(Index) = RecordFrom(Data);
        SetMemory(Index, mdlVNT::Profiles(Index).IsAffiliate);
    });
}

void LoadInterface(Long Index, std::intptr_t pHwnd, const Pdat& Data) {
    if (Index == 0 || !SetProfileData(Index, Data)) return; // a failure has been reported
    // Before the profile changes: without them the window would show one profile and edit another.
    const Long AreaWidth = PdatNumber(Data, PdatElement::AreaWidth);
    const Long AreaHeight = PdatNumber(Data, PdatElement::AreaHeight);
    mdlVNT::CurrentProfile = Index;
    frmVNT::FillArea(AreaWidth, AreaHeight);
    frmVNT::ShowFirstPage();
    frmVNT::SetParent(pHwnd);
    frmVNT::FormReload();
    frmVNT::Show();
    // Not if the host has closed it meanwhile, inside a helper call.
    if (HasMemoryMap(Index) && frmVNT::IsLoaded()) frmVNT::LoadSweepTimer(Index, TickSeconds * 1000);
}

void HideInterface() { frmVNT::Hide(); }

void UnLoadInterface() {
    mdlVNT::HostName.clear();
    mdlVNT::LastProcessRef = 0;
    mdlVNT::MemoryMap.Reset();
    mdlVNT::LifeStates.Reset();
    mdlVNT::ArmedFlags.Reset();
    mdlVNT::SwitchQueue.Reset();
    mdlVNT::IdleTables.Reset();
    // The permanent kill and disarm lists stay on purpose: they last for a player's stay on the server.
    frmVNT::Unload();
    TakeDownFilter();
}

void DisableProfile(Long Index) {
    CheckProfileIndex(Index);
    frmVNT::UnloadSweepTimer(Index);
    if (mdlVNT::IpListChanged.Has(Index)) mdlVNT::IpListChanged(Index) = true;
    ResetElement(mdlVNT::MemoryMap, Index);
    ResetElement(mdlVNT::KillPermList, Index);
    ResetElement(mdlVNT::DisarmPermList, Index);
    ResetElement(mdlVNT::SwitchQueue, Index);
    ResetElement(mdlVNT::LifeStates, Index);
    ResetElement(mdlVNT::ArmedFlags, Index);
    ResetElement(mdlVNT::IdleTables, Index);
}
