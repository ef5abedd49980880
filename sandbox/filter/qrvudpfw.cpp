// The packet-filter control library: the seven calls, without a driver behind them. What the driver would
// hold is in a state file, which the game server reads, and each call leaves a line in a journal.
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>

#include "sandbox/filter/filter_state.h"

namespace {

constexpr std::int32_t NotInstalled = 0, Stopped = 1, Running = 3;
const char* const Device = "\\\\.\\DrvFltIp";
const char* const PlatformService = "IpFilterDriver"; // the filter driver cannot run without it

HMODULE Module = nullptr;

// Of the environment; empty when it is not set.
std::wstring Variable(const wchar_t* Name) {
    wchar_t Value[MAX_PATH];
    const DWORD Length = GetEnvironmentVariableW(Name, Value, ARRAYSIZE(Value));
    return Length < ARRAYSIZE(Value) ? std::wstring(Value, Length) : std::wstring();
}

std::wstring Folder() {
    if (const std::wstring Told = Variable(L"VANTOR_FILTER_DIR"); !Told.empty()) return Told;
    wchar_t Path[MAX_PATH];
    const std::wstring Own(Path, GetModuleFileNameW(Module, Path, ARRAYSIZE(Path)));
    return Own.substr(0, Own.rfind(L'\\'));
}

std::wstring StateFile() { return Folder() + L"\\filter.state"; }

bool IsToldToFail() {
    return !Variable(L"VANTOR_FILTER_FAIL").empty() ||
           GetFileAttributesW((Folder() + L"\\filter.fail").c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string Text(const char* Given) { return Given ? Given : ""; }

std::string Dotted(std::int32_t Address) {
    const auto Bits = static_cast<std::uint32_t>(Address);
    std::string Result = std::to_string(Bits & 0xFF);
    for (const unsigned Shift : {8U, 16U, 24U}) Result += '.' + std::to_string(Bits >> Shift & 0xFF);
    return Result;
}

// Writes the call's line and passes its result through.
std::int32_t Journalled(std::initializer_list<std::string> Call, std::int32_t Result) {
    std::ofstream File{std::filesystem::path(Folder() + L"\\filter.journal"),
                       std::ios::binary | std::ios::app};
    for (const auto& Word : Call) File << Word << '\t';
    File << Result << '\n';
    return Result;
}

// Lets Change alter the state and keeps it when it answers true. A client of this library knows no
// exceptions: whatever goes wrong is the result 0.
template <class Procedure> std::int32_t Change(Procedure Alter) noexcept {
    try {
        FilterState State = ReadFilterState(StateFile());
        return Alter(State) && WriteFilterState(StateFile(), State) ? 1 : 0;
    } catch (...) {
        return 0;
    }
}

// The filter driver is the service that is not the platform's.
bool IsDriverRunning(const FilterState& State) {
    return std::any_of(State.Services.begin(), State.Services.end(),
                       [](const auto& Each) { return Each.first != PlatformService && Each.second; });
}

void ForgetRules(FilterState& State, const std::string& Service) {
    if (Service == PlatformService) return;
    State.Rules.clear();
    State.IsFiltering = false;
}

// Does Alter on a running driver behind the right device.
template <class Procedure> std::int32_t WithDriver(const char* Path, Procedure Alter) noexcept {
    return Change([&](FilterState& State) {
        if (Text(Path) != Device || !IsDriverRunning(State)) return false;
        Alter(State);
        return true;
    });
}

std::int32_t StateOf(const std::string& Service) {
    if (IsToldToFail()) return Stopped;
    const FilterState State = ReadFilterState(StateFile());
    const auto Found = State.Services.find(Service);
    if (Found == State.Services.end()) return NotInstalled;
    return Found->second ? Running : Stopped;
}

} // namespace

extern "C" {

std::int32_t __stdcall IsServiceRunning(LPCSTR Service) {
    return Journalled({"IsServiceRunning", Text(Service)}, StateOf(Text(Service)));
}

std::int32_t __stdcall LoadFWDriver(LPCSTR Path, LPCSTR Service, LPCSTR DriverFile) {
    const std::int32_t Result = Change([&](FilterState& State) {
        if (Text(Path) != Device || Text(Service).empty() ||
            GetFileAttributesA(Text(DriverFile).c_str()) == INVALID_FILE_ATTRIBUTES)
            return false;
        State.Services[PlatformService] = State.Services[Service] = true;
        return true;
    });
    return Journalled({"LoadFWDriver", Text(Path), Text(Service), Text(DriverFile)}, Result);
}

std::int32_t __stdcall StartFW(LPCSTR Path) {
    return Journalled({"StartFW", Text(Path)},
                      WithDriver(Path, [](FilterState& State) { State.IsFiltering = true; }));
}

std::int32_t __stdcall SetFilters(LPCSTR Path, std::int32_t Address, std::int32_t First, std::int32_t Second,
                                  std::int16_t Port) {
    const FilterRule Rule{Dotted(Address), static_cast<std::uint16_t>(Port)};
    const std::int32_t Result = WithDriver(Path, [&](FilterState& State) { State.Rules.push_back(Rule); });
    return Journalled({"SetFilters", Text(Path), Rule.Address, std::to_string(First), std::to_string(Second),
                       std::to_string(Rule.Port)},
                      Result);
}

std::int32_t __stdcall ClearFilters(LPCSTR Path) {
    return Journalled({"ClearFilters", Text(Path)},
                      WithDriver(Path, [](FilterState& State) { State.Rules.clear(); }));
}

std::int32_t __stdcall StopDriver(LPCSTR Service) {
    const std::int32_t Result = Change([&](FilterState& State) {
        const auto Found = State.Services.find(Text(Service));
        if (Found == State.Services.end()) return false;
        Found->second = false;
        ForgetRules(State, Found->first);
        return true;
    });
    return Journalled({"StopDriver", Text(Service)}, Result);
}

std::int32_t __stdcall UnloadDriver(LPCSTR Service) {
    const std::int32_t Result = Change([&](FilterState& State) {
        ForgetRules(State, Text(Service));
        return State.Services.erase(Text(Service)) == 1;
    });
    return Journalled({"UnloadDriver", Text(Service)}, Result);
}

BOOL WINAPI DllMain(HINSTANCE Instance, DWORD Reason, void*) {
    if (Reason == DLL_PROCESS_ATTACH) Module = Instance;
    return TRUE;
}

} // extern "C"
