#include "sandbox/host/privileges.h"

#include <algorithm>

namespace Privileges {
namespace {

struct Row {
    const wchar_t* Member;
    const wchar_t* Action; // the second field of the request; null for any
    const wchar_t* Privilege;
};

// The first row that fits decides.
constexpr Row Rows[] = {
    {L"GetPlayersRem", nullptr, L""},
    {L"PuntPlayerRem", nullptr, L"Punt/Ban Player"},
    {L"ArmPlayerRem", L"Kill", L"Kill Player"},
    {L"ArmPlayerRem", L"KillPerm", L"Kill Player"},
    {L"ArmPlayerRem", L"Switch", L"Switch Player Team"},
    {L"ArmPlayerRem", nullptr, L"Disarm/Rearm Player"},
    {L"SlapPlayerRem", nullptr, L"Slap Player"},
    {L"AddSlapRem", nullptr, L"Edit Slap List"},
    {L"EditSlapRem", nullptr, L"Edit Slap List"},
    {L"DeleteSlapRem", nullptr, L"Edit Slap List"},
    {L"AddBannedRem", nullptr, L"Edit Ban Lists"},
    {L"RemoveBannedRem", nullptr, L"Edit Ban Lists"},
    {L"SetBanMethod", nullptr, L"Edit Ban Lists"},
    {L"SetIdlePunt", nullptr, L"Edit Ban Lists"},
    {L"SetIdleMax", nullptr, L"Edit Ban Lists"},
};

bool Holds(const Lines& List, TextView Text) {
    return std::find(List.begin(), List.end(), Text) != List.end();
}

} // namespace

std::wstring NeededFor(TextView Member, const std::optional<std::wstring>& Data) {
    const Lines Fields = Split(Data.value_or(L""), L"|");
    const TextView Action = Fields.size() > 1 ? TextView(Fields[1]) : TextView();
    for (const Row& Known : Rows)
        if (Known.Member == Member && (!Known.Action || Known.Action == Action)) return Known.Privilege;
    Fail(ErrorNumber::NoSuchMember, L"No remote request " + std::wstring(Member));
}

bool Has(const Administrator& Admin, TextView Privilege, const Lines& Granted) {
    if (Privilege.empty() || Holds(Admin.Privileges, L"*")) return true;
    const bool HasNoList = Admin.Privileges.empty() || Admin.Privileges.front().empty();
    return Holds(HasNoList ? Granted : Admin.Privileges, Privilege);
}

} // namespace Privileges
