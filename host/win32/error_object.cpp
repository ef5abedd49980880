// The error object that the host's LogError takes: an automation object with Number, Description and Source.
#include <atomic>
#include <iterator>
#include <new>

#include "host/win32/automation.h"
#include "host/win32/module.h"

namespace {

// Dispatch identifiers are the positions plus one.
constexpr const wchar_t* Properties[] = {L"Number", L"Description", L"Source"};

// "qrvVNT.player_table.cpp": the line number alone does not say where it happened.
std::wstring SourceOf(const Failure& Error) {
    const std::string_view File = Error.File;
    return File.empty() ? L"qrvVNT" : L"qrvVNT." + std::wstring(File.begin(), File.end());
}

class ErrorObject final : public IDispatch {
public:
    explicit ErrorObject(const Failure& Error) : Reported(Error) { Module::AddLock(); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID Wanted, void** Object) override {
        if (Object == nullptr) return E_POINTER;
        *Object = nullptr;
        if (Wanted != IID_IUnknown && Wanted != IID_IDispatch) return E_NOINTERFACE;
        *Object = this;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++References; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG Left = --References;
        if (Left == 0) delete this;
        return Left;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* Count) override {
        if (Count == nullptr) return E_POINTER;
        *Count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* Names, UINT Count, LCID, DISPID* Ids) override {
        if (Names == nullptr || Ids == nullptr || Count == 0) return E_INVALIDARG;
        for (std::size_t I = 0; I < std::size(Properties); ++I)
            if (lstrcmpiW(Names[0], Properties[I]) == 0) {
                Ids[0] = static_cast<DISPID>(I) + 1;
                return Count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
            }
        Ids[0] = DISPID_UNKNOWN;
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID Id, REFIID, LCID, WORD Flags, DISPPARAMS*, VARIANT* Result,
                                     EXCEPINFO*, UINT*) override {
        if ((Flags & DISPATCH_PROPERTYGET) == 0 || Id < 1 || Id > static_cast<DISPID>(std::size(Properties)))
            return DISP_E_MEMBERNOTFOUND;
        if (Result == nullptr) return S_OK;
        if (Id == 1) {
            V_VT(Result) = VT_I4;
            V_I4(Result) = Reported.Number;
            return S_OK;
        }
        V_VT(Result) = VT_BSTR;
        V_BSTR(Result) = SysAllocString(Id == 2 ? Reported.Description.c_str() : SourceOf(Reported).c_str());
        return V_BSTR(Result) == nullptr ? E_OUTOFMEMORY : S_OK;
    }

private:
    ~ErrorObject() { Module::RemoveLock(); }

    Failure Reported;
    std::atomic<ULONG> References{1};
};

} // namespace

ComPointer<IDispatch> MakeErrorObject(const Failure& Error) {
    return ComPointer<IDispatch>(new ErrorObject(Error));
}
