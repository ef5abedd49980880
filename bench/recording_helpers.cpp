#include "bench/recording_helpers.h"

#include <vector>

#include "sandbox/wrappers/helper_wrappers.h"

namespace RecordingHelpers {

namespace {

struct KeptCall {
    IDispatch* Object;
    DISPID Member;
    WORD Flags;
    std::vector<VARIANT> Arguments; // last first
};

std::vector<KeptCall> Kept;

void ForgetCalls() {
    for (KeptCall& Item : Kept)
        for (VARIANT& Argument : Item.Arguments) VariantClear(&Argument);
    Kept.clear();
}

HRESULT KeepAndPassOn(const HelperWrappers::Call& Made) {
    KeptCall Copy{Made.Real, Made.Member, Made.Flags, std::vector<VARIANT>(Made.Parameters->cArgs)};
    for (UINT I = 0; I < Made.Parameters->cArgs; ++I) {
        VariantInit(&Copy.Arguments[I]);
        VariantCopyInd(&Copy.Arguments[I], &Made.Parameters->rgvarg[I]);
    }
    Kept.push_back(std::move(Copy));
    return Made.PassOn();
}

} // namespace

void Record(bool On) {
    if (On) ForgetCalls();
    HelperWrappers::OnCall = On ? KeepAndPassOn : std::function<HRESULT(const HelperWrappers::Call&)>();
}

std::size_t Count() { return Kept.size(); }

void Replay() {
    for (KeptCall& Item : Kept) {
        DISPPARAMS Parameters{Item.Arguments.data(), nullptr, static_cast<UINT>(Item.Arguments.size()), 0};
        VARIANT Result;
        VariantInit(&Result);
        Item.Object->Invoke(Item.Member, IID_NULL, LOCALE_USER_DEFAULT, Item.Flags, &Parameters, &Result,
                            nullptr, nullptr);
        VariantClear(&Result);
    }
}

} // namespace RecordingHelpers
