#include "game/settings.h"

#include "game/ini_key.h"
#include "game/mdlVNT.h"
#include "host/platform.h"

bool Settings::IsGiven(TextView Text) { return !Text.empty(); }
bool Settings::IsSwitch(TextView Text) { return Text == L"1" || Text == L"0"; }
bool Settings::IsPeriod(TextView Text) { return IsNumeric(Text) && Text >= L"1"; }

bool PlayersIniExists() { return Platform::FileExists(mdlVNT::PlayersIniPath); }

std::wstring ReadSetting(Long Profile, const Setting& Kind) {
    const std::wstring Folder = mdlVNT::Profiles(Profile).ProfileFolder;
    return Platform::GetProfileText(Kind.Name, Folder, mdlVNT::PlayersIniPath);
}

std::wstring ReadValidSetting(Long Profile, const Setting& Kind) {
    std::wstring Text = ReadSetting(Profile, Kind);
    return Kind.IsValid(Text) ? Text : std::wstring(Kind.Default);
}

bool KernelMethodIsSet(Long Profile) {
    return PlayersIniExists() && ReadSetting(Profile, Settings::BanMethod) == L"1";
}

void WriteSetting(Long Profile, const Setting& Kind, TextView Value) {
    const std::wstring Folder = mdlVNT::Profiles(Profile).ProfileFolder;
    if (!CanBeValue(Value))
        Fail(ErrorNumber::InvalidCall, L"The setting is too long or holds a control character.");
    if (!CanBeKey(Folder))
        Fail(ErrorNumber::InvalidCall,
             L"Players.ini cannot hold settings of the folder \"" + Folder + L"\".");
    if (!Platform::WriteProfileText(Kind.Name, Folder, Value, mdlVNT::PlayersIniPath))
        Fail(ErrorNumber::PathAccess,
             ErrorDescription(ErrorNumber::PathAccess) + L": " + mdlVNT::PlayersIniPath);
}
