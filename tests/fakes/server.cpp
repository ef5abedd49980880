#include "tests/fakes/server.h"

#include "game/mdlVNT.h"
#include "plugin/lifecycle.h"
#include "sandbox/game/records.h"
#include "tests/fakes/fake_toolkit.h"

Server::Server(const ServerSettings& Settings) {
    World.Memory = Owned.Memory;
    World.Setup.Build = Settings.Build;
    World.Setup.MaxPlayers = Settings.MaxPlayers;
    World.Setup.Dedicated = Settings.Dedicated;
    World.Setup.GameType = Settings.GameType;
    World.Setup.State = Settings.State;
    Simulation::Start(World);
    Outside::Reset();
    FakeWindow::Reset();
    Outside::AttachGame(ProcessRef, &World);
    Outside::PutFolder(L"C:\\Host\\profiles\\Server1\\settings");
    const bool Affiliate = Settings.Build == Layout::Build::Affiliate;
    SetProfileData(TestProfile, HostData(L"Server1", Affiliate ? L"DF_AFF" : L"DF"));
    Outside::Calls = 0;
}

Server::~Server() { Outside::DetachAll(); }

void Server::Join(int Slot, std::string_view Name, std::string_view Address, int Team, int Ping) {
    Simulation::Join(World, Slot, Name, Address, static_cast<std::uint8_t>(Team), Ping);
}

void Server::Leave(int Slot) { Simulation::Leave(World, Slot); }

Long Server::Stats(int Slot, std::uint32_t Offset) const {
    return Simulation::ReadLong(World.Memory, Simulation::RecordAt(World, Slot) + Offset);
}

void Server::SetStats(int Slot, std::uint32_t Offset, Long Value) {
    Simulation::WriteLong(World.Memory, Simulation::RecordAt(World, Slot) + Offset, Value);
}

Long Server::Life(int Slot) const {
    return Simulation::ReadLong(World.Memory, Simulation::EntityAt(World, Slot) + Layout::Entity::LifeState);
}

void Server::SetLife(int Slot, Long Value) {
    Simulation::WriteLong(World.Memory, Simulation::EntityAt(World, Slot) + Layout::Entity::LifeState, Value);
}

void Server::SetWord(std::uint32_t Address, Long Value) {
    Simulation::WriteLong(World.Memory, Address, Value);
}

Pdat HostData(TextView Folder, TextView GameId, Long Process) {
    Pdat Data(14);
    for (HostValue& Value : Data) Value.Text = L"text";
    Data[PdatElement::GameId].Text = GameId;
    Data[PdatElement::ProcessRef] = {ToText(Process), Process, true};
    Data[PdatElement::MessageRef] = {ToText(Process), Process, true};
    Data[PdatElement::ProfileFolder].Text = Folder;
    Data[PdatElement::Administrator].Text = L"admin1";
    Data[PdatElement::HostWideLogs] = {L"False", 0, false};
    Data[PdatElement::AreaHeight] = {L"9000", 9000, true};
    Data[PdatElement::AreaWidth] = {L"12000", 12000, true};
    return Data;
}

RemoteRequest Request(std::wstring Data) {
    RemoteRequest Made{TestProfile, HostData(), HostValue{}};
    Made.Data->Text = std::move(Data);
    return Made;
}

Long Call(const RemoteMember<Long>& Member, const RemoteRequest& Sent) {
    Long Result = 0;
    CallMember(Member, Sent.Profile, Result, [&]() -> const RemoteRequest& { return Sent; });
    return Result;
}

std::wstring CallGetPlayersRem(const RemoteRequest& Sent) {
    std::wstring Reply;
    CallMember(GetPlayersRem, Sent.Profile, Reply, [&]() -> const RemoteRequest& { return Sent; });
    return Reply;
}

namespace {

template <class F> void CallFromHost(TextView Name, Long Index, F&& Member) {
    const Work Call(Work::Kind::HostCall, Index);
    Trapped(Name, Index, std::forward<F>(Member));
}

} // namespace

void Load(Long Index, std::intptr_t pHwnd, const Pdat& Data) {
    CallFromHost(L"LoadInterface", Index, [&] { LoadInterface(Index, pHwnd, Data); });
}
void UnLoad() { CallFromHost(L"UnLoadInterface", mdlVNT::CurrentProfile, UnLoadInterface); }
void Disable(Long Index) {
    CallFromHost(L"DisableProfile", Index, [&] { DisableProfile(Index); });
}

std::wstring SettingsFile(TextView Name) {
    return L"C:\\Host\\profiles\\Server1\\settings\\" + std::wstring(Name);
}

void BanName(TextView Key) {
    Outside::PutIni(SettingsFile(L"BannedNames.ini"), L"Players", Key, L"2024-01-01 1:02:03[-]None");
}

void BanIp(TextView Pattern) {
    Outside::PutIni(SettingsFile(L"BannedIps.ini"), L"IpAddresses", Pattern, L"2024-01-01 1:02:03");
}

Lines Commands() {
    Lines Texts;
    for (const std::wstring& Text : Outside::Recorded(L"CMD 1 ")) Texts.push_back(Text.substr(6));
    return Texts;
}
