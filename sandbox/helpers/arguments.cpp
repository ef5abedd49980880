#include "sandbox/helpers/automation.h"

namespace Automation {

namespace {

// A Variant of our own for the time of a conversion.
struct Scratch {
    VARIANT Value;
    Scratch() { VariantInit(&Value); }
    ~Scratch() { VariantClear(&Value); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
};

void Convert(Scratch& To, const VARIANT& From, VARTYPE Type) {
    VARIANT Shallow = From; // the source is only read, although the function does not say so
    if (FAILED(VariantChangeType(&To.Value, &Shallow, VARIANT_ALPHABOOL, Type)))
        throw Error{TypeMismatch, "Type mismatch"};
}

std::string TextOf(const VARIANT& From, UINT CodePage = CP_ACP) {
    Scratch Text;
    Convert(Text, From, VT_BSTR);
    return ToBytes({Text.Value.bstrVal, SysStringLen(Text.Value.bstrVal)}, CodePage);
}

bool IsNullText(const VARIANT& Given) {
    switch (V_VT(&Given)) {
    case VT_BSTR: return !V_BSTR(&Given);
    case VT_BSTR | VT_BYREF: return !*V_BSTRREF(&Given);
    case VT_NULL:
    case VT_ERROR: return true;
    default: return false;
    }
}

IDispatch* ObjectOf(const VARIANT& Given) {
    if (V_VT(&Given) == VT_DISPATCH) return V_DISPATCH(&Given);
    if (V_VT(&Given) == (VT_DISPATCH | VT_BYREF)) return *V_DISPATCHREF(&Given);
    return nullptr;
}

} // namespace

std::string ToBytes(std::wstring_view Text, UINT CodePage) {
    if (Text.empty()) return {};
    // UTF-8 refuses the flag; it has every character.
    const DWORD Flags = CodePage == CP_ACP && GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
    std::string Result(4 * Text.size(), '\0');
    const int Count = WideCharToMultiByte(CodePage, Flags, Text.data(), static_cast<int>(Text.size()),
                                          Result.data(), static_cast<int>(Result.size()), nullptr, nullptr);
    Result.resize(static_cast<std::size_t>(Count));
    return Result;
}

std::wstring FromBytes(std::string_view Bytes, UINT CodePage) {
    if (Bytes.empty()) return {};
    const int Length = static_cast<int>(Bytes.size());
    std::wstring Result(Bytes.size(), L'\0');
    const int Count = MultiByteToWideChar(CodePage, 0, Bytes.data(), Length, Result.data(), Length);
    Result.resize(static_cast<std::size_t>(Count));
    return Result;
}

const VARIANT& Arguments::Value(unsigned At) const {
    static const VARIANT Omitted = [] {
        VARIANT Result;
        V_VT(&Result) = VT_ERROR;
        V_ERROR(&Result) = DISP_E_PARAMNOTFOUND;
        return Result;
    }();
    if (At >= Passed.cArgs) return Omitted;
    const VARIANT& Given = Passed.rgvarg[Passed.cArgs - 1 - At]; // they come last first
    return V_VT(&Given) == (VT_VARIANT | VT_BYREF) ? *V_VARIANTREF(&Given) : Given;
}

std::optional<std::string> Arguments::MaybeText(unsigned At) const {
    if (IsNullText(Value(At))) return {};
    return TextOf(Value(At));
}

std::string Arguments::Bytes(unsigned At) const { return TextOf(Value(At), ByteForByte); }

std::int32_t Arguments::Long(unsigned At) const {
    Scratch Number;
    Convert(Number, Value(At), VT_I4);
    return V_I4(&Number.Value);
}

bool Arguments::Boolean(unsigned At) const {
    Scratch Truth;
    Convert(Truth, Value(At), VT_BOOL);
    return V_BOOL(&Truth.Value) != VARIANT_FALSE;
}

std::vector<std::string> Arguments::Texts(unsigned At) const {
    Scratch Array;
    VARIANT Shallow = Value(At);
    if (FAILED(VariantCopyInd(&Array.Value, &Shallow)) || !V_ISARRAY(&Array.Value) ||
        SafeArrayGetDim(V_ARRAY(&Array.Value)) != 1)
        throw Error{TypeMismatch, "An array is wanted"};
    SAFEARRAY* Elements = V_ARRAY(&Array.Value);
    const VARTYPE Type = V_VT(&Array.Value) & VT_TYPEMASK;
    LONG Low = 0, High = -1;
    SafeArrayGetLBound(Elements, 1, &Low);
    SafeArrayGetUBound(Elements, 1, &High);
    std::vector<std::string> Result;
    for (LONG Index = Low; Index <= High; ++Index) {
        Scratch Element;
        void* To = &Element.Value;
        if (Type != VT_VARIANT) {
            V_VT(&Element.Value) = Type;
            To = &V_NONE(&Element.Value);
        }
        if (FAILED(SafeArrayGetElement(Elements, &Index, To))) throw Error{TypeMismatch, "Bad array"};
        Result.push_back(IsNullText(Element.Value) ? std::string() : TextOf(Element.Value));
    }
    return Result;
}

std::string Arguments::Property(unsigned At, const wchar_t* Name) const {
    IDispatch* Object = ObjectOf(Value(At));
    if (!Object) return {};
    std::wstring Text = Name;
    LPOLESTR Names = Text.data();
    DISPID Id = 0;
    if (FAILED(Object->GetIDsOfNames(IID_NULL, &Names, 1, LOCALE_USER_DEFAULT, &Id))) return {};
    DISPPARAMS Nothing{};
    Scratch Result;
    if (FAILED(Object->Invoke(Id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &Nothing,
                              &Result.Value, nullptr, nullptr)))
        return {};
    return IsNullText(Result.Value) ? std::string() : TextOf(Result.Value);
}

void SetText(VARIANT& Result, std::string_view Text, UINT CodePage) {
    const std::wstring Wide = FromBytes(Text, CodePage);
    V_BSTR(&Result) = SysAllocStringLen(Wide.data(), static_cast<UINT>(Wide.size()));
    if (!V_BSTR(&Result)) throw Error{OutOfMemory, "Out of memory"};
    V_VT(&Result) = VT_BSTR;
}

void SetTexts(VARIANT& Result, const std::vector<std::string>& Texts) {
    SAFEARRAY* Array = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(Texts.size()));
    if (!Array) throw Error{OutOfMemory, "Out of memory"};
    V_VT(&Result) = VT_ARRAY | VT_BSTR;
    V_ARRAY(&Result) = Array; // from here on the caller clears it
    for (LONG Index = 0; Index < static_cast<LONG>(Texts.size()); ++Index) {
        Scratch Element;
        SetText(Element.Value, Texts[static_cast<std::size_t>(Index)]);
        if (FAILED(SafeArrayPutElement(Array, &Index, V_BSTR(&Element.Value))))
            throw Error{OutOfMemory, "Out of memory"};
    }
}

void SetLong(VARIANT& Result, std::int32_t Value) {
    V_VT(&Result) = VT_I4;
    V_I4(&Result) = Value;
}

void SetByte(VARIANT& Result, std::uint8_t Value) {
    V_VT(&Result) = VT_UI1;
    V_UI1(&Result) = Value;
}

void SetBoolean(VARIANT& Result, bool Value) {
    V_VT(&Result) = VT_BOOL;
    V_BOOL(&Result) = Value ? VARIANT_TRUE : VARIANT_FALSE;
}

} // namespace Automation
