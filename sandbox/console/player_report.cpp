#include "sandbox/console/player_report.h"

#include <algorithm>
#include <iterator>

#include "sandbox/console/helper_objects.h"

namespace {

constexpr TextView Separator = L"[-]Tessoral[-]";

PlayerReport::Entries* SectionNamed(PlayerReport& Report, TextView Line) {
    if (Line == L"[Players]") return &Report.BannedNames;
    if (Line == L"[IpAddresses]") return &Report.BannedAddresses;
    if (Line == L"[Messages]") return &Report.Slaps;
    if (Line == L"[Settings]") return &Report.Settings;
    return nullptr;
}

// Slot, encoded name, team, address and ping.
void AddPlayer(PlayerReport& Report, const std::wstring& Line) {
    const Lines Fields = Split(Line, L"|");
    if (Fields.size() != 5) return;
    const Long Slot = ToWhole(Fields[0]);
    const auto IsSame = [&](const ReportedPlayer& Player) { return Player.Slot == Slot; };
    if (std::any_of(Report.Players.begin(), Report.Players.end(), IsSame)) return;
    Report.Players.push_back({Slot, Helpers::Dec64(Fields[1]), Fields[2], Fields[3], Fields[4]});
}

// An empty list file comes as a repetition of what stood before it, so an entry counts once.
void AddEntry(PlayerReport::Entries& Section, const std::wstring& Line) {
    const std::size_t Equals = Line.find(L'=');
    if (Equals == std::wstring::npos) return;
    const std::wstring Key = Line.substr(0, Equals);
    const auto IsSame = [&](const auto& Entry) { return Entry.first == Key; };
    if (std::none_of(Section.begin(), Section.end(), IsSame))
        Section.emplace_back(Key, Line.substr(Equals + 1));
}

// The value follows its key without anything between them.
void AddSetting(PlayerReport::Entries& Section, const std::wstring& Line) {
    for (const TextView Key : {L"BanMethod", L"IdlePunt", L"IdleMax"})
        if (Line.starts_with(Key)) Section.emplace_back(Key, Line.substr(Key.size()));
}

std::wstring Padded(const std::wstring& Text, std::size_t Width) {
    return Text.size() < Width ? Text + std::wstring(Width - Text.size(), L' ') : Text;
}

// Columns as wide as their widest cell; the first row is the heading.
std::wstring Table(const std::vector<Lines>& Rows) {
    std::vector<std::size_t> Widths(Rows.front().size());
    for (const Lines& Row : Rows)
        for (std::size_t At = 0; At < Row.size(); ++At) Widths[At] = std::max(Widths[At], Row[At].size());
    std::wstring Text;
    for (const Lines& Row : Rows) {
        std::wstring Line = L" ";
        for (std::size_t At = 0; At < Row.size(); ++At) Line += L" " + Padded(Row[At], Widths[At] + 1);
        Text += Line.substr(0, Line.find_last_not_of(L' ') + 1) + L"\n";
    }
    return Text;
}

std::wstring TeamName(const std::wstring& Team) {
    if (Team == L"1") return L"blue";
    if (Team == L"2") return L"red";
    return Team;
}

std::wstring Section(const wchar_t* Title, const Lines& Heading, const std::vector<Lines>& Rows) {
    if (Rows.empty()) return std::wstring(Title) + L": none\n";
    std::vector<Lines> All{Heading};
    All.insert(All.end(), Rows.begin(), Rows.end());
    return std::wstring(Title) + L"\n" + Table(All);
}

// "name[1]" and "stamp[-]reason" taken apart.
Lines BannedNameRow(const std::pair<std::wstring, std::wstring>& Entry) {
    const bool IsPart = Entry.first.ends_with(L"[2]");
    const Lines Value = Split(Entry.second, L"[-]");
    return {Entry.first.substr(0, Entry.first.size() - std::min<std::size_t>(3, Entry.first.size())),
            IsPart ? L"part" : L"whole", Value.front(), Value.size() > 1 ? Value[1] : L""};
}

} // namespace

PlayerReport ReadReport(const std::wstring& Answer) {
    if (Answer == L"Failed") Fail(ErrorNumber::InvalidCall, L"No game is running on this server");
    const std::size_t At = Answer.find(Separator);
    if (At == std::wstring::npos) Fail(ErrorNumber::InvalidCall, L"The plug-in gave no report");
    const Long Length = ToWhole(Answer.substr(0, At));
    const std::wstring Bundle = Helpers::DecompressString(Answer.substr(At + Separator.size()), Length);
    PlayerReport Report;
    PlayerReport::Entries* Current = nullptr;
    for (const std::wstring& Line : Split(Bundle, CrLf)) {
        if (PlayerReport::Entries* Section = SectionNamed(Report, Line))
            Current = Section;
        else if (!Current || Line.find(L'=') == std::wstring::npos) {
            if (Current == &Report.Settings)
                AddSetting(Report.Settings, Line);
            else
                AddPlayer(Report, Line);
        } else if (Current != &Report.Settings)
            AddEntry(*Current, Line);
    }
    return Report;
}

std::wstring Printed(const PlayerReport& Report) {
    std::vector<Lines> Players, Names, Addresses, Slaps, Settings;
    for (const ReportedPlayer& Player : Report.Players)
        Players.push_back(
            {ToText(Player.Slot), Player.Name, TeamName(Player.Team), Player.Address, Player.Ping});
    for (const auto& Entry : Report.BannedNames) Names.push_back(BannedNameRow(Entry));
    for (const auto& [Key, Value] : Report.BannedAddresses) Addresses.push_back({Key, Value});
    for (const auto& [Key, Value] : Report.Slaps) Slaps.push_back({Key, Value});
    for (const auto& [Key, Value] : Report.Settings) Settings.push_back({Key, Value});
    return Section(L"Players", {L"Slot", L"Player", L"Team", L"IP", L"Ping"}, Players) +
           Section(L"Banned names", {L"Name", L"Match", L"Added", L"Reason"}, Names) +
           Section(L"Banned addresses", {L"Address", L"Added"}, Addresses) +
           Section(L"Slap messages", {L"No.", L"Message"}, Slaps) +
           Section(L"Settings", {L"Setting", L"Value"}, Settings);
}
