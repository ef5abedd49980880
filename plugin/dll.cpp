// The DLL's entry points: the class factory, registration, and whether the DLL may go.
#include <windows.h>

#include <olectl.h>

#include <cwchar>

#include "host/win32/entry.h"
#include "host/win32/module.h"
#include "plugin/clsPlugin.h"
#include "plugin/registration.h"

namespace {

class ClassFactory final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID Wanted, void** Object) noexcept override {
        if (Object == nullptr) return E_POINTER;
        *Object = nullptr;
        if (Wanted != IID_IUnknown && Wanted != IID_IClassFactory) return E_NOINTERFACE;
        *Object = static_cast<IClassFactory*>(this);
        AddRef();
        return S_OK;
    }
    // One static factory: references keep the DLL, not the object.
    ULONG STDMETHODCALLTYPE AddRef() noexcept override {
        Module::AddLock();
        return 2;
    }
    ULONG STDMETHODCALLTYPE Release() noexcept override {
        Module::RemoveLock();
        return 1;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* Outer, REFIID Wanted,
                                             void** Object) noexcept override {
        if (Object == nullptr) return E_POINTER;
        *Object = nullptr;
        if (Outer != nullptr) return CLASS_E_NOAGGREGATION;
        const Module::Entry Guard;
        clsPlugin* const Created = clsPlugin::Create();
        if (Created == nullptr) return E_OUTOFMEMORY;
        const HRESULT Result = Created->QueryInterface(Wanted, Object);
        Created->Release();
        return Result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL Lock) noexcept override {
        if (Lock)
            Module::AddLock();
        else
            Module::RemoveLock();
        return S_OK;
    }
};

ClassFactory Factory;

} // namespace

STDAPI DllGetClassObject(REFCLSID Class, REFIID Wanted, void** Object) {
    if (Object == nullptr) return E_POINTER;
    *Object = nullptr;
    if (Class != CLSID_clsPlugin) return CLASS_E_CLASSNOTAVAILABLE;
    return Factory.QueryInterface(Wanted, Object);
}

STDAPI DllCanUnloadNow() { return Module::IsLocked() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() {
    const Module::Entry Guard;
    return Register(RegistrationScope::Machine);
}

STDAPI DllUnregisterServer() {
    const Module::Entry Guard;
    return Unregister(RegistrationScope::Machine);
}

// regsvr32 /n /i:user registers for the current user alone, without elevation.
STDAPI DllInstall(BOOL Install, LPCWSTR CommandLine) {
    const Module::Entry Guard;
    const bool ForUser = CommandLine != nullptr && _wcsicmp(CommandLine, L"user") == 0;
    const RegistrationScope Scope = ForUser ? RegistrationScope::User : RegistrationScope::Machine;
    return Install ? Register(Scope) : Unregister(Scope);
}
