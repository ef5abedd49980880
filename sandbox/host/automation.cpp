#include "sandbox/host/automation.h"

#include <iterator>
#include <string>

namespace Automation {
namespace {

void Check(HRESULT Result) {
    if (Result == DISP_E_TYPEMISMATCH) Fail(ErrorNumber::TypeMismatch);
    if (FAILED(Result)) Fail(Result, L"Automation result " + std::to_wstring(Result));
}

BSTR NewText(TextView Text) {
    BSTR Made = SysAllocStringLen(Text.data(), static_cast<UINT>(Text.size()));
    if (!Made) Fail(ErrorNumber::OutOfMemory);
    return Made;
}

std::wstring TakeText(BSTR Text) {
    std::wstring Taken(Text ? Text : L"", SysStringLen(Text));
    SysFreeString(Text);
    return Taken;
}

Value Converted(const VARIANT& Held, VARTYPE Type) {
    Value Result;
    Check(VariantChangeType(&*Result, const_cast<VARIANT*>(&Held), VARIANT_ALPHABOOL, Type));
    return Result;
}

[[noreturn]] void FailWith(EXCEPINFO& Error) {
    if (Error.pfnDeferredFillIn) Error.pfnDeferredFillIn(&Error);
    SysFreeString(Error.bstrSource);
    SysFreeString(Error.bstrHelpFile);
    const Long Number = Error.wCode ? Error.wCode : Error.scode;
    Fail(Number, TakeText(Error.bstrDescription));
}

} // namespace

Value FromText(TextView Text) {
    Value Made;
    Made->bstrVal = NewText(Text);
    Made->vt = VT_BSTR;
    return Made;
}

Value FromWhole(Long Number) {
    Value Made;
    Made->vt = VT_I4;
    Made->lVal = Number;
    return Made;
}

Value FromBoolean(bool Flag) {
    Value Made;
    Made->vt = VT_BOOL;
    Made->boolVal = Flag ? VARIANT_TRUE : VARIANT_FALSE;
    return Made;
}

Value Missing() {
    Value Made;
    Made->vt = VT_ERROR;
    Made->scode = DISP_E_PARAMNOTFOUND;
    return Made;
}

Value FromList(Values Elements) {
    Value Made;
    Made->parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(Elements.size()));
    if (!Made->parray) Fail(ErrorNumber::OutOfMemory);
    Made->vt = VT_ARRAY | VT_VARIANT;
    for (LONG At = 0; At < static_cast<LONG>(Elements.size()); ++At)
        Check(SafeArrayPutElement(Made->parray, &At, &*Elements[static_cast<std::size_t>(At)]));
    return Made;
}

Value FromLines(const Lines& Elements) {
    Value Made;
    Made->parray = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(Elements.size()));
    if (!Made->parray) Fail(ErrorNumber::OutOfMemory);
    Made->vt = VT_ARRAY | VT_BSTR;
    for (LONG At = 0; At < static_cast<LONG>(Elements.size()); ++At)
        Check(SafeArrayPutElement(Made->parray, &At,
                                  FromText(Elements[static_cast<std::size_t>(At)])->bstrVal));
    return Made;
}

std::wstring AsText(const VARIANT& Held) {
    Value Text = Converted(Held, VT_BSTR);
    return std::wstring(Text->bstrVal ? Text->bstrVal : L"", SysStringLen(Text->bstrVal));
}

Long AsWhole(const VARIANT& Held) { return Converted(Held, VT_I4)->lVal; }

Lines AsLines(const VARIANT& Held) {
    VARTYPE Kind = 0;
    LONG Lower = 0, Upper = -1;
    if (!(Held.vt & VT_ARRAY) || (Held.vt & VT_BYREF)) Fail(ErrorNumber::TypeMismatch);
    Check(SafeArrayGetVartype(Held.parray, &Kind));
    Check(SafeArrayGetLBound(Held.parray, 1, &Lower));
    Check(SafeArrayGetUBound(Held.parray, 1, &Upper));
    Lines Elements;
    for (LONG At = Lower; At <= Upper; ++At) {
        Value Element;
        const bool IsVariant = Kind == VT_VARIANT;
        Check(SafeArrayGetElement(Held.parray, &At,
                                  IsVariant ? static_cast<void*>(&*Element) : &Element->lVal));
        if (!IsVariant) Element->vt = Kind;
        Elements.push_back(AsText(*Element));
    }
    return Elements;
}

std::vector<Field> RecordFields(const VARIANT& Record) {
    if (Record.vt != VT_RECORD || !Record.pRecInfo) Fail(ErrorNumber::TypeMismatch);
    BSTR Names[64] = {};
    ULONG Count = static_cast<ULONG>(std::size(Names));
    Check(Record.pRecInfo->GetFieldNames(&Count, Names));
    std::vector<Field> Fields;
    for (ULONG At = 0; At < Count; ++At) {
        std::wstring Name = TakeText(Names[At]);
        // The reference belongs to the record: it is copied and never cleared.
        VARIANT Reference;
        VariantInit(&Reference);
        void* Content = nullptr;
        Check(Record.pRecInfo->GetFieldNoCopy(Record.pvRecord, Name.c_str(), &Reference, &Content));
        Value Copy;
        Check(VariantCopyInd(&*Copy, &Reference));
        Fields.emplace_back(std::move(Name), std::move(Copy));
    }
    return Fields;
}

Value Object::Call(const wchar_t* Member, Values Arguments) const {
    if (!Held) Fail(ErrorNumber::ObjectNotSet);
    DISPID Id = 0;
    std::wstring Name = Member;
    wchar_t* Spelled = Name.data();
    if (FAILED(Held->GetIDsOfNames(IID_NULL, &Spelled, 1, LOCALE_USER_DEFAULT, &Id)))
        Fail(ErrorNumber::NoSuchMember, L"No member " + Name);
    // Automation takes the arguments last first.
    std::vector<VARIANT> Reversed;
    for (auto Each = Arguments.rbegin(); Each != Arguments.rend(); ++Each) Reversed.push_back(**Each);
    DISPPARAMS Given{Reversed.data(), nullptr, static_cast<UINT>(Reversed.size()), 0};
    EXCEPINFO Error{};
    Value Result;
    const HRESULT Code =
        Held->Invoke(Id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &Given, &*Result, &Error, nullptr);
    if (Code == DISP_E_EXCEPTION) FailWith(Error);
    Check(Code);
    return Result;
}

Object Create(const wchar_t* ProgramIdentifier) {
    CLSID Class;
    void* Made = nullptr;
    if (FAILED(CLSIDFromProgID(ProgramIdentifier, &Class)) ||
        FAILED(CoCreateInstance(Class, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &Made)))
        Fail(ErrorNumber::CannotCreateObject, std::wstring(L"Cannot create ") + ProgramIdentifier);
    return Object(static_cast<IDispatch*>(Made));
}

} // namespace Automation
