// The filtering engine of the platform.
#include "filter/engine.h"

#include "filter/win32/engine_keys.h"

namespace Engine {
namespace {

// The transaction lock is the whole machine's; a firewall that is being set up may hold it for seconds.
constexpr UINT32 LockMilliseconds = 15000;
// Our sublayer is asked before those of others. A block cannot be overruled by a mere permit anyway.
constexpr UINT16 SubLayerWeight = 0xFFFF;

wchar_t Name[] = L"Vantor packet filter"; // the platform's structures want it writable

HANDLE Session = nullptr;
GUID Key; // of the provider and the sublayer

Failure AddProvider() {
    FWPM_PROVIDER0 Provider{};
    Provider.providerKey = Key;
    Provider.displayData.name = Name;
    return {"FwpmProviderAdd0", FwpmProviderAdd0(Session, &Provider, nullptr)};
}

Failure AddSubLayer() {
    FWPM_SUBLAYER0 SubLayer{};
    SubLayer.subLayerKey = Key;
    SubLayer.displayData.name = Name;
    SubLayer.providerKey = &Key;
    SubLayer.weight = SubLayerWeight;
    return {"FwpmSubLayerAdd0", FwpmSubLayerAdd0(Session, &SubLayer, nullptr)};
}

Failure AddOwnObjects() {
    if (const Failure Failed = Begin()) return Failed;
    if (const Failure Failed = AddProvider()) return Failed;
    if (const Failure Failed = AddSubLayer()) return Failed;
    return Commit();
}

FWPM_FILTER_CONDITION0 Equal(const GUID& Field, const FWP_CONDITION_VALUE0& Value) {
    return {Field, FWP_MATCH_EQUAL, Value};
}

} // namespace

Failure Open() {
    Key = EngineKeys::OfProcess(GetCurrentProcessId());
    FWPM_SESSION0 Wanted{};
    Wanted.displayData.name = Name;
    Wanted.flags = EngineKeys::DynamicSession;
    Wanted.txnWaitTimeoutInMSec = LockMilliseconds;
    const DWORD Error = FwpmEngineOpen0(nullptr, RPC_C_AUTHN_WINNT, nullptr, &Wanted, &Session);
    if (Error != ERROR_SUCCESS) return {"FwpmEngineOpen0", Error};
    const Failure Failed = AddOwnObjects();
    if (Failed) Close(); // aborts the transaction
    return Failed;
}

void Close() noexcept { FwpmEngineClose0(Session); }

Failure Check() {
    FWPM_SUBLAYER0* Found = nullptr;
    const DWORD Error = FwpmSubLayerGetByKey0(Session, &Key, &Found);
    if (Error == ERROR_SUCCESS) FwpmFreeMemory0(reinterpret_cast<void**>(&Found));
    return {"FwpmSubLayerGetByKey0", Error};
}

Failure Begin() { return {"FwpmTransactionBegin0", FwpmTransactionBegin0(Session, 0)}; }
Failure Commit() { return {"FwpmTransactionCommit0", FwpmTransactionCommit0(Session)}; }
Failure Abort() { return {"FwpmTransactionAbort0", FwpmTransactionAbort0(Session)}; }

Failure Add(const Rule& Blocked, std::uint64_t& Filter) {
    FWP_CONDITION_VALUE0 Address{}, Port{};
    Address.type = FWP_UINT32;
    Address.uint32 = Blocked.Address;
    Port.type = FWP_UINT16;
    Port.uint16 = Blocked.Port;
    FWPM_FILTER_CONDITION0 Conditions[] = {Equal(EngineKeys::RemoteAddress, Address),
                                           Equal(EngineKeys::LocalPort, Port)};
    FWPM_FILTER0 Wanted{};
    Wanted.displayData.name = Name;
    Wanted.providerKey = &Key;
    Wanted.layerKey = EngineKeys::InboundTransportV4;
    Wanted.subLayerKey = Key;
    Wanted.weight.type = FWP_EMPTY; // the engine's own choice: our filters never overlap
    Wanted.numFilterConditions = ARRAYSIZE(Conditions);
    Wanted.filterCondition = Conditions;
    Wanted.action.type = FWP_ACTION_BLOCK;
    return {"FwpmFilterAdd0", FwpmFilterAdd0(Session, &Wanted, nullptr, &Filter)};
}

Failure Remove(std::uint64_t Filter) {
    return {"FwpmFilterDeleteById0", FwpmFilterDeleteById0(Session, Filter)};
}

} // namespace Engine
