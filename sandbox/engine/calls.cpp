// A stand-in for the platform's filtering engine: sessions, transactions, and what is added in them. It
// refuses what the platform would refuse, as far as its documentation tells.
#include <windows.h>

#include <fwpmu.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iterator>

#include "sandbox/engine/keys.h"
#include "sandbox/engine/sessions.h"

namespace {

constexpr DWORD Refused(HRESULT Error) { return static_cast<DWORD>(Error); }

const EngineObject* Find(const EngineState& State, const std::string& Kind, const GUID& Key) {
    const auto Found = std::ranges::find_if(State.Objects, [&](const EngineObject& Entry) {
        return Entry.Kind == Kind && Entry.Key == KeyText(Key);
    });
    return Found == State.Objects.end() ? nullptr : &*Found;
}

// Whether something new in the session may refer to the object: what goes with another session may not.
DWORD Refer(const EngineState& State, const std::string& Session, const std::string& Kind, const GUID& Key,
            HRESULT Missing) {
    const EngineObject* const Found = Find(State, Kind, Key);
    if (Found == nullptr) return Refused(Missing);
    return Found->Session == Session ? ERROR_SUCCESS : Refused(FWP_E_LIFETIME_MISMATCH);
}

DWORD ReferToProvider(const EngineState& State, const std::string& Session, const GUID* Provider) {
    return Provider ? Refer(State, Session, "provider", *Provider, FWP_E_PROVIDER_NOT_FOUND) : ERROR_SUCCESS;
}

DWORD AddObject(HANDLE Engine, const char* Kind, const GUID& Key, const FWPM_DISPLAY_DATA0& Display,
                const GUID* Provider) {
    return Sessions::Change(Engine, [&](EngineState& State, const std::string& Session) {
        if (Display.name == nullptr) return Refused(FWP_E_NULL_DISPLAY_NAME);
        if (Find(State, Kind, Key)) return Refused(FWP_E_ALREADY_EXISTS);
        if (const DWORD Error = ReferToProvider(State, Session, Provider)) return Error;
        State.Objects.push_back({Kind, KeyText(Key), Session});
        return Refused(ERROR_SUCCESS);
    });
}

std::string Dotted(UINT32 Address) {
    std::string Text = std::to_string(Address >> 24);
    for (const unsigned Shift : {16U, 8U, 0U}) Text += '.' + std::to_string(Address >> Shift & 0xFF);
    return Text;
}

struct Condition {
    const char* Field;
    FWP_DATA_TYPE Type;
};
constexpr Condition Known[] = {
    {ConditionRemoteAddress, FWP_UINT32}, {ConditionLocalPort, FWP_UINT16}, {ConditionProtocol, FWP_UINT8}};
constexpr unsigned EachOnce = 0b111;

// Given is the number of a known condition, each of its own type.
DWORD ReadCondition(const FWPM_FILTER_CONDITION0& From, std::size_t& Given, EngineFilter& Filter) {
    const FWP_CONDITION_VALUE0& Value = From.conditionValue;
    for (Given = 0; Given < std::size(Known) && KeyText(From.fieldKey) != Known[Given].Field;) ++Given;
    if (Given == std::size(Known)) return Refused(FWP_E_CONDITION_NOT_FOUND);
    if (From.matchType != FWP_MATCH_EQUAL) return Refused(FWP_E_MATCH_TYPE_MISMATCH);
    if (Value.type != Known[Given].Type) return Refused(FWP_E_TYPE_MISMATCH);
    if (Value.type == FWP_UINT32) Filter.Address = Dotted(Value.uint32);
    if (Value.type == FWP_UINT16) Filter.Port = Value.uint16;
    if (Value.type == FWP_UINT8 && Value.uint8 != ProtocolUdp) return Refused(FWP_E_INVALID_PARAMETER);
    return ERROR_SUCCESS;
}

// The platform takes a field twice, for "one or the other", and none for "any": two addresses without a port
// would block all that these send. Nobody wants that here.
DWORD ReadConditions(const FWPM_FILTER0& Given, EngineFilter& Filter) {
    unsigned Fields = 0;
    for (UINT32 Index = 0; Index < Given.numFilterConditions; ++Index) {
        std::size_t Field = 0;
        if (const DWORD Error = ReadCondition(Given.filterCondition[Index], Field, Filter)) return Error;
        Fields ^= 1U << Field;
    }
    const bool IsGood = Given.numFilterConditions == std::size(Known) && Fields == EachOnce;
    return IsGood ? ERROR_SUCCESS : Refused(FWP_E_INVALID_PARAMETER);
}

DWORD ReadFilter(const FWPM_FILTER0& Given, const EngineState& State, const std::string& Session,
                 EngineFilter& Filter) {
    if (Given.displayData.name == nullptr) return Refused(FWP_E_NULL_DISPLAY_NAME);
    if (KeyText(Given.layerKey) != LayerInboundTransportV4) return Refused(FWP_E_LAYER_NOT_FOUND);
    if (const DWORD Error = Refer(State, Session, "sublayer", Given.subLayerKey, FWP_E_SUBLAYER_NOT_FOUND))
        return Error;
    if (const DWORD Error = ReferToProvider(State, Session, Given.providerKey)) return Error;
    if (Given.action.type != FWP_ACTION_BLOCK) return Refused(FWP_E_INVALID_ACTION_TYPE);
    if ((Given.flags & ~FilterFlagIndexed) != 0) return Refused(FWP_E_INVALID_FLAGS);
    if (Given.flags != 0)
        if (const DWORD Error = Sessions::Refusal("FWPM_FILTER_FLAG_INDEXED")) return Error;
    if (Given.weight.type != FWP_EMPTY) return Refused(FWP_E_INVALID_WEIGHT);
    Filter.Key = KeyText(Given.subLayerKey);
    Filter.Session = Session;
    return ReadConditions(Given, Filter);
}

} // namespace

