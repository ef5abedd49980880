// Conversions of automation types, and the one call of Invoke.
#include "host/win32/automation.h"

#include "host/win32/entry.h"

namespace {

constexpr LCID EnglishUs = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

// The value in another type. Flags, locale and user overrides are fixed so that every system converts alike.
Variant Changed(const VARIANT& From, VARTYPE Type, Place Where) {
    // No number or truth value is that long. The conversion of more digits could overflow.
    constexpr UINT LongestNumber = 255;
    if (V_VT(&From) == VT_BSTR && SysStringLen(V_BSTR(&From)) > LongestNumber)
        Fail(ErrorNumber::TypeMismatch, {}, Where);
    Variant To;
    const HRESULT Result = VariantChangeTypeEx(&To.Value, const_cast<VARIANT*>(&From), EnglishUs,
                                               VARIANT_NOUSEROVERRIDE | VARIANT_ALPHABOOL, Type);
    if (FAILED(Result)) FailWith(Result, Where);
    return To;
}

// The three strings of an EXCEPINFO are the caller's.
class ExceptionInfo {
public:
    ExceptionInfo() = default;
    ~ExceptionInfo() {
        SysFreeString(Info.bstrSource);
        SysFreeString(Info.bstrDescription);
        SysFreeString(Info.bstrHelpFile);
    }
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;

    [[noreturn]] void Throw(Place Where) {
        if (Info.pfnDeferredFillIn != nullptr) Info.pfnDeferredFillIn(&Info);
        Long Number = Info.wCode != 0 ? Info.wCode : ErrorNumberOf(Info.scode);
        if (Number == 0)
            Number = ErrorNumber::InternalError; // a failure without a number is one all the same
        std::wstring Description = TextOf(Info.bstrDescription);
        if (Description.empty())
            Description = Info.wCode != 0 ? ErrorDescription(Number) : SystemText(Info.scode);
        Fail(Number, std::move(Description), Where);
    }

    EXCEPINFO Info{};
};

Argument Typed(VARTYPE Type) {
    Argument Made;
    VariantInit(&Made.Value);
    V_VT(&Made.Value) = Type;
    return Made;
}

} // namespace

Bstr::Bstr(TextView Text, Place Where)
    : Value(SysAllocStringLen(Text.data(), static_cast<UINT>(Text.size()))) {
    if (Value == nullptr) Fail(ErrorNumber::OutOfMemory, {}, Where);
}

ArrayOwner::ArrayOwner(VARTYPE Type, std::size_t Elements, Place Where)
    : Value(SafeArrayCreateVector(Type, 0, static_cast<ULONG>(Elements))) {
    if (Value == nullptr) Fail(ErrorNumber::OutOfMemory, {}, Where);
}

void ArrayOwner::Put(std::size_t At, void* Element, Place Where) {
    LONG Index = static_cast<LONG>(At);
    const HRESULT Result = SafeArrayPutElement(Value, &Index, Element);
    if (FAILED(Result)) FailWith(Result, Where);
}

std::wstring TextOf(BSTR Text) {
    return Text == nullptr ? std::wstring() : std::wstring(Text, SysStringLen(Text));
}

Long ToLong(const VARIANT& Value, Place Where) {
    if (V_VT(&Value) == VT_I4) return V_I4(&Value);
    const Variant Number = Changed(Value, VT_I4, Where);
    return V_I4(&Number.Value);
}

bool ToBool(const VARIANT& Value, Place Where) {
    const Variant Flag = Changed(Value, VT_BOOL, Where);
    return V_BOOL(&Flag.Value) != VARIANT_FALSE;
}

std::wstring ToWideText(const VARIANT& Value, Place Where) {
    if (V_VT(&Value) == VT_BSTR) return TextOf(V_BSTR(&Value));
    const Variant Text = Changed(Value, VT_BSTR, Where);
    return TextOf(V_BSTR(&Text.Value));
}

bool IsRecord(const VARIANT& Value) noexcept { return (V_VT(&Value) & VT_TYPEMASK) == VT_RECORD; }

ArrayView ArrayIn(const VARIANT& Value) noexcept {
    const VARIANT* At = &Value;
    if (V_VT(At) == (VT_BYREF | VT_VARIANT)) At = V_VARIANTREF(At);
    if (At == nullptr || (V_VT(At) & VT_ARRAY) == 0) return {};
    const bool IsReference = (V_VT(At) & VT_BYREF) != 0;
    if (IsReference && V_ARRAYREF(At) == nullptr) return {};
    ArrayView Found{IsReference ? *V_ARRAYREF(At) : V_ARRAY(At), VT_EMPTY};
    if (Found.Array != nullptr && FAILED(SafeArrayGetVartype(Found.Array, &Found.Type)))
        Found.Type = V_VT(At) & VT_TYPEMASK;
    return Found;
}

Variant ElementOf(const ArrayView& Elements, LONG At, Place Where) {
    if (Elements.Type == VT_RECORD) Fail(ErrorNumber::TypeMismatch, {}, Where); // no value of ours
    // By reference, because an array that does not know its type would give a BSTR away that stays its own.
    VARIANT Reference;
    V_VT(&Reference) = Elements.Type | VT_BYREF;
    HRESULT Result = SafeArrayPtrOfIndex(Elements.Array, &At, &V_BYREF(&Reference));
    if (SUCCEEDED(Result) && Elements.Type == VT_VARIANT && IsRecord(*V_VARIANTREF(&Reference)))
        Fail(ErrorNumber::TypeMismatch, {}, Where);
    Variant Element;
    if (SUCCEEDED(Result)) Result = VariantCopyInd(&Element.Value, &Reference);
    if (FAILED(Result)) FailWith(Result, Where);
    return Element;
}

