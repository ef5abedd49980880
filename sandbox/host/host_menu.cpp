#include "sandbox/host/host_menu.h"

#include <span>

namespace HostMenu {
namespace {

constexpr int FirstId = 100;

struct Entry {
    const wchar_t* Caption; // null: a separator
    const wchar_t* Action;  // "#" is the selected profile's number
    const wchar_t* Command;
};

struct Menu {
    const wchar_t* Caption;
    std::span<const Entry> Entries;
};

constexpr Entry ProfileEntries[] = {
    {L"&Load interface\tEnter", L"load #", nullptr},
    {L"&Disable profile", L"disable #", nullptr},
    {nullptr, nullptr, nullptr},
    {L"&Start game server", L"start #", nullptr},
    {L"S&top game server", L"stop #", nullptr},
    {nullptr, nullptr, nullptr},
    {L"E&xit", L"quit", nullptr},
};

constexpr Entry PluginEntries[] = {
    {L"&Hide interface", L"hide", nullptr},
    {L"&Unload interface", L"unload", nullptr},
};

constexpr Entry ConsoleEntries[] = {
    {L"&Player list", nullptr, L"players"},
    {nullptr, nullptr, nullptr},
    {L"P&unt", nullptr, L"punt 3"},
    {L"&Ban", nullptr, L"ban 3 \"reason\""},
    {L"&Kill", nullptr, L"kill \"name\""},
    {L"Kill p&ermanently", nullptr, L"killperm \"name\""},
    {L"&Disarm", nullptr, L"disarm \"name\""},
    {L"D&isarm permanently", nullptr, L"disarmperm \"name\""},
    {L"&Rearm", nullptr, L"rearm \"name\""},
    {L"&Switch team", nullptr, L"switch \"name\""},
    {L"S&lap", nullptr, L"slap \"message\""},
    {nullptr, nullptr, nullptr},
    {L"Add slap message", nullptr, L"addslap \"message\""},
    {L"Edit slap message", nullptr, L"editslap \"old\" \"new\""},
    {L"Delete slap message", nullptr, L"delslap \"message\""},
    {L"Add banned name", nullptr, L"addname \"name\" whole \"reason\""},
    {L"Add banned address", nullptr, L"addip 10.0.0.*"},
    {L"Remove banned name", nullptr, L"removename \"name\" links"},
    {L"Remove banned address", nullptr, L"removeip 10.0.0.* links"},
    {nullptr, nullptr, nullptr},
    {L"Ban method", nullptr, L"method 0"},
    {L"Idle punt", nullptr, L"idle on"},
    {L"Idle limit", nullptr, L"idlemax 5"},
};

constexpr Menu Menus[] = {
    {L"&Profile", ProfileEntries}, {L"P&lug-in", PluginEntries}, {L"&Remote console", ConsoleEntries}};

// Identifiers count through all menus, separators too.
const Entry* At(int Id) {
    int First = FirstId;
    for (const Menu& Shown : Menus) {
        const int Size = static_cast<int>(Shown.Entries.size());
        if (Id >= First && Id < First + Size) return &Shown.Entries[static_cast<std::size_t>(Id - First)];
        First += Size;
    }
    return nullptr;
}

} // namespace

HMENU Create() {
    const HMENU Bar = CreateMenu();
    UINT_PTR Id = FirstId;
    for (const Menu& Shown : Menus) {
        const HMENU Popup = CreatePopupMenu();
        for (const Entry& Row : Shown.Entries)
            AppendMenuW(Popup, Row.Caption ? MF_STRING : MF_SEPARATOR, Id++, Row.Caption);
        AppendMenuW(Bar, MF_POPUP, reinterpret_cast<UINT_PTR>(Popup), Shown.Caption);
    }
    return Bar;
}

std::wstring ActionOf(int Id, Long Profile) {
    const Entry* Found = At(Id);
    return Found && Found->Action ? Join(Split(Found->Action, L"#"), ToText(Profile)) : std::wstring();
}

std::wstring CommandOf(int Id) {
    const Entry* Found = At(Id);
    return Found && Found->Command ? Found->Command : std::wstring();
}

} // namespace HostMenu
