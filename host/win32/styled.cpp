// The activation context of our own manifest.
#include "host/win32/styled.h"

#include "host/win32/module.h"

namespace {

constexpr WORD ManifestResource = 2;

HANDLE ManifestContext() noexcept {
    ACTCTXW Manifest{};
    Manifest.cbSize = sizeof Manifest;
    Manifest.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
    Manifest.hModule = Module::Instance();
    Manifest.lpResourceName = MAKEINTRESOURCEW(ManifestResource);
    return CreateActCtxW(&Manifest);
}

} // namespace

Styled::Styled() noexcept : Context(ManifestContext()) {
    if (Context == INVALID_HANDLE_VALUE || ActivateActCtx(Context, &Cookie)) return;
    ReleaseActCtx(Context);
    Context = INVALID_HANDLE_VALUE;
}

Styled::~Styled() {
    if (Context == INVALID_HANDLE_VALUE) return;
    DeactivateActCtx(0, Cookie);
    ReleaseActCtx(Context);
}
