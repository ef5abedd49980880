#include "filter/win32/engine_view.h"

#include <algorithm>

#include "filter/win32/engine_calls.h"
#include "filter/win32/engine_keys.h"

namespace {

constexpr UINT32 PageSize = 256;

// Shows every object of an enumeration to See, until Next, a call of the engine, returns a page that is not
// full.
template <class Object, class Procedure>
DWORD ForEach(const EngineCalls& Calls, HANDLE Session, HANDLE Enumeration,
              DWORD(WINAPI* Next)(HANDLE, HANDLE, UINT32, Object***, UINT32*), Procedure See) {
    for (;;) {
        Object** Page = nullptr;
        UINT32 Count = 0;
        if (const DWORD Error = Next(Session, Enumeration, PageSize, &Page, &Count)) return Error;
        for (UINT32 Index = 0; Index < Count; ++Index) See(*Page[Index]);
        Calls.FwpmFreeMemory0(reinterpret_cast<void**>(&Page));
        if (Count < PageSize) return ERROR_SUCCESS;
    }
}

void SeeFilter(const FWPM_FILTER0& Filter, std::vector<HeldRule>& Rules) {
    HeldRule Found{Filter.providerKey ? EngineKeys::ProcessOf(*Filter.providerKey) : 0, {}, Filter.filterId};
    if (Found.Process == 0) return;
    for (UINT32 Index = 0; Index < Filter.numFilterConditions; ++Index) {
        const FWP_CONDITION_VALUE0& Value = Filter.filterCondition[Index].conditionValue;
        if (Value.type == FWP_UINT32) Found.Blocked.Address = Value.uint32;
        if (Value.type == FWP_UINT16) Found.Blocked.Port = Value.uint16;
    }
    Rules.push_back(Found);
}

Failure ReadRules(const EngineCalls& Calls, HANDLE Session, std::vector<HeldRule>& Rules) {
    HANDLE Enumeration = nullptr;
    if (const DWORD Error = Calls.FwpmFilterCreateEnumHandle0(Session, nullptr, &Enumeration))
        return {"FwpmFilterCreateEnumHandle0", Error};
    const DWORD Error = ForEach(Calls, Session, Enumeration, Calls.FwpmFilterEnum0,
                                [&](const FWPM_FILTER0& Filter) { SeeFilter(Filter, Rules); });
    Calls.FwpmFilterDestroyEnumHandle0(Session, Enumeration);
    return {"FwpmFilterEnum0", Error};
}

bool IsDropBy(const FWPM_NET_EVENT0& Event, const std::vector<std::uint64_t>& Filters) {
    return Event.type == FWPM_NET_EVENT_TYPE_CLASSIFY_DROP && Event.classifyDrop != nullptr &&
           std::ranges::binary_search(Filters, Event.classifyDrop->filterId);
}

std::optional<unsigned> CountDropped(const EngineCalls& Calls, HANDLE Session,
                                     const std::vector<HeldRule>& Rules) {
    std::vector<std::uint64_t> Filters;
    Filters.reserve(Rules.size());
    for (const HeldRule& Held : Rules) Filters.push_back(Held.Filter);
    std::ranges::sort(Filters);
    HANDLE Enumeration = nullptr;
    if (Calls.FwpmNetEventCreateEnumHandle0(Session, nullptr, &Enumeration) != ERROR_SUCCESS) return {};
    unsigned Dropped = 0;
    const DWORD Error =
        ForEach(Calls, Session, Enumeration, Calls.FwpmNetEventEnum0,
                [&](const FWPM_NET_EVENT0& Event) { Dropped += IsDropBy(Event, Filters) ? 1 : 0; });
    Calls.FwpmNetEventDestroyEnumHandle0(Session, Enumeration);
    return Error == ERROR_SUCCESS ? std::optional(Dropped) : std::nullopt;
}

void Read(const EngineCalls& Calls, EngineView& View) {
    HANDLE Session = nullptr;
    if (const DWORD Error = Calls.FwpmEngineOpen0(nullptr, RPC_C_AUTHN_WINNT, nullptr, nullptr, &Session)) {
        View.Failed = {"FwpmEngineOpen0", Error};
        return;
    }
    View.Failed = ReadRules(Calls, Session, View.Rules);
    if (!View.Failed) View.Dropped = CountDropped(Calls, Session, View.Rules);
    Calls.FwpmEngineClose0(Session);
}

} // namespace

EngineView ViewEngine() {
    EngineView View;
    EngineCalls Calls;
    View.Failed = BindEngine(Calls);
    if (View.Failed) return View;
    View.Library = EnginePath(Calls);
    View.IsSandbox = IsSandbox(Calls);
    Read(Calls, View);
    ReleaseEngine(Calls);
    std::ranges::sort(View.Rules, [](const HeldRule& Left, const HeldRule& Right) {
        return std::pair(Left.Process, std::pair(Left.Blocked.Port, Left.Blocked.Address)) <
               std::pair(Right.Process, std::pair(Right.Blocked.Port, Right.Blocked.Address));
    });
    return View;
}
