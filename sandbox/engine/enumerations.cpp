// What of the stand-in engine can be listed: its filters, and the packets that they dropped.
#include <windows.h>

#include <fwpmu.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>

#include "sandbox/engine/keys.h"
#include "sandbox/engine/sessions.h"

namespace {

// What was there when the enumeration began, and how far it has come.
struct FilterList {
    std::vector<std::pair<std::uint64_t, EngineFilter>> Filters;
    std::size_t Next = 0;
};

struct DropList {
    std::vector<std::uint64_t> Filters;
    std::size_t Next = 0;
};

// As the caller gets them: the pointers first, freed in one piece.
template <class Object> struct Page {
    Object** Pointers;
    Object* Objects;
    UINT32 Count;
};

template <class Object> Page<Object> MakePage(std::size_t Left, UINT32 Wanted, std::size_t More) {
    const std::size_t Count = Left < Wanted ? Left : Wanted;
    // The objects begin on a boundary of eight, as their 64-bit members want it.
    const std::size_t Pointers = (Count * sizeof(Object*) + 15) / 8 * 8;
    auto* Memory = static_cast<char*>(std::calloc(1, Pointers + Count * (sizeof(Object) + More)));
    if (Memory == nullptr) throw std::bad_alloc();
    Page<Object> Made{reinterpret_cast<Object**>(static_cast<void*>(Memory)),
                      reinterpret_cast<Object*>(static_cast<void*>(Memory + Pointers)),
                      static_cast<UINT32>(Count)};
    for (std::size_t Index = 0; Index < Count; ++Index) Made.Pointers[Index] = Made.Objects + Index;
    return Made;
}

UINT32 AddressOf(const std::string& Dotted) {
    unsigned Parts[4] = {};
    std::sscanf(Dotted.c_str(), "%u.%u.%u.%u", Parts, Parts + 1, Parts + 2, Parts + 3);
    return Parts[0] << 24 | Parts[1] << 16 | Parts[2] << 8 | Parts[3];
}

struct FilterParts {
    FWPM_FILTER_CONDITION0 Conditions[3];
    GUID Provider;
};

void FillFilter(FWPM_FILTER0& Filter, FilterParts& Parts, std::uint64_t Id, const EngineFilter& From) {
    Parts.Provider = KeyOfText(From.Key);
    Parts.Conditions[0] = {KeyOfText(ConditionRemoteAddress), FWP_MATCH_EQUAL, {}};
    Parts.Conditions[0].conditionValue.type = FWP_UINT32;
    Parts.Conditions[0].conditionValue.uint32 = AddressOf(From.Address);
    Parts.Conditions[1] = {KeyOfText(ConditionLocalPort), FWP_MATCH_EQUAL, {}};
    Parts.Conditions[1].conditionValue.type = FWP_UINT16;
    Parts.Conditions[1].conditionValue.uint16 = static_cast<UINT16>(From.Port);
    Parts.Conditions[2] = {KeyOfText(ConditionProtocol), FWP_MATCH_EQUAL, {}};
    Parts.Conditions[2].conditionValue.type = FWP_UINT8;
    Parts.Conditions[2].conditionValue.uint8 = ProtocolUdp;
    Filter.providerKey = &Parts.Provider;
    Filter.layerKey = KeyOfText(LayerInboundTransportV4);
    Filter.numFilterConditions = ARRAYSIZE(Parts.Conditions);
    Filter.filterCondition = Parts.Conditions;
    Filter.action.type = FWP_ACTION_BLOCK;
    Filter.filterId = Id;
}

} // namespace

extern "C" {

DWORD WINAPI FwpmFilterCreateEnumHandle0(HANDLE Engine, const FWPM_FILTER_ENUM_TEMPLATE0*, HANDLE* Made) {
    return Sessions::Call("FwpmFilterCreateEnumHandle0", [&] {
        auto New = std::make_unique<FilterList>();
        EngineState State;
        const DWORD Error = Sessions::View(Engine, State);
        New->Filters.assign(State.Filters.begin(), State.Filters.end());
        if (Error == ERROR_SUCCESS) *Made = New.release();
        return Error;
    });
}

DWORD WINAPI FwpmFilterEnum0(HANDLE, HANDLE Enumeration, UINT32 Wanted, FWPM_FILTER0*** Entries,
                             UINT32* Count) {
    return Sessions::Call("FwpmFilterEnum0", [&]() -> DWORD {
        auto& List = *static_cast<FilterList*>(Enumeration);
        const auto Made =
            MakePage<FWPM_FILTER0>(List.Filters.size() - List.Next, Wanted, sizeof(FilterParts));
        auto* Parts = reinterpret_cast<FilterParts*>(static_cast<void*>(Made.Objects + Made.Count));
        for (UINT32 Index = 0; Index < Made.Count; ++Index)
            FillFilter(Made.Objects[Index], Parts[Index], List.Filters[List.Next + Index].first,
                       List.Filters[List.Next + Index].second);
        List.Next += Made.Count;
        *Entries = Made.Pointers;
        *Count = Made.Count;
        return ERROR_SUCCESS;
    });
}

DWORD WINAPI FwpmFilterDestroyEnumHandle0(HANDLE, HANDLE Enumeration) {
    delete static_cast<FilterList*>(Enumeration);
    return ERROR_SUCCESS;
}

// engine.drops has the identifier of a filter for each packet that it dropped.
DWORD WINAPI FwpmNetEventCreateEnumHandle0(HANDLE, const FWPM_NET_EVENT_ENUM_TEMPLATE0*, HANDLE* Made) {
    return Sessions::Call("FwpmNetEventCreateEnumHandle0", [&]() -> DWORD {
        auto New = std::make_unique<DropList>();
        std::ifstream File{std::filesystem::path(Sessions::Folder() + L"\\engine.drops")};
        for (std::uint64_t Filter = 0; File >> Filter;) New->Filters.push_back(Filter);
        *Made = New.release();
        return ERROR_SUCCESS;
    });
}

DWORD WINAPI FwpmNetEventEnum0(HANDLE, HANDLE Enumeration, UINT32 Wanted, FWPM_NET_EVENT0*** Entries,
                               UINT32* Count) {
    return Sessions::Call("FwpmNetEventEnum0", [&]() -> DWORD {
        auto& List = *static_cast<DropList*>(Enumeration);
        const auto Made = MakePage<FWPM_NET_EVENT0>(List.Filters.size() - List.Next, Wanted,
                                                    sizeof(FWPM_NET_EVENT_CLASSIFY_DROP0));
        auto* Drops =
            reinterpret_cast<FWPM_NET_EVENT_CLASSIFY_DROP0*>(static_cast<void*>(Made.Objects + Made.Count));
        for (UINT32 Index = 0; Index < Made.Count; ++Index) {
            Drops[Index].filterId = List.Filters[List.Next++];
            Made.Objects[Index].type = FWPM_NET_EVENT_TYPE_CLASSIFY_DROP;
            Made.Objects[Index].classifyDrop = Drops + Index;
        }
        *Entries = Made.Pointers;
        *Count = Made.Count;
        return ERROR_SUCCESS;
    });
}

DWORD WINAPI FwpmNetEventDestroyEnumHandle0(HANDLE, HANDLE Enumeration) {
    delete static_cast<DropList*>(Enumeration);
    return ERROR_SUCCESS;
}

} // extern "C"
