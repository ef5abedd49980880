#include "game/show_msg.h"

#include "game/mdlVNT.h"
#include "host/file_helper.h"
#include "host/platform.h"

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

std::wstring ErrorDetails(const Failure& Error, Long Line, TextView Procedure) {
    return L"Error Line: " + ToText(Line) + L"\r\nError " + ToText(Error.Number) + L": " + Error.Description +
           L"\r\nDLL: " + std::wstring(mdlVNT::DllName) + L"\r\nFunction/Sub: " + std::wstring(Procedure);
}

// Reporting must not fail for want of the host's help: what is lost here is in the box all the same.
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
std::wstring SentLine(const Failure& Error, const std::wstring& Text, Long ProfileIndex, Long Line) noexcept {
    bool Wanted = false;
    bool Sent = false;
    Attempt([&] {
        Wanted = ReportsAreWanted();
        if (!Wanted) return;
        Sent = FileHelper::SendErrorReport({ToText(Error.Number), Error.Description, VersionText(), Text,
                                            IsAffiliateProfile(ProfileIndex), Line});
    });
    if (!Wanted) return L"\r\n\r\nError Report Sent: No";
    return Sent ? L"\r\n\r\nError Report Sent: Yes" : L"\r\n\r\nError Report Sent: Failed!";
}

} // namespace

void ShowMsg(MsgKind Kind, std::wstring& Text, const Failure* ErrObject, Long ProfileIndex, Long Line,
             TextView Procedure) noexcept {
    Attempt([&] {
        if (ErrObject != nullptr) {
            const std::wstring Details = ErrorDetails(*ErrObject, Line, Procedure);
            Text += Details;
            Attempt([&] { FileHelper::LogError(mdlVNT::DllName, Text, *ErrObject, Line); });
        }
        if (Kind == MsgKind::ErrorReport) {
            static const Failure None{0, {}, 0};
            Text += SentLine(ErrObject != nullptr ? *ErrObject : None, Text, ProfileIndex, Line);
            Platform::PostErrorBox(Text, ErrorTitle, false);
        } else {
            const Box& Shown = Boxes[static_cast<unsigned char>(Kind)];
            Platform::ShowBox(Shown.Icon, Text, Shown.Title);
        }
    });
}

void ShowMsg(MsgKind Kind, TextView Text, Long ProfileIndex) noexcept {
    Attempt([&] {
        std::wstring Extended(Text);
        ShowMsg(Kind, Extended, nullptr, ProfileIndex, 0);
    });
}

void ReportFailure(TextView Procedure, Long ProfileIndex) noexcept {
    const Failure Caught = CurrentFailure();
    std::wstring Text;
    ShowMsg(MsgKind::ErrorReport, Text, &Caught, ProfileIndex, Caught.Line, Procedure);
}
