#include "lists/store_ban.h"

#include "game/ini_key.h"
#include "host/file_helper.h"
#include "lists/ban_references.h"
#include "lists/first_failure.h"

namespace {

std::wstring MissingText(const BanOutcome& Outcome, bool IpIsKnown) {
    if (Outcome.NameStored && (Outcome.IpStored || !IpIsKnown)) return {};
    if (Outcome.IpStored) return L"The name could not be stored in the ban list.";
    if (Outcome.NameStored) return L"The address could not be stored in the ban list.";
    return IpIsKnown ? L"Neither the name nor the address could be stored in the ban list."
                     : L"The name could not be stored in the ban list.";
}

void StoreEntries(const Ban& Wanted, const BanFiles& Files, BanOutcome& Outcome) {
    const TextView Reason = Trim(Wanted.Reason).empty() ? TextView(L"None") : Wanted.Reason;
    FirstFailure Failed;
    Failed.Try([&] { Outcome.NameStored = StoreBannedName(Files, Wanted.Name, Wanted.Stamp, Reason); });
    Failed.Try([&] { Outcome.IpStored = StoreBannedIp(Files, Wanted.Ip, Wanted.Stamp); });
    if (!Outcome.NameStored && !Outcome.IpStored) Failed.Throw();
}

} // namespace

BanOutcome StoreBan(const Ban& Wanted) {
    const BanFiles Files(Wanted.Profile);
    const bool CanStoreIp = IsBannableIp(Wanted.Ip);
    BanOutcome Outcome;
    if (CanStoreIp || CanBeKey(Wanted.Name.Key())) {
        EnsureSettingsFolder(Wanted.Profile);
        if (CanStoreIp && !Trim(Wanted.Name.Name).empty())
            AddBanReference(Files, Wanted.Name.Name, Trim(Wanted.Ip));
        Outcome.AlreadyBanned = HasBareName(Files, Wanted.Name.Name);
        if (Outcome.AlreadyBanned) return Outcome;
        StoreEntries(Wanted, Files, Outcome);
    }
    Outcome.Missing = MissingText(Outcome, IsKnownIp(Wanted.Ip));
    return Outcome;
}
