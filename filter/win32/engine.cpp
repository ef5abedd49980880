// The filtering engine of the platform.
#include "filter/engine.h"

#include "filter/win32/engine_calls.h"
#include "filter/win32/engine_keys.h"

namespace Engine {
namespace {

// The transaction lock is the whole machine's; a firewall that is being set up may hold it for seconds.
constexpr UINT32 LockMilliseconds = 15000;
// Our sublayer is asked before those of others. A block cannot be overruled by a mere permit anyway.
constexpr UINT16 SubLayerWeight = 0xFFFF;
constexpr UINT8 Udp = 17; // all that the game speaks

wchar_t Name[] = L"Vantor packet filter"; // the platform's structures want it writable

EngineCalls Calls; // bound while a session is open
HANDLE Session = nullptr;
USHORT Opened = 0; // sessions of this process so far
GUID Key;          // of the provider and the sublayer
UINT32 FilterFlags = EngineKeys::IndexedFilter;

// Which error comes after the engine's service was restarted is not documented, so every failure to reach it
// counts as its end, but those that say that it is busy.
bool IsUnreachable(DWORD Error) {
    if (Error == RPC_S_SERVER_TOO_BUSY || Error == RPC_S_OUT_OF_RESOURCES) return false;
    return (Error >= RPC_S_INVALID_STRING_BINDING && Error <= RPC_X_BAD_STUB_DATA) ||
           Error == RPC_S_COMM_FAILURE || HRESULT_FACILITY(Error) == FACILITY_RPC;
}

Failure AddProvider() {
    FWPM_PROVIDER0 Provider{};
    Provider.providerKey = Key;
    Provider.displayData.name = Name;
    return {"FwpmProviderAdd0", Calls.FwpmProviderAdd0(Session, &Provider, nullptr)};
}

Failure AddSubLayer() {
    FWPM_SUBLAYER0 SubLayer{};
    SubLayer.subLayerKey = Key;
    SubLayer.displayData.name = Name;
    SubLayer.providerKey = &Key;
    SubLayer.weight = SubLayerWeight;
    return {"FwpmSubLayerAdd0", Calls.FwpmSubLayerAdd0(Session, &SubLayer, nullptr)};
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

Failure OpenSession() {
    Key = EngineKeys::OfSession(GetCurrentProcessId(), ++Opened);
    FWPM_SESSION0 Wanted{};
    Wanted.displayData.name = Name;
    Wanted.flags = EngineKeys::DynamicSession;
    Wanted.txnWaitTimeoutInMSec = LockMilliseconds;
    return {"FwpmEngineOpen0", Calls.FwpmEngineOpen0(nullptr, RPC_C_AUTHN_WINNT, nullptr, &Wanted, &Session)};
}

// By the documentation the first; which of them Windows 7 answers is not known.
bool IsRefusedFlag(DWORD Error) {
    return Error == static_cast<DWORD>(FWP_E_INVALID_FLAGS) ||
           Error == static_cast<DWORD>(FWP_E_INVALID_PARAMETER) || Error == ERROR_INVALID_PARAMETER;
}

// An engine that does not know the flag gets the filter without it, as do all further ones.
DWORD AddFilter(FWPM_FILTER0& Wanted, std::uint64_t& Filter) {
    Wanted.flags = FilterFlags;
    DWORD Error = Calls.FwpmFilterAdd0(Session, &Wanted, nullptr, &Filter);
    if (FilterFlags == 0 || !IsRefusedFlag(Error)) return Error;
    Wanted.flags = 0;
    Error = Calls.FwpmFilterAdd0(Session, &Wanted, nullptr, &Filter);
    if (Error == ERROR_SUCCESS) FilterFlags = 0;
    return Error;
}

} // namespace

Failure Open() {
    if (const Failure Failed = BindEngine(Calls)) return Failed;
    if (const Failure Failed = OpenSession()) {
        ReleaseEngine(Calls);
        return Failed;
    }
    const Failure Failed = AddOwnObjects();
    if (Failed) Close(); // aborts the transaction
    return Failed;
}

// If the engine refuses to close it, the session lives until the process ends, and the next has a key of its
// own.
void Close() noexcept {
    Calls.FwpmEngineClose0(Session);
    ReleaseEngine(Calls);
}

Failure Check() {
    FWPM_SUBLAYER0* Found = nullptr;
    const DWORD Error = Calls.FwpmSubLayerGetByKey0(Session, &Key, &Found);
    if (Error == ERROR_SUCCESS) Calls.FwpmFreeMemory0(reinterpret_cast<void**>(&Found));
    return {"FwpmSubLayerGetByKey0", Error};
}

bool IsLoss(const Failure& Failed) {
    return Failed.Code == static_cast<DWORD>(FWP_E_SESSION_ABORTED) ||
           Failed.Code == static_cast<DWORD>(FWP_E_SUBLAYER_NOT_FOUND) ||
           Failed.Code == ERROR_INVALID_HANDLE || IsUnreachable(Failed.Code);
}

Failure Begin() { return {"FwpmTransactionBegin0", Calls.FwpmTransactionBegin0(Session, 0)}; }
Failure Commit() { return {"FwpmTransactionCommit0", Calls.FwpmTransactionCommit0(Session)}; }
Failure Abort() { return {"FwpmTransactionAbort0", Calls.FwpmTransactionAbort0(Session)}; }

Failure Add(const Rule& Blocked, std::uint64_t& Filter) {
    FWP_CONDITION_VALUE0 Address{}, Port{}, Protocol{};
    Address.type = FWP_UINT32;
    Address.uint32 = Blocked.Address;
    Port.type = FWP_UINT16;
    Port.uint16 = Blocked.Port;
    // Else the type of an ICMP message would be compared with the port: a rule for port 8 would drop pings.
    Protocol.type = FWP_UINT8;
    Protocol.uint8 = Udp;
    FWPM_FILTER_CONDITION0 Conditions[] = {Equal(EngineKeys::RemoteAddress, Address),
                                           Equal(EngineKeys::LocalPort, Port),
                                           Equal(EngineKeys::Protocol, Protocol)};
    FWPM_FILTER0 Wanted{};
    Wanted.displayData.name = Name;
    Wanted.providerKey = &Key;
    Wanted.layerKey = EngineKeys::InboundTransportV4;
    Wanted.subLayerKey = Key;
    Wanted.weight.type = FWP_EMPTY; // the engine's own choice: our filters never overlap
    Wanted.numFilterConditions = ARRAYSIZE(Conditions);
    Wanted.filterCondition = Conditions;
    Wanted.action.type = FWP_ACTION_BLOCK;
    return {"FwpmFilterAdd0", AddFilter(Wanted, Filter)};
}

Failure Remove(std::uint64_t Filter) {
    return {"FwpmFilterDeleteById0", Calls.FwpmFilterDeleteById0(Session, Filter)};
}

} // namespace Engine
