#include "game/show_msg.h"

#include <algorithm>
#include <vector>

#include "game/mdlVNT.h"
#include "host/file_helper.h"
#include "host/platform.h"
#include "host/work.h"

namespace {

constexpr TextView ErrorTitle = L"DLL Error!";

struct Box {
    Platform::BoxIcon Icon;
    const wchar_t* Title;
};

// Kinds 0 to 3.
constexpr Box Boxes[] = {
    {Platform::BoxIcon::Error, L"Error!"},
    {Platform::BoxIcon::Information, L"Success"},
    {Platform::BoxIcon::Warning, L"Failed!"},
    {Platform::BoxIcon::Warning, L"Action Required!"},
};

std::wstring VersionText() { return std::wstring(mdlVNT::DllName) + L" " + std::wstring(mdlVNT::Version); }

// Which of eight servers it was.
std::wstring ServerLine(Long Profile) {
    if (!mdlVNT::Profiles.Has(Profile) || mdlVNT::Profiles(Profile).ProfileFolder.empty()) return {};
    return L"Server: " + mdlVNT::Profiles(Profile).ProfileFolder + L"\r\n";
}

std::wstring ErrorDetails(const Failure& Error, Long Profile, Long Line, TextView Procedure) {
    return ServerLine(Profile) + L"Error Line: " + ToText(Line) + L"\r\nError " + ToText(Error.Number) +
           L": " + Error.Description + L"\r\nDLL: " + std::wstring(mdlVNT::DllName) + L"\r\nFunction/Sub: " +
           std::wstring(Procedure);
}

long Reports = 0;

// Returns whether the report is the first of its outage.
bool BeginsOutage(TextView Procedure, Long Profile, Long Number) {
    if (!mdlVNT::Outages.Has(Profile)) return true;
    std::vector<Outage>& Known = mdlVNT::Outages(Profile);
    const auto Same = std::ranges::find_if(
        Known, [&](const Outage& Begun) { return Begun.Procedure == Procedure && Begun.Number == Number; });
    if (Same == Known.end()) return Known.push_back({std::wstring(Procedure), Number, Reports}), true;
    Same->LastReport = Reports;
    return false;
}

// What nobody has to do anything about: a return to a server that was opened before, and an unload where no
// packet filter is there to be taken down.
bool IsForTheLogAlone(TextView Procedure, Long Number) {
    return (Procedure == L"LoadInterface" && Number == ErrorNumber::AlreadyLoaded) ||
           (Procedure == L"UnLoadInterface" && Number == ErrorNumber::LoadingDll);
}

// Reporting must work without the host: what is lost here is in the box all the same.
template <class F> void Attempt(F&& Body) noexcept {
    try {
        std::forward<F>(Body)();
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
}

bool ReportsAreWanted() {
    const std::wstring Value = FileHelper::GetIniKey(L"Settings", L"ReportErrors",
                                                     mdlVNT::HostBaseFolder + L"\\settings\\config.ini");
    return IsNumeric(Value) && ToNumber(Value) == 1;
}

bool IsAffiliateProfile(Long Profile) {
    return mdlVNT::Profiles.Has(Profile) && mdlVNT::Profiles(Profile).IsAffiliate;
}

// The last line of an error report: whether it was sent.
std::wstring SentLine(const Failure& Error, const std::wstring& Text, Long Profile, Long Line) noexcept {
    bool Wanted = false;
    bool Sent = false;
    Attempt([&] {
        Wanted = ReportsAreWanted();
        if (!Wanted) return;
        Sent = FileHelper::SendErrorReport({ToText(Error.Number), Error.Description, VersionText(), Text,
                                            IsAffiliateProfile(Profile), Line});
    });
    if (!Wanted) return L"\r\n\r\nError Report Sent: No";
    return Sent ? L"\r\n\r\nError Report Sent: Yes" : L"\r\n\r\nError Report Sent: Failed!";
}

} // namespace

void ShowMsg(MsgKind Kind, std::wstring& Text, const Failure* ErrObject, Long Profile, Long Line,
             TextView Procedure) noexcept {
    static const Failure None{0, {}, 0, ""};
    const Failure& Error = ErrObject != nullptr ? *ErrObject : None;
    Attempt([&] {
        if (Work::HasEnded()) return;
        const bool IsUnattended = Work::IsUnattended();
        if (ErrObject != nullptr) {
            ++Reports;
            Text += ErrorDetails(Error, Profile, Line, Procedure);
            Attempt([&] { FileHelper::LogError(mdlVNT::DllName, Text, Error, Line); });
        }
        if (Work::HasEnded() || IsForTheLogAlone(Procedure, Error.Number)) return;
        if (Kind != MsgKind::ErrorReport) {
            const Box& Shown = Boxes[static_cast<unsigned char>(Kind)];
            Platform::ShowBox(Shown.Icon, Text, Shown.Title);
        } else if (BeginsOutage(Procedure, Profile, Error.Number) || !IsUnattended) {
            Text += SentLine(Error, Text, Profile, Line);
            Platform::PostErrorBox(Text, ErrorTitle, !IsUnattended);
        }
    });
}

void ShowMsg(MsgKind Kind, TextView Text, Long Profile) noexcept {
    Attempt([&] {
        std::wstring Extended(Text);
        ShowMsg(Kind, Extended, nullptr, Profile, 0);
    });
}

void ReportFailure(TextView Procedure, Long Profile) noexcept {
    const Failure Caught = CurrentFailure();
    std::wstring Text;
    // 0: the work has ended with its server.
    if (Caught.Number != 0) ShowMsg(MsgKind::ErrorReport, Text, &Caught, Profile, Caught.Line, Procedure);
}

long ReportCount() noexcept { return Reports; }

void EndOutages(TextView Procedure, Long Profile, long ReportsBefore) {
    if (!mdlVNT::Outages.Has(Profile)) return;
    std::erase_if(mdlVNT::Outages(Profile), [&](const Outage& Known) {
        return Known.LastReport <= ReportsBefore && Known.Procedure == Procedure;
    });
}
