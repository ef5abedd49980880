// What system errors become for automation clients.
#include "host/win32/system_error.h"

namespace {

struct KnownError {
    HRESULT Error;
    Long Number;
};

constexpr KnownError KnownErrors[] = {
    {E_OUTOFMEMORY, ErrorNumber::OutOfMemory},
    {DISP_E_OVERFLOW, ErrorNumber::Overflow},
    {DISP_E_TYPEMISMATCH, ErrorNumber::TypeMismatch},
    {DISP_E_BADVARTYPE, ErrorNumber::TypeMismatch},
    {DISP_E_MEMBERNOTFOUND, ErrorNumber::NoSuchMember},
    {DISP_E_UNKNOWNNAME, ErrorNumber::NoSuchMember},
    {DISP_E_BADINDEX, ErrorNumber::SubscriptOutOfRange},
    {DISP_E_PARAMNOTOPTIONAL, ErrorNumber::ArgumentNotOptional},
};

Long FileErrorNumber(DWORD Error) {
    switch (Error) {
    case ERROR_PATH_NOT_FOUND: return ErrorNumber::PathNotFound;
    case ERROR_FILE_NOT_FOUND: return ErrorNumber::FileNotFound;
    default: return ErrorNumber::PathAccess;
    }
}

} // namespace

Long ErrorNumberOf(HRESULT Error) {
    for (const KnownError& Known : KnownErrors)
        if (Known.Error == Error) return Known.Number;
    return HRESULT_FACILITY(Error) == FACILITY_CONTROL ? HRESULT_CODE(Error) : static_cast<Long>(Error);
}

std::wstring SystemText(HRESULT Error) {
    wchar_t* Text = nullptr;
    const DWORD Length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
        static_cast<DWORD>(Error), 0, reinterpret_cast<wchar_t*>(&Text), 0, nullptr);
    std::wstring Described(Text == nullptr ? L"" : Text, Length);
    LocalFree(Text);
    while (!Described.empty() &&
           (Described.back() == L'\n' || Described.back() == L'\r' || Described.back() == L' '))
        Described.pop_back();
    return Described;
}

void FailWith(HRESULT Error, Place Where) {
    const Long Number = ErrorNumberOf(Error);
    const bool Known = Number != static_cast<Long>(Error);
    Fail(Number, Known ? ErrorDescription(Number) : SystemText(Error), Where);
}

void FailWithFileError(DWORD Error, TextView Path, Place Where) {
    const Long Number = FileErrorNumber(Error);
    Fail(Number,
         ErrorDescription(Number) + L": " + std::wstring(Path) + L" (" +
             SystemText(HRESULT_FROM_WIN32(Error)) + L")",
         Where);
}
