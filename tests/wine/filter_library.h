// The packet-filter library as a caller sees it, and what the stand-in engine beside it holds.
#pragma once

#include <algorithm>

#include "sandbox/engine/engine_state.h"
#include "tests/wine/support.h"

class FilterLibrary {
public:
    // By full path and with the folder of the library first in the search, as the plug-in loads it.
    explicit FilterLibrary(const std::wstring& Path) {
        Module = LoadLibraryExW(Path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
        if (Module == nullptr) throw std::runtime_error("the library cannot be loaded");
        Bind(IsServiceRunning, "IsServiceRunning");
        Bind(LoadFWDriver, "LoadFWDriver");
        Bind(StartFW, "StartFW");
        Bind(SetFilters, "SetFilters");
        Bind(ClearFilters, "ClearFilters");
        Bind(StopDriver, "StopDriver");
        Bind(UnloadDriver, "UnloadDriver");
    }
    ~FilterLibrary() {
        StopDriver("DrvFltIp2");
        FreeLibrary(Module);
    }
    FilterLibrary(const FilterLibrary&) = delete;
    FilterLibrary& operator=(const FilterLibrary&) = delete;

    void LoadAndStart() const {
        LoadFWDriver("\\\\.\\DrvFltIp", "DrvFltIp2", "DrvFltIp.sys");
        StartFW("\\\\.\\DrvFltIp");
    }
    // The parts of the address with the first in the lowest byte.
    void Block(Long Address, std::int16_t Port) const { SetFilters("\\\\.\\DrvFltIp", Address, 0, 0, Port); }
    void Clear() const { ClearFilters("\\\\.\\DrvFltIp"); }
    Long State() const { return IsServiceRunning("DrvFltIp2"); }
    bool AwaitState(Long Wanted) const {
        return Support::PumpUntil([&] { return State() == Wanted; });
    }

    HMODULE Module = nullptr;
    Long(__stdcall* IsServiceRunning)(const char*) = nullptr;
    Long(__stdcall* LoadFWDriver)(const char*, const char*, const char*) = nullptr;
    Long(__stdcall* StartFW)(const char*) = nullptr;
    Long(__stdcall* SetFilters)(const char*, Long, Long, Long, std::int16_t) = nullptr;
    Long(__stdcall* ClearFilters)(const char*) = nullptr;
    Long(__stdcall* StopDriver)(const char*) = nullptr;
    Long(__stdcall* UnloadDriver)(const char*) = nullptr;

private:
    template <class F> void Bind(F& Export, const char* Name) {
        Export = reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(Module, Name)));
        if (Export == nullptr) throw std::runtime_error(std::string("no export ") + Name);
    }
};

namespace StandIn {

inline std::wstring StateFile() { return Support::BaseFolder() + L"\\engine.state"; }

// "address port" of each filter, sorted.
inline std::vector<std::string> Rules() {
    std::vector<std::string> Found;
    const EngineState State = ReadEngineState(StateFile());
    for (const auto& [Id, Filter] : State.Filters)
        Found.push_back(Filter.Address + " " + std::to_string(Filter.Port));
    std::ranges::sort(Found);
    return Found;
}

inline bool AwaitRules(const std::vector<std::string>& Wanted) {
    return Support::PumpUntil([&] { return Rules() == Wanted; });
}

// The lock of the engine, as another program has it during its transaction.
class Lock {
public:
    Lock() {
        std::wstring Name = L"VantorEngine " + Support::BaseFolder();
        std::ranges::replace(Name, L'\\', L'/');
        Mutex = CreateMutexW(nullptr, FALSE, Name.c_str());
        WaitForSingleObject(Mutex, INFINITE);
    }
    ~Lock() {
        ReleaseMutex(Mutex);
        CloseHandle(Mutex);
    }

private:
    HANDLE Mutex;
};

// A switch of the engine, for as long as the object lives.
class Switch {
public:
    explicit Switch(const std::string& Words) { Support::WriteText(L"engine.fail", Words + "\n"); }
    ~Switch() { DeleteFileW((Support::BaseFolder() + L"\\engine.fail").c_str()); }
    Switch(const Switch&) = delete;
    Switch& operator=(const Switch&) = delete;
};

} // namespace StandIn
