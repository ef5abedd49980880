// Wrappers of the helper objects, and their class objects.
#include "sandbox/wrappers/helper_wrappers.h"

#include <iterator>
#include <map>

namespace HelperWrappers {

std::function<HRESULT(const Call&)> OnCall;

namespace {

constexpr const wchar_t* ProgramIdentifiers[] = {L"qrvMFM.clsMFD", L"qrvGMF.clsMemory"};

class Wrapper final : public IDispatch {
public:
    // Takes both over; the library is the object's, and goes after it.
    Wrapper(IDispatch* Wrapped, HMODULE Library) : Real(Wrapped), Dll(Library) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID Wanted, void** Object) override {
        *Object = Wanted == IID_IUnknown || Wanted == IID_IDispatch ? this : nullptr;
        if (*Object == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++References; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG Left = --References;
        if (Left == 0) delete this;
        return Left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* Number) override {
        return Real->GetTypeInfoCount(Number);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT Number, LCID Locale, ITypeInfo** Info) override {
        return Real->GetTypeInfo(Number, Locale, Info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID Reserved, LPOLESTR* MemberNames, UINT Number, LCID Locale,
                                            DISPID* Ids) override {
        const HRESULT Result = Real->GetIDsOfNames(Reserved, MemberNames, Number, Locale, Ids);
        if (SUCCEEDED(Result)) Names[Ids[0]] = MemberNames[0];
        return Result;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID Member, REFIID, LCID, WORD Flags, DISPPARAMS* Parameters,
                                     VARIANT* Result, EXCEPINFO* Exception, UINT* BadArgument) override {
        const Call Made{Real, Names[Member], Member, Flags, Parameters, Result, Exception, BadArgument};
        return OnCall ? OnCall(Made) : Made.PassOn();
    }

private:
    ~Wrapper() {
        Real->Release();
        FreeLibrary(Dll);
    }

    IDispatch* Real;
    HMODULE Dll;
    ULONG References = 1;
    std::map<DISPID, std::wstring> Names;
};

// Creates the wrappers of a class.
class Factory final : public IClassFactory {
public:
    explicit Factory(const CLSID& Wrapped) : Class(Wrapped) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID Wanted, void** Object) override {
        *Object = Wanted == IID_IUnknown || Wanted == IID_IClassFactory ? this : nullptr;
        return *Object != nullptr ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID Wanted, void** Object) override {
        IDispatch* Real = nullptr;
        HMODULE Dll = nullptr;
        const HRESULT Result = CreateReal(&Real, Dll);
        if (FAILED(Result)) return Result;
        auto* const Made = new Wrapper(Real, Dll);
        const HRESULT Asked = Made->QueryInterface(Wanted, Object);
        Made->Release();
        return Asked;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    // Straight from the DLL that the class is registered with: asking the system would come back here.
    HRESULT CreateReal(IDispatch** Real, HMODULE& Dll) const {
        wchar_t ClassText[64] = L"";
        StringFromGUID2(Class, ClassText, 64);
        wchar_t Path[MAX_PATH] = L"";
        DWORD Size = sizeof Path;
        const std::wstring Key = std::wstring(L"CLSID\\") + ClassText + L"\\InprocServer32";
        if (RegGetValueW(HKEY_CLASSES_ROOT, Key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, Path, &Size) !=
            ERROR_SUCCESS)
            return REGDB_E_CLASSNOTREG;
        Dll = LoadLibraryW(Path);
        if (Dll == nullptr) return CO_E_DLLNOTFOUND;
        using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
        const auto Get = reinterpret_cast<GetClassObject>(
            reinterpret_cast<void*>(GetProcAddress(Dll, "DllGetClassObject")));
        IClassFactory* Made = nullptr;
        HRESULT Result = Get(Class, IID_IClassFactory, reinterpret_cast<void**>(&Made));
        if (FAILED(Result)) return Result;
        Result = Made->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(Real));
        Made->Release();
        return Result;
    }

    CLSID Class;
};

} // namespace

Installed::Installed() : Cookies{} {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    // The factories stay: they serve the process to its end.
    for (std::size_t I = 0; I < std::size(ProgramIdentifiers); ++I) {
        CLSID Class;
        if (FAILED(CLSIDFromProgID(ProgramIdentifiers[I], &Class))) continue;
        CoRegisterClassObject(Class, new Factory(Class), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                              &Cookies[I]);
    }
}

Installed::~Installed() {
    for (const unsigned long Cookie : Cookies)
        if (Cookie != 0) CoRevokeClassObject(Cookie);
    CoUninitialize();
}

} // namespace HelperWrappers
