#include "sandbox/host/loaded_plugin.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace LoadedPlugin {
namespace {

using Automation::Value;

Automation::Object Plugin;
Descriptor Known;

// This host's own components; a plug-in that asks for newer ones is refused.
constexpr std::pair<const wchar_t*, Long> Components[] = {
    {L"MinRCVer", 1201}, {L"MinGMFVer", 1104}, {L"MinMFMVer", 1309}, {L"MinQRVVer", 31105}};

const VARIANT& FieldOf(const std::vector<Automation::Field>& Fields, TextView Name) {
    for (const auto& [FieldName, Content] : Fields)
        if (FieldName == Name) return *Content;
    Fail(ErrorNumber::NoSuchMember, L"The descriptor lacks " + std::wstring(Name));
}

void ReadDescriptor() {
    const Value Record = Plugin.Call(L"GetData");
    const auto Fields = Automation::RecordFields(*Record);
    Known = {};
    Known.Name = Automation::AsText(FieldOf(Fields, L"Name"));
    Known.File = Automation::AsText(FieldOf(Fields, L"File"));
    Known.Version = Automation::AsText(FieldOf(Fields, L"Version"));
    Known.Author = Automation::AsText(FieldOf(Fields, L"Author"));
    Known.Description = Automation::AsText(FieldOf(Fields, L"Description"));
    Known.Games = Automation::AsLines(FieldOf(Fields, L"Game"));
    Known.Menu = Automation::AsLines(FieldOf(Fields, L"ServerMenuItems"));
    for (const auto& [Name, Version] : Components)
        if (Automation::AsWhole(FieldOf(Fields, Name)) > Version)
            Fail(ErrorNumber::InvalidCall, std::wstring(L"The plug-in needs a newer host: ") + Name);
}

void ReadPrivileges() {
    const Value List = Plugin.Call(L"GetPrivis");
    const Lines Entries = Automation::AsLines(*List);
    // The first element is the heading under which the others stand.
    for (std::size_t At = 1; At < Entries.size(); ++At) {
        const Lines Parts = Split(Entries[At], L"|");
        Known.Privileges.push_back(Parts.front());
        if (Parts.back() == L"1") Known.Granted.push_back(Parts.front());
    }
}

bool Serves(TextView GameId) {
    constexpr TextView Affiliate = L"_AFF";
    if (GameId.ends_with(Affiliate)) GameId.remove_suffix(Affiliate.size());
    return std::find(Known.Games.begin(), Known.Games.end(), GameId) != Known.Games.end();
}

// The plug-in gets the size of its area in twips, 1440 to the inch, and rounds the pixels down again.
Long Twips(Long Pixels, int Direction) {
    const Long PerInch = DotsPerInch(Direction);
    return (Pixels * 1440 + PerInch - 1) / PerInch;
}

} // namespace

Long DotsPerInch(int Direction) {
    const HDC Screen = GetDC(nullptr);
    const Long Found = GetDeviceCaps(Screen, Direction);
    ReleaseDC(nullptr, Screen);
    return Found;
}

const Descriptor& Create(TextView HostName) {
    Plugin = Automation::Create(L"qrvVNT.clsPlugin");
    Automation::Values Arguments;
    Arguments.push_back(Automation::FromText(HostName));
    Plugin.Call(L"dllVersion", std::move(Arguments));
    ReadDescriptor();
    ReadPrivileges();
    return Known;
}

const Descriptor& Described() { return Known; }

void Release() { Plugin.Release(); }

Value ProfileData(const Request& Asked) {
    Automation::Values Elements;
    Elements.push_back(Automation::FromText(Asked.Profile.Name));
    Elements.push_back(Automation::FromText(Asked.Profile.GameId));
    Elements.push_back(Automation::FromWhole(Asked.Profile.ProcessId));
    for (int Unused = 3; Unused <= 5; ++Unused) Elements.push_back(Automation::FromText(Asked.Profile.Name));
    Elements.push_back(Automation::FromWhole(Asked.Profile.MessageTarget));
    Elements.push_back(Automation::FromText(Asked.Profile.Folder));
    Elements.push_back(Automation::FromText(Asked.Profile.Name));
    Elements.push_back(Value());
    Elements.push_back(Automation::FromText(Asked.Requester));
    Elements.push_back(Automation::FromBoolean(Asked.HostWideLogs));
    Elements.push_back(Automation::FromWhole(Twips(Asked.Area.cy, LOGPIXELSY)));
    Elements.push_back(Automation::FromWhole(Twips(Asked.Area.cx, LOGPIXELSX)));
    return Automation::FromList(std::move(Elements));
}

void LoadInterface(const Request& Asked, HWND Area) {
    if (!Serves(Asked.Profile.GameId))
        Fail(ErrorNumber::InvalidCall, L"The plug-in does not serve this game");
    Automation::Values Arguments;
    Arguments.push_back(Automation::FromWhole(Asked.Profile.Index));
    Arguments.push_back(Automation::FromWhole(HandleToLong(Area)));
    Arguments.push_back(ProfileData(Asked));
    Arguments.push_back(Automation::FromText(Known.Menu.empty() ? L"" : Known.Menu.front()));
    Plugin.Call(L"LoadInterface", std::move(Arguments));
}

void HideInterface() { Plugin.Call(L"HideInterface"); }

void UnLoadInterface() {
    Automation::Values Arguments;
    Arguments.push_back(Automation::FromText(L""));
    Plugin.Call(L"UnLoadInterface", std::move(Arguments));
}

void DisableProfile(Long Index) {
    Automation::Values Arguments;
    Arguments.push_back(Automation::FromWhole(Index));
    Plugin.Call(L"DisableProfile", std::move(Arguments));
}

std::wstring CallRemote(const Request& Asked, const std::wstring& Member,
                        const std::optional<std::wstring>& Data) {
    Automation::Values Arguments;
    Arguments.push_back(Automation::FromWhole(Asked.Profile.Index));
    Arguments.push_back(ProfileData(Asked));
    if (Data) Arguments.push_back(Automation::FromText(*Data));
    const Value Result = Plugin.Call(Member.c_str(), std::move(Arguments));
    return Automation::AsText(*Result);
}

} // namespace LoadedPlugin
