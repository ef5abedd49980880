// The plug-in in this host: created by its program identifier, asked what it is, and driven per profile.
//
// Every procedure fails with the plug-in's own error, which the plug-in never raises by rights.
#pragma once

#include <optional>

#include <windows.h>

#include "sandbox/host/automation.h"
#include "sandbox/host/configuration.h"

namespace LoadedPlugin {

struct Descriptor {
    std::wstring Name, File, Version, Author, Description;
    Lines Games;      // the game identifiers that it serves
    Lines Menu;       // its entries of the host's server menu
    Lines Privileges; // names alone
    Lines Granted;    // those that an administrator has unless told otherwise
};

Long DotsPerInch(int Direction); // of the screen; LOGPIXELSX or LOGPIXELSY

// Creates the object and reads its descriptor and privileges. Error 429 when it is not registered, error 5
// when it asks for newer host components than these.
const Descriptor& Create(TextView HostName);
const Descriptor& Described();
void Release();

// The array that goes with every call about a profile. The size is that of the plug-in's area, in pixels.
struct Request {
    const HostProfile& Profile;
    std::wstring Requester; // description of the administrator who asks
    bool HostWideLogs = false;
    SIZE Area{};
};
Automation::Value ProfileData(const Request& Asked);

// Embeds the plug-in's window into the area. Error 5 when the plug-in does not serve the profile's game.
void LoadInterface(const Request& Asked, HWND Area);
void HideInterface();
void UnLoadInterface();
void DisableProfile(Long Index);
// Calls one of the members for remote consoles; returns its result as text.
std::wstring CallRemote(const Request& Asked, const std::wstring& Member,
                        const std::optional<std::wstring>& Data);

} // namespace LoadedPlugin
