#include "sandbox/console/helper_objects.h"

#include "sandbox/host/automation.h"

namespace Helpers {
namespace {

std::wstring OnText(const wchar_t* Object, const wchar_t* Member, const std::wstring& Text,
                    std::optional<Long> Number = {}) {
    Automation::Values Arguments;
    Arguments.push_back(Automation::FromText(Text));
    if (Number) Arguments.push_back(Automation::FromWhole(*Number));
    const Automation::Value Result = Automation::Create(Object).Call(Member, std::move(Arguments));
    return Automation::AsText(*Result);
}

} // namespace

std::wstring Enc64(const std::wstring& Text) { return OnText(L"qrvGMF.clsMemory", L"Enc64", Text); }

std::wstring Dec64(const std::wstring& Text) { return OnText(L"qrvGMF.clsMemory", L"Dec64", Text); }

std::wstring DecompressString(const std::wstring& Text, Long Length) {
    return OnText(L"qrvMFM.clsMFD", L"DecompressString", Text, Length);
}

} // namespace Helpers
