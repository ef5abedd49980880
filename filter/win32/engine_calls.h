// The functions of the filtering engine, bound by full path. A library of the engine's name beside a program
// or on the search path never takes its place.
#pragma once

#include <windows.h>

#include <fwpmu.h>

#include <string>

#include "filter/engine.h"

struct EngineCalls {
    HMODULE Library = nullptr;
    decltype(&::FwpmEngineOpen0) FwpmEngineOpen0 = nullptr;
    decltype(&::FwpmEngineClose0) FwpmEngineClose0 = nullptr;
    decltype(&::FwpmTransactionBegin0) FwpmTransactionBegin0 = nullptr;
    decltype(&::FwpmTransactionCommit0) FwpmTransactionCommit0 = nullptr;
    decltype(&::FwpmTransactionAbort0) FwpmTransactionAbort0 = nullptr;
    decltype(&::FwpmProviderAdd0) FwpmProviderAdd0 = nullptr;
    decltype(&::FwpmSubLayerAdd0) FwpmSubLayerAdd0 = nullptr;
    decltype(&::FwpmSubLayerGetByKey0) FwpmSubLayerGetByKey0 = nullptr;
    decltype(&::FwpmFilterAdd0) FwpmFilterAdd0 = nullptr;
    decltype(&::FwpmFilterDeleteById0) FwpmFilterDeleteById0 = nullptr;
    decltype(&::FwpmFilterCreateEnumHandle0) FwpmFilterCreateEnumHandle0 = nullptr;
    decltype(&::FwpmFilterEnum0) FwpmFilterEnum0 = nullptr;
    decltype(&::FwpmFilterDestroyEnumHandle0) FwpmFilterDestroyEnumHandle0 = nullptr;
    decltype(&::FwpmNetEventCreateEnumHandle0) FwpmNetEventCreateEnumHandle0 = nullptr;
    decltype(&::FwpmNetEventEnum0) FwpmNetEventEnum0 = nullptr;
    decltype(&::FwpmNetEventDestroyEnumHandle0) FwpmNetEventDestroyEnumHandle0 = nullptr;
    decltype(&::FwpmFreeMemory0) FwpmFreeMemory0 = nullptr;
};

// Loads the engine and binds all its functions, or none: the sandbox's engine if it lies beside this library,
// otherwise the system's.
Failure BindEngine(EngineCalls& Calls);
void ReleaseEngine(EngineCalls& Calls) noexcept;

// Whether the sandbox's engine is bound: it blocks no packet of this machine.
bool IsSandbox(const EngineCalls& Calls);
// The full path of the bound library.
std::wstring EnginePath(const EngineCalls& Calls);
