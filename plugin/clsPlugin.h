// clsPlugin, the one class that the host creates.
#pragma once

#include "host/win32/automation.h"
#include "qrvVNT_h.h"

// The members that answer a console with a Long differ in their names alone.
#define LONG_MEMBER(Name) \
    HRESULT STDMETHODCALLTYPE Name(LONG Index, VARIANT PDAT, VARIANT Data, LONG* Result) noexcept

// The COM object: each member converts its arguments, calls one procedure of the logic and converts the
// result. No member lets an exception or a failure reach the host.
class clsPlugin final : public _clsPlugin {
public:
    // A new object with one reference; the first one starts the plug-in. Null when memory is short.
    static clsPlugin* Create() noexcept;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID Wanted, void** Object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override;
    ULONG STDMETHODCALLTYPE Release() noexcept override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* Count) noexcept override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT Number, LCID Locale, ITypeInfo** Info) noexcept override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID Reserved, LPOLESTR* Names, UINT Count, LCID Locale,
                                            DISPID* Ids) noexcept override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID Id, REFIID Reserved, LCID Locale, WORD Flags,
                                     DISPPARAMS* Parameters, VARIANT* Result, EXCEPINFO* Exception,
                                     UINT* BadArgument) noexcept override;

    HRESULT STDMETHODCALLTYPE dllVersion(BSTR PNAME, BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE GetData(PLUGIN* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE GetPrivis(VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE LoadInterface(LONG Index, LONG pHwnd, VARIANT PDAT,
                                            BSTR fName) noexcept override;
    HRESULT STDMETHODCALLTYPE UnLoadInterface(BSTR fName) noexcept override;
    HRESULT STDMETHODCALLTYPE GetPlayersRem(LONG Index, VARIANT PDAT, VARIANT Data,
                                            BSTR* Result) noexcept override;
    LONG_MEMBER(PuntPlayerRem) override;
    LONG_MEMBER(ArmPlayerRem) override;
    LONG_MEMBER(SlapPlayerRem) override;
    LONG_MEMBER(AddSlapRem) override;
    LONG_MEMBER(SetBanMethod) override;
    LONG_MEMBER(SetIdlePunt) override;
    LONG_MEMBER(SetIdleMax) override;
    LONG_MEMBER(DeleteSlapRem) override;
    LONG_MEMBER(EditSlapRem) override;
    LONG_MEMBER(RemoveBannedRem) override;
    LONG_MEMBER(AddBannedRem) override;
    HRESULT STDMETHODCALLTYPE DisableProfile(LONG Index) noexcept override;
    HRESULT STDMETHODCALLTYPE HideInterface(BSTR fName) noexcept override;

    clsPlugin(const clsPlugin&) = delete;
    clsPlugin& operator=(const clsPlugin&) = delete;

private:
    clsPlugin() noexcept;
    ~clsPlugin();

    LONG References = 1;
};
