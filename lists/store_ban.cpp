#include "lists/store_ban.h"

#include "game/ini_key.h"
#include "lists/ban_references.h"
#include "lists/first_failure.h"

namespace {

void StoreEntries(const Ban& Wanted, const std::wstring& Ip, const BanFiles& Files, BanOutcome& Outcome) {
    const TextView Reason = Trim(Wanted.Reason).empty() ? TextView(L"None") : Wanted.Reason;
    FirstFailure Failed;
    Failed.Try([&] {
        if (Wanted.Name && StoreBannedName(Files, *Wanted.Name, Wanted.Stamp, Reason))
            Outcome.Name = Wanted.Name;
    });
    Failed.Try([&] {
        if (!Ip.empty() && StoreBannedIp(Files, Ip, Wanted.Stamp)) Outcome.Ip = Ip;
    });
    if (!Outcome.IsBan()) Failed.Throw();
}

std::wstring ProblemOf(const BanOutcome& Outcome, bool HasName, bool HasIp) {
    const bool NameIsMissing = HasName && !Outcome.Name;
    const bool IpIsMissing = HasIp && Outcome.Ip.empty();
    if (NameIsMissing && IpIsMissing)
        return L"Neither the name nor the address could be stored in the ban list.";
    return std::wstring(NameIsMissing ? NameNotStored : IpIsMissing ? IpNotStored : TextView());
}

} // namespace

BanOutcome StoreBan(const Ban& Wanted) {
    const BanFiles Files(Wanted.Profile);
    const std::wstring Ip = IsKnownIp(Wanted.Ip) ? Trim(Wanted.Ip) : std::wstring();
    const bool CanStoreName = Wanted.Name && CanBeKey(Wanted.Name->Key());
    BanOutcome Outcome;
    if (CanStoreName || !Ip.empty()) {
        EnsureFolder(Files.Folder);
        if (CanStoreName && !Ip.empty()) AddBanReference(Files, Wanted.Name->Name, Ip);
        Outcome.StandsWithoutTag = CanStoreName && HasBareName(Files, Wanted.Name->Name);
        if (Outcome.StandsWithoutTag) {
            Outcome.Problem = Wanted.Name->Name + L" stands in the ban list without a tag; nothing was done.";
            return Outcome;
        }
        StoreEntries(Wanted, Ip, Files, Outcome);
    }
    Outcome.Problem = ProblemOf(Outcome, Wanted.Name.has_value(), !Ip.empty());
    return Outcome;
}
