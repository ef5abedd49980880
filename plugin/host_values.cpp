// The host's profile data and requests, out of Variants.
#include "plugin/host_values.h"

#include <algorithm>

#include "host/win32/automation.h"

namespace {

// A parameter that the caller left out.
bool IsMissing(const VARIANT& Value) {
    return V_VT(&Value) == VT_EMPTY || (V_VT(&Value) == VT_ERROR && V_ERROR(&Value) == DISP_E_PARAMNOTFOUND);
}

// What the conversion returns; absent when the platform cannot convert.
template <class F> auto Attempted(F&& Convert) -> std::optional<decltype(Convert())> {
    try {
        return Convert();
    } catch (const Failure&) {
        return std::nullopt;
    }
}

} // namespace

HostValue HostValueFrom(const VARIANT& Value) {
    Variant Direct;
    if (IsRecord(Value)) return {};
    if (FAILED(VariantCopyInd(&Direct.Value, const_cast<VARIANT*>(&Value)))) return {};
    HostValue Made;
    Made.Text = Attempted([&] { return ToWideText(Direct.Value); });
    Made.Number = Attempted([&] { return ToLong(Direct.Value); });
    Made.Flag = Attempted([&] { return ToBool(Direct.Value); });
    return Made;
}

Pdat PdatFrom(const VARIANT& PDAT) {
    if (IsMissing(PDAT)) Fail(ErrorNumber::ArgumentNotOptional);
    const ArrayView Given = ArrayIn(PDAT);
    SAFEARRAY* const Array = Given.Array;
    if (Array == nullptr || Given.Type == VT_RECORD || SafeArrayGetDim(Array) != 1)
        Fail(ErrorNumber::TypeMismatch);
    LONG Lower = 0;
    LONG Upper = -1;
    if (FAILED(SafeArrayGetLBound(Array, 1, &Lower)) || FAILED(SafeArrayGetUBound(Array, 1, &Upper)))
        Fail(ErrorNumber::TypeMismatch);
    Pdat Elements;
    // Elements are asked for by their index, and those past the last known one are never asked for.
    for (LONG At = 0; At <= std::min<LONG>(Upper, PdatElement::AreaWidth); ++At)
        Elements.push_back(At < Lower ? HostValue() : HostValueFrom(ElementOf(Given, At).Value));
    return Elements;
}

RemoteRequest RequestFrom(Long Profile, const VARIANT& PDAT, const VARIANT& Data) {
    RemoteRequest Request{Profile, PdatFrom(PDAT), std::nullopt};
    if (!IsMissing(Data)) Request.Data = HostValueFrom(Data);
    return Request;
}