extern "C" {

DWORD WINAPI FwpmEngineOpen0(const wchar_t* Server, UINT32 Service, SEC_WINNT_AUTH_IDENTITY_W*,
                             const FWPM_SESSION0* Session, HANDLE* Engine) {
    return Sessions::Call("FwpmEngineOpen0", [&] {
        const bool IsServiceKnown = Service == RPC_C_AUTHN_WINNT || Service == RPC_C_AUTHN_DEFAULT;
        if (Server != nullptr || !IsServiceKnown) return Refused(FWP_E_INVALID_PARAMETER);
        const bool IsDynamic = Session != nullptr && Session->flags == SessionFlagDynamic;
        return Sessions::Open(IsDynamic, Session ? Session->txnWaitTimeoutInMSec : 0, Engine);
    });
}

DWORD WINAPI FwpmEngineClose0(HANDLE Engine) {
    return Sessions::Call("FwpmEngineClose0", [&] { return Sessions::Close(Engine); });
}

DWORD WINAPI FwpmTransactionBegin0(HANDLE Engine, UINT32) {
    return Sessions::Call("FwpmTransactionBegin0", [&] { return Sessions::Begin(Engine); });
}

DWORD WINAPI FwpmTransactionCommit0(HANDLE Engine) {
    return Sessions::Call("FwpmTransactionCommit0", [&] { return Sessions::Commit(Engine); });
}

DWORD WINAPI FwpmTransactionAbort0(HANDLE Engine) {
    return Sessions::Call("FwpmTransactionAbort0", [&] { return Sessions::Abort(Engine); });
}

DWORD WINAPI FwpmProviderAdd0(HANDLE Engine, const FWPM_PROVIDER0* Given, PSECURITY_DESCRIPTOR) {
    return Sessions::Call("FwpmProviderAdd0", [&] {
        return AddObject(Engine, "provider", Given->providerKey, Given->displayData, nullptr);
    });
}

DWORD WINAPI FwpmSubLayerAdd0(HANDLE Engine, const FWPM_SUBLAYER0* Given, PSECURITY_DESCRIPTOR) {
    return Sessions::Call("FwpmSubLayerAdd0", [&] {
        return AddObject(Engine, "sublayer", Given->subLayerKey, Given->displayData, Given->providerKey);
    });
}

DWORD WINAPI FwpmSubLayerGetByKey0(HANDLE Engine, const GUID* Key, FWPM_SUBLAYER0** Found) {
    return Sessions::Call("FwpmSubLayerGetByKey0", [&] {
        EngineState State;
        if (const DWORD Error = Sessions::View(Engine, State)) return Error;
        if (!Find(State, "sublayer", *Key)) return Refused(FWP_E_SUBLAYER_NOT_FOUND);
        *Found = static_cast<FWPM_SUBLAYER0*>(std::calloc(1, sizeof **Found));
        if (*Found == nullptr) return Refused(ERROR_NOT_ENOUGH_MEMORY);
        (*Found)->subLayerKey = *Key;
        return Refused(ERROR_SUCCESS);
    });
}

DWORD WINAPI FwpmFilterAdd0(HANDLE Engine, const FWPM_FILTER0* Given, PSECURITY_DESCRIPTOR, UINT64* Id) {
    return Sessions::Call("FwpmFilterAdd0", [&] {
        return Sessions::Change(Engine, [&](EngineState& State, const std::string& Session) {
            EngineFilter New;
            if (const DWORD Error = Sessions::Refusal("FwpmFilterAdd0", State.Filters.size() + 1))
                return Error;
            if (const DWORD Error = ReadFilter(*Given, State, Session, New)) return Error;
            State.Filters[++State.LastId] = New;
            if (Id != nullptr) *Id = State.LastId;
            return Refused(ERROR_SUCCESS);
        });
    });
}

DWORD WINAPI FwpmFilterDeleteById0(HANDLE Engine, UINT64 Id) {
    return Sessions::Call("FwpmFilterDeleteById0", [&] {
        return Sessions::Change(Engine, [&](EngineState& State, const std::string& Session) {
            const auto Found = State.Filters.find(Id);
            if (Found == State.Filters.end()) return Refused(FWP_E_FILTER_NOT_FOUND);
            if (Found->second.Session != Session) return Refused(FWP_E_WRONG_SESSION);
            State.Filters.erase(Found);
            return Refused(ERROR_SUCCESS);
        });
    });
}

void WINAPI FwpmFreeMemory0(void** Memory) {
    std::free(*Memory);
    *Memory = nullptr;
}

} // extern "C"
