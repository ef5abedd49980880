#include "filter/win32/engine_calls.h"

#include <utility>

namespace {

constexpr DWORD LongestPath = 1024;

std::wstring PathOf(HMODULE Module) {
    wchar_t Path[LongestPath] = L"";
    return {Path, GetModuleFileNameW(Module, Path, LongestPath)};
}

std::wstring SandboxPath() {
    HMODULE Own = nullptr;
    const void* Inside = reinterpret_cast<const void*>(&SandboxPath);
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCWSTR>(Inside), &Own);
    const std::wstring Library = PathOf(Own);
    return Library.substr(0, Library.rfind(L'\\') + 1) + L"sandbox_engine.dll";
}

std::wstring SystemPath() {
    wchar_t Folder[LongestPath] = L"";
    return std::wstring(Folder, GetSystemDirectoryW(Folder, LongestPath)) + L"\\fwpuclnt.dll";
}

template <class F> bool Bind(HMODULE Library, F& Function, const char* Name) {
    Function = reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(Library, Name)));
    return Function != nullptr;
}

bool BindAll(EngineCalls& Calls) {
    const HMODULE From = Calls.Library;
    return Bind(From, Calls.FwpmEngineOpen0, "FwpmEngineOpen0") &&
           Bind(From, Calls.FwpmEngineClose0, "FwpmEngineClose0") &&
           Bind(From, Calls.FwpmTransactionBegin0, "FwpmTransactionBegin0") &&
           Bind(From, Calls.FwpmTransactionCommit0, "FwpmTransactionCommit0") &&
           Bind(From, Calls.FwpmTransactionAbort0, "FwpmTransactionAbort0") &&
           Bind(From, Calls.FwpmProviderAdd0, "FwpmProviderAdd0") &&
           Bind(From, Calls.FwpmSubLayerAdd0, "FwpmSubLayerAdd0") &&
           Bind(From, Calls.FwpmSubLayerGetByKey0, "FwpmSubLayerGetByKey0") &&
           Bind(From, Calls.FwpmFilterAdd0, "FwpmFilterAdd0") &&
           Bind(From, Calls.FwpmFilterDeleteById0, "FwpmFilterDeleteById0") &&
           Bind(From, Calls.FwpmFilterCreateEnumHandle0, "FwpmFilterCreateEnumHandle0") &&
           Bind(From, Calls.FwpmFilterEnum0, "FwpmFilterEnum0") &&
           Bind(From, Calls.FwpmFilterDestroyEnumHandle0, "FwpmFilterDestroyEnumHandle0") &&
           Bind(From, Calls.FwpmNetEventCreateEnumHandle0, "FwpmNetEventCreateEnumHandle0") &&
           Bind(From, Calls.FwpmNetEventEnum0, "FwpmNetEventEnum0") &&
           Bind(From, Calls.FwpmNetEventDestroyEnumHandle0, "FwpmNetEventDestroyEnumHandle0") &&
           Bind(From, Calls.FwpmFreeMemory0, "FwpmFreeMemory0");
}

} // namespace

Failure BindEngine(EngineCalls& Calls) {
    std::wstring Path = SandboxPath();
    if (GetFileAttributesW(Path.c_str()) == INVALID_FILE_ATTRIBUTES) Path = SystemPath();
    EngineCalls Found;
    Found.Library = LoadLibraryExW(Path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (Found.Library == nullptr) return {"LoadLibraryEx", GetLastError()};
    if (!BindAll(Found)) {
        FreeLibrary(Found.Library);
        return {"GetProcAddress", ERROR_PROC_NOT_FOUND};
    }
    Calls = Found;
    return {};
}

void ReleaseEngine(EngineCalls& Calls) noexcept {
    if (Calls.Library != nullptr) FreeLibrary(std::exchange(Calls, {}).Library);
}

bool IsSandbox(const EngineCalls& Calls) {
    return _wcsicmp(EnginePath(Calls).c_str(), SandboxPath().c_str()) == 0;
}

std::wstring EnginePath(const EngineCalls& Calls) { return PathOf(Calls.Library); }
