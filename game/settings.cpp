#include "game/settings.h"

#include "game/mdlVNT.h"
#include "host/platform.h"

bool PlayersIniExists() { return Platform::FileExists(mdlVNT::PlayersIniPath); }

std::wstring ReadSetting(Long Index, TextView Name) {
    const std::wstring Folder = mdlVNT::Profiles(Index).ProfileFolder;
    return Platform::GetProfileText(Name, Folder, mdlVNT::PlayersIniPath);
}

void WriteSetting(Long Index, TextView Name, TextView Value) {
    RefuseLineBreaks(Value);
    const std::wstring Folder = mdlVNT::Profiles(Index).ProfileFolder;
    Platform::WriteProfileText(Name, Folder, Value, mdlVNT::PlayersIniPath);
}

std::wstring SwitchOr0(std::wstring Text) {
    if (Text == L"1" || Text == L"0") return Text;
    return L"0";
}

std::wstring PeriodOr5(std::wstring Text) {
    if (IsNumeric(Text) && Text >= L"1") return Text;
    return L"5";
}
