// The object, its factory and the exports by which a client finds them.
#include <windows.h>

#include <objbase.h>

#include <exception>
#include <new>

#include "sandbox/helpers/automation.h"

namespace Automation {

namespace {

HMODULE Module = nullptr;
LONG Objects = 0; // living objects and factory locks

const wchar_t* const MadeToFailVariable = L"VANTOR_SANDBOX_FAIL";

// For tests of how a client bears a failing member.
void FailWhenTold(const wchar_t* Name) {
    wchar_t Told[64];
    const DWORD Length = GetEnvironmentVariableW(MadeToFailVariable, Told, ARRAYSIZE(Told));
    if (Length > 0 && Length < ARRAYSIZE(Told) && lstrcmpiW(Told, Name) == 0)
        throw Error{MadeToFail, "made to fail"};
}

Error CurrentError() noexcept {
    try {
        throw;
    } catch (const Error& Known) {
        return Known;
    } catch (const std::bad_alloc&) {
        return {OutOfMemory, "Out of memory"};
    } catch (const std::exception& Other) {
        return {InternalError, Other.what()};
    } catch (...) {
        return {InternalError, "Internal error"};
    }
}

HRESULT Report(const Error& Which, EXCEPINFO* Info) {
    if (!Info) return DISP_E_EXCEPTION;
    *Info = {};
    Info->scode = static_cast<SCODE>(0x800A0000U + static_cast<unsigned>(Which.Number));
    Info->bstrSource = SysAllocString(TheClass.ProgId);
    Info->bstrDescription = SysAllocString(FromBytes(Which.Description).c_str());
    return DISP_E_EXCEPTION;
}

HRESULT Call(const Member& Which, const DISPPARAMS& Given, VARIANT* Result, EXCEPINFO* Info) {
    VARIANT Answer;
    VariantInit(&Answer);
    try {
        FailWhenTold(Which.Name);
        Which.Run(Arguments(Given), Answer);
    } catch (...) {
        VariantClear(&Answer);
        return Report(CurrentError(), Info);
    }
    if (Result) {
        *Result = Answer;
    } else {
        VariantClear(&Answer);
    }
    return S_OK;
}

class Object final : public IDispatch {
public:
    Object() { InterlockedIncrement(&Objects); }
    ~Object() { InterlockedDecrement(&Objects); }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    STDMETHODIMP QueryInterface(REFIID Wanted, void** To) override {
        if (!To) return E_POINTER;
        const bool IsOurs = Wanted == IID_IUnknown || Wanted == IID_IDispatch;
        *To = IsOurs ? static_cast<IDispatch*>(this) : nullptr;
        if (IsOurs) AddRef();
        return IsOurs ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&References)); }
    STDMETHODIMP_(ULONG) Release() override {
        const LONG Left = InterlockedDecrement(&References);
        if (Left == 0) delete this;
        return static_cast<ULONG>(Left);
    }
    STDMETHODIMP GetTypeInfoCount(UINT* Count) override {
        if (!Count) return E_POINTER;
        *Count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* Names, UINT Count, LCID, DISPID* Ids) override {
        for (UINT At = 0; At < Count; ++At) Ids[At] = DISPID_UNKNOWN;
        DISPID Id = 0;
        for (const Member& Candidate : TheClass.Members)
            if (++Id; Count > 0 && lstrcmpiW(Candidate.Name, Names[0]) == 0) Ids[0] = Id;
        return Count == 1 && Ids[0] != DISPID_UNKNOWN ? S_OK : DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID Id, REFIID, LCID, WORD How, DISPPARAMS* Given, VARIANT* Result,
                        EXCEPINFO* Info, UINT*) override {
        if (Id < 1 || Id > static_cast<DISPID>(TheClass.Members.size())) return DISP_E_MEMBERNOTFOUND;
        if (!(How & (DISPATCH_METHOD | DISPATCH_PROPERTYGET))) return DISP_E_MEMBERNOTFOUND;
        if (!Given) return E_POINTER;
        if (Given->cNamedArgs != 0) return DISP_E_NONAMEDARGS;
        const Member& Which = TheClass.Members[static_cast<std::size_t>(Id - 1)];
        if (Given->cArgs < Which.Least || Given->cArgs > Which.Most) return DISP_E_BADPARAMCOUNT;
        return Call(Which, *Given, Result, Info);
    }

private:
    LONG References = 1;
};

// One for the whole DLL, never deleted.
class Factory final : public IClassFactory {
public:
    STDMETHODIMP QueryInterface(REFIID Wanted, void** To) override {
        if (!To) return E_POINTER;
        const bool IsOurs = Wanted == IID_IUnknown || Wanted == IID_IClassFactory;
        *To = IsOurs ? static_cast<IClassFactory*>(this) : nullptr;
        return IsOurs ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown* Outer, REFIID Wanted, void** To) override {
        if (!To) return E_POINTER;
        *To = nullptr;
        if (Outer) return CLASS_E_NOAGGREGATION;
        auto* Made = new (std::nothrow) Object;
        if (!Made) return E_OUTOFMEMORY;
        const HRESULT Result = Made->QueryInterface(Wanted, To);
        Made->Release();
        return Result;
    }
    STDMETHODIMP LockServer(BOOL Lock) override {
        Lock ? InterlockedIncrement(&Objects) : InterlockedDecrement(&Objects);
        return S_OK;
    }
};

Factory TheFactory;

} // namespace

std::wstring ModulePath() {
    wchar_t Path[MAX_PATH];
    return {Path, GetModuleFileNameW(Module, Path, ARRAYSIZE(Path))};
}

} // namespace Automation

BOOL WINAPI DllMain(HINSTANCE Instance, DWORD Reason, void*) {
    if (Reason == DLL_PROCESS_ATTACH) Automation::Module = Instance;
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID Class, REFIID Wanted, void** To) {
    if (!To) return E_POINTER;
    *To = nullptr;
    return Class == Automation::TheClass.Id ? Automation::TheFactory.QueryInterface(Wanted, To)
                                            : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() { return Automation::Objects == 0 ? S_OK : S_FALSE; }
