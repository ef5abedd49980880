#include "plugin/pdat.h"

namespace {

template <class T>
T Converted(const Pdat& Data, std::size_t Element, std::optional<T> HostValue::*Form, Place Where) {
    const bool IsThere = Element < Data.size();
    const std::optional<T> Value = IsThere ? Data[Element].*Form : std::nullopt;
    if (Value) return *Value;
    const Long Number = IsThere ? ErrorNumber::TypeMismatch : ErrorNumber::SubscriptOutOfRange;
    Fail(Number, ErrorDescription(Number) + L": PDAT(" + ToText(static_cast<Long>(Element)) + L")", Where);
}

} // namespace

std::wstring PdatText(const Pdat& Data, std::size_t Element, Place Where) {
    return Converted(Data, Element, &HostValue::Text, Where);
}

Long PdatNumber(const Pdat& Data, std::size_t Element, Place Where) {
    return Converted(Data, Element, &HostValue::Number, Where);
}

bool PdatFlag(const Pdat& Data, std::size_t Element, Place Where) {
    return Converted(Data, Element, &HostValue::Flag, Where);
}