Lines ToLines(const ArrayView& Elements, Place Where) {
    SAFEARRAY* const Array = Elements.Array;
    if (Array == nullptr || SafeArrayGetDim(Array) != 1) Fail(ErrorNumber::TypeMismatch, {}, Where);
    void* Data = nullptr;
    const HRESULT Result = SafeArrayAccessData(Array, &Data);
    if (FAILED(Result)) FailWith(Result, Where);
    struct Unlock {
        SAFEARRAY* Locked;
        ~Unlock() { SafeArrayUnaccessData(Locked); }
    } const Unlocking{Array};
    const ULONG Count = Array->rgsabound[0].cElements;
    Lines Texts;
    Texts.reserve(Count);
    for (ULONG I = 0; I < Count; ++I) {
        const LONG At = Array->rgsabound[0].lLbound + static_cast<LONG>(I);
        Texts.push_back(Elements.Type == VT_BSTR ? TextOf(static_cast<BSTR*>(Data)[I])
                                                 : ToWideText(ElementOf(Elements, At, Where).Value, Where));
    }
    return Texts;
}

Argument Arg(Long Number) {
    Argument Made = Typed(VT_I4);
    V_I4(&Made.Value) = Number;
    return Made;
}

Argument Arg(bool Flag) {
    Argument Made = Typed(VT_BOOL);
    V_BOOL(&Made.Value) = Flag ? VARIANT_TRUE : VARIANT_FALSE;
    return Made;
}

Argument Arg(TextView Text, Place Where) {
    Argument Made = Typed(VT_BSTR);
    V_BSTR(&Made.Value) = Bstr(Text, Where).Detach();
    return Made;
}

Argument Arg(const std::optional<TextView>& Text, Place Where) {
    if (Text) return Arg(*Text, Where);
    Argument Made = Typed(VT_BSTR);
    V_BSTR(&Made.Value) = nullptr;
    return Made;
}

Argument Arg(IDispatch* Object) {
    Argument Made = Typed(VT_DISPATCH);
    V_DISPATCH(&Made.Value) = Object;
    if (Object != nullptr) Object->AddRef();
    return Made;
}

Argument Arg(SAFEARRAY** Variants) {
    Argument Made = Typed(VT_ARRAY | VT_VARIANT | VT_BYREF);
    V_ARRAYREF(&Made.Value) = Variants;
    return Made;
}

Argument Arg(SAFEARRAY* Variants) {
    Argument Made = Typed(VT_ARRAY | VT_VARIANT);
    V_ARRAY(&Made.Value) = Variants;
    return Made;
}

Arguments::~Arguments() {
    for (std::size_t I = Most - Count; I < Most; ++I) VariantClear(&Values[I]);
}

void Arguments::Push(Argument Made) noexcept { Values[Most - ++Count] = Made.Value; }

void HelperObject::Create(Place Where) {
    Release();
    CLSID Class;
    HRESULT Result = CLSIDFromProgID(ProgId, &Class);
    if (SUCCEEDED(Result))
        Result = CoCreateInstance(Class, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                  reinterpret_cast<void**>(Object.Receive()));
    if (FAILED(Result))
        Fail(ErrorNumber::CannotCreateObject,
             ErrorDescription(ErrorNumber::CannotCreateObject) + L": " + ProgId + L" (" + SystemText(Result) +
                 L")",
             Where);
    ++Generation;
}

void HelperObject::Release() noexcept { Object.Release(); }

DISPID HelperObject::IdOf(Member& Called, Place Where) const {
    if (Called.Generation == Generation) return Called.Id;
    auto* Name = const_cast<wchar_t*>(Called.Name);
    const HRESULT Result = Object->GetIDsOfNames(IID_NULL, &Name, 1, LOCALE_USER_DEFAULT, &Called.Id);
    if (FAILED(Result))
        Fail(ErrorNumber::NoSuchMember,
             ErrorDescription(ErrorNumber::NoSuchMember) + L": " + ProgId + L"." + Name, Where);
    Called.Generation = Generation;
    return Called.Id;
}

Variant HelperObject::Call(Member& Called, Arguments&& With, Place Where) {
    Work::RequireServer(Where);
    if (!Object)
        Fail(ErrorNumber::ObjectNotSet, ErrorDescription(ErrorNumber::ObjectNotSet) + L": " + ProgId, Where);
    const DISPID Id = IdOf(Called, Where);
    // The call may let the host release us; the object must outlive it.
    const ComPointer<IDispatch> Kept = Object.Share();
    const Module::FloatingPoint AsWeNeedIt;
    DISPPARAMS Parameters{With.First(), nullptr, With.Number(), 0};
    Variant Result;
    ExceptionInfo Exception;
    const HRESULT Outcome =
        Kept->Invoke(Id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &Parameters,
                     &Result.Value, &Exception.Info, nullptr);
    Work::RequireServer(Where);
    if (Outcome == DISP_E_EXCEPTION) Exception.Throw(Where);
    if (FAILED(Outcome)) FailWith(Outcome, Where);
    if ((V_VT(&Result.Value) & VT_BYREF) != 0) {
        Variant Direct;
        const HRESULT Copied = VariantCopyInd(&Direct.Value, &Result.Value);
        if (FAILED(Copied)) FailWith(Copied, Where);
        return Direct;
    }
    return Result;
}
