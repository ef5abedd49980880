#include "plugin/lifecycle.h"

#include "enforcement/kernel_method.h"
#include "enforcement/tick.h"
#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/show_msg.h"
#include "host/work.h"
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
    RefuseControls(Record.ProfileFolder); // it becomes a key of Players.ini
    Record.HostText8 = PdatText(Data, PdatElement::HostText8);
    Record.IsAffiliate = IsAffiliateGame(Record.GameId);
    return Record;
}

} // namespace

bool SetProfileData(Long Index, const Pdat& Data) noexcept {
    return Trapped(L"SetProfileData", Index, [&] {
        CheckProfileIndex(Index);
        mdlVNT::LastProcessRef = PdatNumber(Data, PdatElement::ProcessRef);
        mdlVNT::GrowProfileArrays(Index);
        mdlVNT::IpListChanged(Index) = true;
        // As a whole or not at all: half a record would read one server and send its commands to another.
        ProfileRecord Record = RecordFrom(Data);
        if (IsOtherServer(Record, mdlVNT::Profiles(Index))) {
            Work::End(Index, Work::Fate::Exchanged);
            mdlVNT::ClearProfile(Index); // nobody is punished for what a namesake did elsewhere
        }
        mdlVNT::Profiles(Index) = std::move(Record);
        SetMemory(Index, mdlVNT::Profiles(Index).IsAffiliate);
    });
}

void LoadInterface(Long Index, std::intptr_t pHwnd, const Pdat& Data) {
    if (Index == 0 || !SetProfileData(Index, Data)) return; // a failure has been reported
    const Work Own(Work::Kind::Load, Index);
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
    if (Own.ItsFate() != Work::Fate::Closed && frmVNT::IsLoaded())
        frmVNT::LoadSweepTimer(Index, TickSeconds * 1000);
}

void HideInterface() { frmVNT::Hide(); }

void UnLoadInterface() {
    Work::EndAll();
    mdlVNT::HostName.clear();
    mdlVNT::LastProcessRef = 0;
    mdlVNT::MemoryMap.Reset();
    mdlVNT::LifeStates.Reset();
    mdlVNT::ArmedFlags.Reset();
    mdlVNT::SwitchQueue.Reset();
    mdlVNT::IdleTables.Reset();
    mdlVNT::TakesNoCommands.Reset();
    mdlVNT::Outages.Reset();
    // The permanent kill and disarm lists stay on purpose: they last for a player's stay on the server.
    frmVNT::Unload();
    TakeDownFilter();
}

void DisableProfile(Long Index) {
    CheckProfileIndex(Index);
    Work::End(Index, Work::Fate::Closed);
    frmVNT::UnloadSweepTimer(Index);
    mdlVNT::ClearProfile(Index);
}
