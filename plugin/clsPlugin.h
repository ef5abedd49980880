// clsPlugin, the one class that the host creates.
#pragma once

#include "host/win32/automation.h"
#include "qrvVNT_h.h"

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
    HRESULT STDMETHODCALLTYPE PuntPlayerRem(LONG Index, VARIANT PDAT, VARIANT Data,
                                            LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE ArmPlayerRem(LONG Index, VARIANT PDAT, VARIANT Data,
                                           LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE SlapPlayerRem(LONG Index, VARIANT PDAT, VARIANT Data,
                                            LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE AddSlapRem(LONG Index, VARIANT PDAT, VARIANT Data,
                                         LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE SetBanMethod(LONG Index, VARIANT PDAT, VARIANT Data,
                                           LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE SetIdlePunt(LONG Index, VARIANT PDAT, VARIANT Data,
                                          LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE SetIdleMax(LONG Index, VARIANT PDAT, VARIANT Data,
                                         LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE DeleteSlapRem(LONG Index, VARIANT PDAT, VARIANT Data,
                                            LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE EditSlapRem(LONG Index, VARIANT PDAT, VARIANT Data,
                                          LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE RemoveBannedRem(LONG Index, VARIANT PDAT, VARIANT Data,
                                              LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE AddBannedRem(LONG Index, VARIANT PDAT, VARIANT Data,
                                           LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE DisableProfile(LONG Index) noexcept override;
    HRESULT STDMETHODCALLTYPE HideInterface(BSTR fName) noexcept override;

    clsPlugin(const clsPlugin&) = delete;
    clsPlugin& operator=(const clsPlugin&) = delete;

private:
    clsPlugin() noexcept;
    ~clsPlugin();

    LONG References = 1;
};
