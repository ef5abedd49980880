// What the tests of the real DLL share: a host folder of their own with the DLL and its helpers registered
// from there, a game server process, and a message loop that gives up in time.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <windows.h>

#include "qrvVNT_h.h"
#include "sandbox/game/journal.h"
#include "sandbox/host/automation.h"
#include "window/ids.h"

namespace Support {

inline constexpr const wchar_t* StandardGame = L"Delta Force,  V1.5.0.5";
inline constexpr const wchar_t* AffiliateGame = L"Delta Force, NovaWorld Affiliate Server V1.5.0.11A_AFF";
inline constexpr unsigned Patience = 15000; // milliseconds; far more than anything here takes

// The host's base folder, laid out at the first call: an installed plug-in, its helpers and nothing else.
// It is gone when the process ends.
const std::wstring& BaseFolder();
// A base of fixtures that wrap the helper objects: these are registered before the wrappers look for them,
// and wrapped before the plug-in creates them.
struct LaidOut {
    LaidOut() { BaseFolder(); }
};
// The folder that holds what was built.
std::wstring ProgramFolder();

// Files below the base folder. Missing folders are made; a missing file reads as empty.
void WriteText(const std::wstring& Path, const std::string& Content);
std::string ReadText(const std::wstring& Path);
// The lines of the helpers' error log.
std::vector<std::string> ErrorLog();
// How many entries of the error log came from the procedure.
int ReportsOf(const std::string& Procedure);

// A program in the base folder, killed with the object.
class Process {
public:
    // Output, if it is given, is inherited as standard output and error. Throws when the program does not
    // start.
    explicit Process(std::wstring CommandLine, HANDLE Output = nullptr);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    // Returns when it has ended.
    void Kill() const;
    bool HasEnded() const { return EndsWithin(0); }
    bool EndsWithin(DWORD Milliseconds) const;

    PROCESS_INFORMATION Started{};
};

// Runs a program to its end, while messages are pumped.
struct Ended {
    DWORD ExitCode;
    std::string Output;
};
Ended RunProgram(const std::wstring& CommandLine);

// Pumps messages until the condition holds, also behind modal boxes; false when it does not in time.
bool PumpUntil(const std::function<bool()>& Condition, unsigned Milliseconds = Patience);
// Whether boxes are closed as soon as they are seen (at first they are), and the titles seen so far.
void CloseBoxes(bool AtOnce);
std::vector<std::wstring>& BoxesSeen();

// The control word of the floating-point unit. A bit of the lowest six that is not set has its exception
// raised.
void SetControlWord(unsigned short Word);
unsigned short ControlWord();

// The control with the identifier, at any depth below the window; null when there is none.
HWND ControlOf(HWND Window, int Id);

// The game server, as a process that ends with the object.
class GameServer {
public:
    // Options as gameserver.exe takes them; a scenario's text. Waits until it plays; throws when it does not.
    GameServer(const std::wstring& Name, const std::wstring& Options, const std::string& Scenario);

    std::vector<Simulation::JournalEntry> Entries() const;
    // The first entry of the kind, for a player when a name is given.
    const Simulation::JournalEntry* Find(const std::string& Kind, const std::string& Name = {}) const;
    int Count(const std::string& Kind) const;
    // Pumps messages until Find finds something; false when it does not in time.
    bool Await(const std::string& Kind, const std::string& Name = {}, unsigned Milliseconds = Patience) const;

    Long ProcessRef() const { return static_cast<Long>(Program->Started.dwProcessId); }
    Long MessageRef() const { return static_cast<Long>(Program->Started.dwThreadId); }
    // The game's one thread.
    HANDLE Thread() const { return Program->Started.hThread; }

private:
    std::wstring Journal;
    std::unique_ptr<Process> Program;
    mutable std::vector<Simulation::JournalEntry> Read;
};

// A profile as the host describes it, for a game server or for none.
struct Profile {
    std::wstring Folder, GameId = StandardGame;
    const GameServer* Server = nullptr;
    bool HostWideLogs = false;
    Long OtherProcess = 0; // instead of the server's
};
// The fourteen elements that go with every call about the profile, and the array of them.
Automation::Values ProfileElements(const Profile& Given);
Automation::Value ProfileData(const Profile& Given);

// Every test has the plug-in as both kinds of client see it, and a window that can hold the plug-in's.
class PluginTest : public testing::Test {
protected:
    PluginTest();
    ~PluginTest() override;

    // Makes Late and Early; the constructor does.
    void CreatePlugin();
    // Unloads the interface and lets the object and the DLL go, as a host does that is closed.
    void LetGo();

    // Loads the interface into Area.
    void Load(Long Index, const Profile& Given);
    // Calls one of the members for remote consoles; returns its result.
    Long Remote(const wchar_t* Member, Long Index, const Profile& Given, const std::wstring& Data);
    // The plug-in's window, null when there is none.
    HWND Frame() const;
    // A control of it by its identifier.
    HWND Control(int Id) const;
    // One tick of the profile's sweep, now.
    void Sweep(Long Index) const;

    Automation::Apartment Com;
    _clsPlugin* Early = nullptr;
    Automation::Object Late;
    HWND Area = nullptr;
};

} // namespace Support
