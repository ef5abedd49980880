#include "plugin/pdat.h"

namespace {

template <class T>
const T& Converted(const Pdat& Data, std::size_t Element, std::optional<T> HostValue::*Form, Place Where) {
    if (Element >= Data.size()) Fail(ErrorNumber::SubscriptOutOfRange, {}, Where);
    const std::optional<T>& Value = Data[Element].*Form;
    if (!Value) Fail(ErrorNumber::TypeMismatch, {}, Where);
    return *Value;
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
