// The exports of the packet-filter library, bound by full path.
#include "host/packet_filter.h"

#include <windows.h>

#include <iterator>
#include <utility>

#include "host/platform.h"
#include "host/win32/single_byte.h"
#include "host/work.h"

namespace PacketFilter {

namespace {

constexpr const wchar_t* LibraryName = L"qrvudpfw.dll";

struct Exports {
    Long(__stdcall* IsServiceRunning)(const char* Service);
    Long(__stdcall* LoadFWDriver)(const char* Device, const char* Service, const char* DriverFile);
    Long(__stdcall* StartFW)(const char* Device);
    Long(__stdcall* SetFilters)(const char* Device, Long Address, Long, Long, std::int16_t Port);
    Long(__stdcall* ClearFilters)(const char* Device);
    Long(__stdcall* StopDriver)(const char* Service);
    Long(__stdcall* UnloadDriver)(const char* Service);
};

HMODULE Library = nullptr;
Exports Bound{};

std::wstring SystemFolder() {
    wchar_t Folder[MAX_PATH] = L"";
    return {Folder, GetSystemDirectoryW(Folder, MAX_PATH)};
}

// By full path, so that nothing in the current folder or on the search path can take the library's place.
HMODULE LoadFromKnownFolders(Place Where) {
    const std::wstring PluginFolder = Platform::PluginFolder(Where);
    for (const std::wstring& Folder : {PluginFolder, HostBaseOf(PluginFolder), SystemFolder()}) {
        const std::wstring Path = Folder + L"\\" + LibraryName;
        if (Folder.empty() || !Platform::FileExists(Path)) continue;
        if (const HMODULE Loaded = LoadLibraryExW(Path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH))
            return Loaded;
    }
    Fail(ErrorNumber::LoadingDll, ErrorDescription(ErrorNumber::LoadingDll) + L": " + LibraryName, Where);
}

template <class F> void BindExport(HMODULE From, F& To, const char* Name, Place Where) {
    To = reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(From, Name)));
    if (To != nullptr) return;
    const std::string Narrow = Name;
    Fail(ErrorNumber::NoEntryPoint,
         ErrorDescription(ErrorNumber::NoEntryPoint) + L" " + std::wstring(Narrow.begin(), Narrow.end()) +
             L" in " + LibraryName,
         Where);
}

// All exports or none: a library that lacks one is let go again.
const Exports& Bind(Place Where) {
    if (Library != nullptr) return Bound;
    struct Loaded {
        HMODULE Handle;
        ~Loaded() {
            if (Handle != nullptr) FreeLibrary(Handle);
        }
    } Candidate{LoadFromKnownFolders(Where)};
    Exports Found{};
    BindExport(Candidate.Handle, Found.IsServiceRunning, "IsServiceRunning", Where);
    BindExport(Candidate.Handle, Found.LoadFWDriver, "LoadFWDriver", Where);
    BindExport(Candidate.Handle, Found.StartFW, "StartFW", Where);
    BindExport(Candidate.Handle, Found.SetFilters, "SetFilters", Where);
    BindExport(Candidate.Handle, Found.ClearFilters, "ClearFilters", Where);
    BindExport(Candidate.Handle, Found.StopDriver, "StopDriver", Where);
    BindExport(Candidate.Handle, Found.UnloadDriver, "UnloadDriver", Where);
    Bound = Found;
    Library = std::exchange(Candidate.Handle, nullptr);
    return Bound;
}

// The door: the library may let the host come back into the plug-in.
template <class F> auto Call(Place Where, F&& Export) {
    Work::RequireServer(Where);
    const Long Result = std::forward<F>(Export)(Bind(Where));
    Work::RequireServer(Where);
    return Result;
}

} // namespace

Long IsServiceRunning(TextView Service, Place Where) {
    return Call(Where, [&](const Exports& Of) { return Of.IsServiceRunning(SingleByte(Service).c_str()); });
}

void LoadFWDriver(TextView Device, TextView Service, TextView DriverFile, Place Where) {
    Call(Where, [&](const Exports& Of) {
        return Of.LoadFWDriver(SingleByte(Device).c_str(), SingleByte(Service).c_str(),
                               SingleByte(DriverFile).c_str());
    });
}

void StartFW(TextView Device, Place Where) {
    Call(Where, [&](const Exports& Of) { return Of.StartFW(SingleByte(Device).c_str()); });
}

void SetFilters(TextView Device, Long Address, std::int16_t Port, Place Where) {
    // What the two zeros stand for is the library's own affair.
    Call(Where,
         [&](const Exports& Of) { return Of.SetFilters(SingleByte(Device).c_str(), Address, 0, 0, Port); });
}

void ClearFilters(TextView Device, Place Where) {
    Call(Where, [&](const Exports& Of) { return Of.ClearFilters(SingleByte(Device).c_str()); });
}

void StopDriver(TextView Service, Place Where) {
    Call(Where, [&](const Exports& Of) { return Of.StopDriver(SingleByte(Service).c_str()); });
}

void UnloadDriver(TextView Service, Place Where) {
    Call(Where, [&](const Exports& Of) { return Of.UnloadDriver(SingleByte(Service).c_str()); });
}

void Release() noexcept {
    if (Library != nullptr) FreeLibrary(std::exchange(Library, nullptr));
}

} // namespace PacketFilter
