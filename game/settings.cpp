#include "game/settings.h"

#include "game/ini_key.h"
#include "game/mdlVNT.h"
#include "host/platform.h"

bool Settings::IsGiven(TextView Text) { return !Text.empty(); }
bool Settings::IsSwitch(TextView Text) { return Text == L"1" || Text == L"0"; }
bool Settings::IsPeriod(TextView Text) { return IsNumeric(Text) && Text >= L"1"; }

bool PlayersIniExists() { return Platform::FileExists(mdlVNT::PlayersIniPath); }

std::wstring ReadSetting(Long Profile, const Setting& Read) {
    const std::wstring Folder = mdlVNT::Profiles(Profile).ProfileFolder;
    return Platform::GetProfileText(Read.Name, Folder, mdlVNT::PlayersIniPath);
}

std::wstring ReadValidSetting(Long Profile, const Setting& Read) {
    std::wstring Text = ReadSetting(Profile, Read);
    return Read.IsValid(Text) ? Text : std::wstring(Read.Default);
}

void WriteSetting(Long Profile, const Setting& Written, TextView Value) {
    RefuseLineBreaks(Value);
    const std::wstring Folder = mdlVNT::Profiles(Profile).ProfileFolder;
    if (!CanBeKey(Folder))
        Fail(ErrorNumber::InvalidCall,
             L"Players.ini cannot hold settings of the folder \"" + Folder + L"\".");
    const bool Stored = Platform::WriteProfileText(Written.Name, Folder, Value, mdlVNT::PlayersIniPath);
    if (!Stored && PlayersIniExists())
        Fail(ErrorNumber::PathAccess,
             ErrorDescription(ErrorNumber::PathAccess) + L": " + mdlVNT::PlayersIniPath);
}
