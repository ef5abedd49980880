#include "endurance/kill_child.h"

#include <filesystem>

#include "endurance/driver.h"
#include "endurance/operations.h"
#include "tests/wine/support.h"

namespace Kill::Child {

namespace {

Progress* Told = nullptr;
Automation::Object Plugin, Memory;
HWND Area = nullptr;
Long ProcessRef = 0, MessageRef = 0;

// --- The system's own write of an INI file, told to the parent while it lasts

template <Writer By>
BOOL WINAPI ToldWrite(const char* Section, const char* Key, const char* Value, const char* File) {
    Told->Writing = By;
    const BOOL Written = WritePrivateProfileStringA(Section, Key, Value, File);
    Told->Writing = Nobody;
    return Written;
}

// Has a loaded DLL call another function instead of one that it imports.
void Redirect(const wchar_t* Dll, const void* From, void* To) {
    auto* const Base = reinterpret_cast<char*>(GetModuleHandleW(Dll));
    const auto* const Header =
        reinterpret_cast<IMAGE_NT_HEADERS*>(Base + reinterpret_cast<IMAGE_DOS_HEADER*>(Base)->e_lfanew);
    const DWORD Imports = Header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* Each = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(Base + Imports); Each->FirstThunk != 0;
         ++Each)
        for (auto* Slot = reinterpret_cast<void**>(Base + Each->FirstThunk); *Slot != nullptr; ++Slot) {
            if (*Slot != From) continue;
            DWORD Protection = 0;
            VirtualProtect(Slot, sizeof *Slot, PAGE_READWRITE, &Protection);
            *Slot = To;
        }
}

void WatchSystemWrites() {
    const auto From = reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "WritePrivateProfileStringA"));
    Redirect(L"qrvVNT.dll", From, reinterpret_cast<void*>(ToldWrite<PlugIn>));
    Redirect(L"qrvMFM.dll", From, reinterpret_cast<void*>(ToldWrite<HostObject>));
}

// --- The host

Automation::Value ProfileData() {
    Automation::Values Elements = Support::ProfileElements({L"kill"});
    Elements[2] = Automation::FromWhole(ProcessRef);
    Elements[6] = Automation::FromWhole(MessageRef);
    return Automation::FromList(std::move(Elements));
}

// Also when it is loaded already: then the lists are read anew.
void Load() {
    Automation::Values Index, Arguments;
    Index.push_back(Automation::FromWhole(1));
    Plugin.Call(L"DisableProfile", std::move(Index));
    Arguments.push_back(Automation::FromWhole(1));
    Arguments.push_back(Automation::FromWhole(HandleToLong(Area)));
    Arguments.push_back(ProfileData());
    Plugin.Call(L"LoadInterface", std::move(Arguments));
}

// --- The operations

std::wstring Wide(const std::string& Text) { return {Text.begin(), Text.end()}; }
std::string Narrow(const std::wstring& Text) { return {Text.begin(), Text.end()}; }

// What stands in braces becomes Base64.
std::wstring Encoded(std::wstring Text) {
    for (std::size_t At = 0; (At = Text.find(L'{', At)) != std::wstring::npos;) {
        const std::size_t End = Text.find(L'}', At);
        Automation::Values Plain;
        Plain.push_back(Automation::FromText(Text.substr(At + 1, End - At - 1)));
        Text.replace(At, End - At + 1, Automation::AsText(*Memory.Call(L"Enc64", std::move(Plain))));
    }
    return Text;
}

void Do(const Operation& Op) {
    const Kind& What = *Op.What;
    if (What.Data != nullptr) {
        Automation::Values Arguments;
        Arguments.push_back(Automation::FromWhole(1));
        Arguments.push_back(ProfileData());
        Arguments.push_back(Automation::FromText(Encoded(Wide(Filled(What.Data, Op)))));
        Plugin.Call(Wide(What.Name).c_str(), std::move(Arguments));
    }
    const HWND Frame = FindWindowExW(Area, nullptr, L"frmVNT", nullptr);
    for (const Driver::Step& Action : What.Steps)
        Action.Do(Frame, Action.Id, Wide(Filled(Narrow(Action.Text), Op)));
}

} // namespace

void Run(Progress& Shared, unsigned Seed, long Process, long Message) {
    const Automation::Apartment Com;
    Told = &Shared;
    ProcessRef = Process;
    MessageRef = Message;
    Area = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 720, 660, nullptr,
                           nullptr, nullptr, nullptr);
    Plugin = Automation::Create(L"qrvVNT.clsPlugin");
    Memory = Automation::Create(L"qrvGMF.clsMemory");
    WatchSystemWrites();
    Driver::AnswerBoxes();
    Load();
    std::vector<std::string> Damage;
    State Expected = Read(".", Damage);
    for (Source Operations(Seed);;) {
        const Operation Op = Operations.Next(Expected);
        if (Op.What->Data == nullptr) Load(); // the lists show what requests have changed
        Shared.Begun = Shared.Begun + 1;
        Do(Op);
        Shared.Done = Shared.Begun;
        Apply(Expected, Op);
    }
}

} // namespace Kill::Child
