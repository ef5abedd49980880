#include "tests/wine/filter_session.h"

#include <stdexcept>

#include "filter/win32/engine_calls.h"
#include "filter/win32/engine_keys.h"

namespace StandIn {
namespace {

EngineCalls Calls; // bound by the first session

wchar_t Name[] = L"test";

void Require(DWORD Error) {
    if (Error != ERROR_SUCCESS) throw std::runtime_error("the stand-in engine refused a call");
}

// Not the library's: no process has such a number.
GUID KeyOf(USHORT Number) { return EngineKeys::OfSession(1, Number); }

} // namespace

Session::Session(const std::wstring& Folder, USHORT Number) {
    SetEnvironmentVariableW(L"VANTOR_ENGINE_DIR", Folder.c_str()); // the library's copy has it from its place
    if (Calls.Library == nullptr) Require(BindEngine(Calls).Code);
    FWPM_SESSION0 Dynamic{};
    Dynamic.flags = EngineKeys::DynamicSession;
    Require(Calls.FwpmEngineOpen0(nullptr, RPC_C_AUTHN_WINNT, nullptr, &Dynamic, &Handle));
    FWPM_PROVIDER0 Provider{};
    FWPM_SUBLAYER0 SubLayer{};
    Provider.providerKey = SubLayer.subLayerKey = KeyOf(Number);
    Provider.displayData.name = SubLayer.displayData.name = Name;
    Require(Calls.FwpmProviderAdd0(Handle, &Provider, nullptr));
    Require(Calls.FwpmSubLayerAdd0(Handle, &SubLayer, nullptr));
}

Session::~Session() { Calls.FwpmEngineClose0(Handle); }

void Session::Begin() const { Require(Calls.FwpmTransactionBegin0(Handle, 0)); }

DWORD Session::Add(const Asked& Wanted) const {
    FWPM_FILTER_CONDITION0 Conditions[] = {
        {EngineKeys::RemoteAddress, FWP_MATCH_EQUAL, {}},
        {Wanted.HasPort ? EngineKeys::LocalPort : EngineKeys::RemoteAddress, FWP_MATCH_EQUAL, {}},
        {EngineKeys::Protocol, FWP_MATCH_EQUAL, {}}};
    Conditions[0].conditionValue.type = FWP_UINT32;
    Conditions[1].conditionValue.type = Wanted.HasPort ? FWP_UINT16 : FWP_UINT32;
    Conditions[2].conditionValue.type = FWP_UINT8;
    Conditions[2].conditionValue.uint8 = 17;
    GUID Provider = KeyOf(Wanted.Provider);
    FWPM_FILTER0 Filter{};
    Filter.displayData.name = Name;
    Filter.flags = Wanted.Flags;
    Filter.subLayerKey = KeyOf(Wanted.SubLayer);
    Filter.providerKey = &Provider;
    Filter.layerKey = EngineKeys::InboundTransportV4;
    Filter.numFilterConditions = ARRAYSIZE(Conditions);
    Filter.filterCondition = Conditions;
    Filter.action.type = FWP_ACTION_BLOCK;
    return Calls.FwpmFilterAdd0(Handle, &Filter, nullptr, nullptr);
}

} // namespace StandIn
