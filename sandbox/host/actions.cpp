#include "sandbox/host/actions.h"

#include <set>

#include <shellapi.h>

#include "sandbox/console/console_commands.h"
#include "sandbox/host/boxes.h"
#include "sandbox/host/game_servers.h"
#include "sandbox/host/journal.h"
#include "sandbox/host/loaded_plugin.h"
#include "sandbox/host/privileges.h"
#include "sandbox/host/shown_interface.h"

namespace Actions {
namespace {

HostConfiguration Configuration;
HWND Area = nullptr;
Long Shown = 0;
std::set<Long> Loaded; // profiles whose sweep runs
bool HasPlugin = false;

HostProfile& ProfileAt(const std::wstring& Number) {
    const Long Index = ToWhole(Number);
    for (HostProfile& Profile : Configuration.Profiles)
        if (Profile.Index == Index) return Profile;
    Fail(ErrorNumber::SubscriptOutOfRange, L"There is no profile " + Number);
}

const Administrator& AdministratorNamed(TextView Name) {
    for (const Administrator& Admin : Configuration.Administrators)
        if (Admin.Name == Name) return Admin;
    Fail(ErrorNumber::InvalidCall, L"There is no administrator " + std::wstring(Name));
}

LoadedPlugin::Request RequestFor(const HostProfile& Profile, const std::wstring& Requester) {
    RECT Place{};
    GetClientRect(Area, &Place);
    // The plug-in places itself 2 pixels from the left; as much stays free on the right and below.
    const SIZE Room{Place.right - 4, Place.bottom - 4};
    return {Profile, Requester, Configuration.HostWideLogs, Room};
}

void RequirePlugin() {
    if (!HasPlugin) Fail(ErrorNumber::ObjectNotSet, L"The plug-in is not there");
}

// The arguments as a command line has them.
Lines WordsOf(TextView Action) {
    int Count = 0;
    // The first word of a command line is taken apart by rules of its own.
    wchar_t** Words = CommandLineToArgvW((L"host " + std::wstring(Action)).c_str(), &Count);
    const Lines Taken(Words + 1, Words + Count);
    LocalFree(Words);
    return Taken;
}

// --- The actions

void Load(const Lines& Words) {
    RequirePlugin();
    const HostProfile& Profile = ProfileAt(Words[1]);
    LoadedPlugin::LoadInterface(RequestFor(Profile, L""), Area);
    Shown = Profile.Index;
    Loaded.insert(Profile.Index);
}

void Hide(const Lines&) {
    RequirePlugin();
    LoadedPlugin::HideInterface();
    Shown = 0;
}

void Disable(const Lines& Words) {
    RequirePlugin();
    const Long Index = ProfileAt(Words[1]).Index;
    LoadedPlugin::DisableProfile(Index);
    Loaded.erase(Index);
}

void Unload(const Lines&) {
    RequirePlugin();
    LoadedPlugin::UnLoadInterface();
    Loaded.clear();
    Shown = 0;
}

void Start(const Lines& Words) { GameServers::Start(ProfileAt(Words[1]), Configuration.BaseFolder); }

void Stop(const Lines& Words) { GameServers::Stop(ProfileAt(Words[1]).Index); }

void Remote(const Lines& Words) {
    if (Words.size() < 4) Fail(ErrorNumber::ArgumentNotOptional);
    const auto Data = Words.size() > 4 ? std::optional(Words[4]) : std::nullopt;
    Serve(ToWhole(Words[1]), Words[2], Words[3], Data);
}

void Console(const Lines& Words) {
    if (Words.size() < 4) Fail(ErrorNumber::ArgumentNotOptional);
    const Lines Command(Words.begin() + 3, Words.end());
    const std::wstring Printed =
        ConsoleCommands::Run(Command, [&](const std::wstring& Member, const auto& Data) {
            return Serve(ToWhole(Words[1]), Words[2], Member, Data);
        });
    for (const std::wstring& Line : Split(Printed, L"\n"))
        if (!Line.empty()) Journal::Write(L"  " + Line);
}

void Menu(const Lines& Words) { ShownInterface::ChooseFromMenu(Area, ToWhole(Words[1]), Words[2]); }

void Tab(const Lines& Words) { ShownInterface::TurnTab(Area, ToWhole(Words[1])); }

void CloseBoxes(const Lines&) { Boxes::CloseAll(); }

void Note(const Lines&) {}

void Quit(const Lines&) { PostMessageW(GetAncestor(Area, GA_ROOT), WM_CLOSE, 0, 0); }

struct Row {
    const wchar_t* Name;
    std::size_t Arguments;
    void (*Do)(const Lines& Words);
};

constexpr Row Rows[] = {
    {L"load", 1, Load},   {L"hide", 0, Hide}, {L"disable", 1, Disable},       {L"unload", 0, Unload},
    {L"start", 1, Start}, {L"stop", 1, Stop}, {L"remote", 3, Remote},         {L"console", 3, Console},
    {L"note", 0, Note},   {L"quit", 0, Quit}, {L"closeboxes", 0, CloseBoxes}, {L"menu", 2, Menu},
    {L"tab", 1, Tab},
};

const Row& Find(const Lines& Words) {
    for (const Row& Known : Rows)
        if (!Words.empty() && Words.front() == Known.Name && Words.size() > Known.Arguments) return Known;
    Fail(ErrorNumber::InvalidCall, L"There is no such action, or a word is missing");
}

// Runs it and journals a failure under the given heading.
template <typename Work> bool Try(const std::wstring& Heading, Work Do) {
    try {
        Do();
        return true;
    } catch (...) {
        const Failure Why = CurrentFailure();
        Journal::Write(L"FAILED " + Heading + L": error " + ToText(Why.Number) + L", " + Why.Description);
        return false;
    }
}

void CreatePlugin() {
    const auto& Found = LoadedPlugin::Create(Configuration.Title);
    HasPlugin = true;
    Journal::Write(L"plug-in " + Found.Name + L" " + Found.Version + L" (" + Found.File + L"): " +
                   Found.Description);
    Journal::Write(L"plug-in serves " + Join(Found.Games, L"; ") + L"; privileges " +
                   Join(Found.Privileges, L", "));
}

} // namespace

void Begin(HostConfiguration Read, HWND PluginArea) {
    Configuration = std::move(Read);
    Area = PluginArea;
    for (HostProfile& Profile : Configuration.Profiles)
        Try(L"start " + ToText(Profile.Index), [&] {
            GameServers::Start(Profile, Configuration.BaseFolder);
            Journal::Write(L"profile " + ToText(Profile.Index) + L" \"" + Profile.Name + L"\": process " +
                           ToText(Profile.ProcessId));
        });
    Try(L"plug-in", CreatePlugin);
}

void End() {
    if (HasPlugin) Try(L"unload", [] { LoadedPlugin::UnLoadInterface(); });
    LoadedPlugin::Release();
    HasPlugin = false;
    GameServers::StopAll();
    Journal::Write(L"end");
}

void Run(TextView Action) {
    Journal::Write(L"> " + std::wstring(Action));
    Try(std::wstring(Action), [&] {
        const Lines Words = WordsOf(Action);
        Find(Words).Do(Words);
    });
}

std::wstring Serve(Long Index, TextView AdministratorName, const std::wstring& Member,
                   const std::optional<std::wstring>& Data) {
    RequirePlugin();
    const HostProfile& Profile = ProfileAt(ToText(Index));
    const Administrator& Admin = AdministratorNamed(AdministratorName);
    const std::wstring Needed = Privileges::NeededFor(Member, Data);
    const std::wstring Heading =
        L"remote: " + Admin.Name + L" asks " + Member + L" of profile " + ToText(Index);
    if (!Privileges::Has(Admin, Needed, LoadedPlugin::Described().Granted)) {
        Journal::Write(Heading + L": refused, needs \"" + Needed + L"\"");
        Fail(ErrorNumber::InvalidCall, L"You need the privilege \"" + Needed + L"\"");
    }
    const std::wstring Result =
        LoadedPlugin::CallRemote(RequestFor(Profile, Admin.Description), Member, Data);
    Journal::Write(Heading + L": " +
                   (Result.size() > 20 ? ToText(static_cast<Long>(Result.size())) + L" characters" : Result));
    return Result;
}

const HostConfiguration& Configured() { return Configuration; }

Long ShownProfile() { return Shown; }

std::wstring StateOf(Long Index) {
    const std::wstring Server = GameServers::IsRunning(Index) ? L"running" : L"stopped";
    return Loaded.contains(Index) ? Server + L", swept" : Server;
}

} // namespace Actions
