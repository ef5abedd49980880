#include "plugin/type_info.h"

#include <utility>

#include "host/win32/module.h"

namespace {

// As in qrvVNT.idl.
constexpr DISPID GetDataId = 2;
constexpr GUID PluginRecordId = {
    0xabb61003, 0x21f4, 0x4478, {0x93, 0x3e, 0x1f, 0x6a, 0xb4, 0x70, 0x6f, 0xa9}};

ITypeInfo* Interface = nullptr;
ITypeInfo* Record = nullptr;

HRESULT LoadTypeInfo() noexcept {
    if (Interface != nullptr && Record != nullptr) return S_OK;
    ITypeLib* Library = nullptr;
    HRESULT Result = E_OUTOFMEMORY;
    try {
        Result = LoadTypeLibEx(Module::Path().c_str(), REGKIND_NONE, &Library);
    } catch (...) {
        return E_OUTOFMEMORY;
    }
    if (FAILED(Result)) return Result;
    ForgetTypeInfo();
    Result = Library->GetTypeInfoOfGuid(IID__clsPlugin, &Interface);
    if (SUCCEEDED(Result)) Result = Library->GetTypeInfoOfGuid(PluginRecordId, &Record);
    Library->Release();
    return Result;
}

// The system's own Invoke cannot answer a record: the member is called and its record handed over as it is.
HRESULT InvokeGetData(_clsPlugin& Object, VARIANT* Result) noexcept {
    if (Result == nullptr) return S_OK;
    IRecordInfo* Info = nullptr;
    HRESULT Outcome = GetRecordInfoFromTypeInfo(Record, &Info);
    if (FAILED(Outcome)) return Outcome;
    void* const Created = Info->RecordCreate();
    if (Created == nullptr) {
        Info->Release();
        return E_OUTOFMEMORY;
    }
    Outcome = Object.GetData(static_cast<PLUGIN*>(Created));
    if (FAILED(Outcome)) {
        Info->RecordDestroy(Created);
        Info->Release();
        return Outcome;
    }
    VariantInit(Result);
    V_VT(Result) = VT_RECORD;
    V_RECORD(Result) = Created;
    V_RECORDINFO(Result) = Info;
    return S_OK;
}

} // namespace

HRESULT InterfaceInfo(ITypeInfo** Info) noexcept {
    const HRESULT Result = LoadTypeInfo();
    if (FAILED(Result)) return Result;
    *Info = Interface;
    Interface->AddRef();
    return S_OK;
}

HRESULT IdsOfNames(LPOLESTR* Names, UINT Count, DISPID* Ids) noexcept {
    if (Names == nullptr || Ids == nullptr) return E_INVALIDARG;
    const HRESULT Result = LoadTypeInfo();
    return FAILED(Result) ? Result : Interface->GetIDsOfNames(Names, Count, Ids);
}

HRESULT InvokeMember(_clsPlugin& Object, DISPID Id, WORD Flags, DISPPARAMS* Parameters, VARIANT* Result,
                     EXCEPINFO* Exception, UINT* BadArgument) noexcept {
    if (Parameters == nullptr) return E_INVALIDARG;
    const HRESULT Loaded = LoadTypeInfo();
    if (FAILED(Loaded)) return Loaded;
    if (Id == GetDataId && (Flags & DISPATCH_METHOD) != 0)
        return Parameters->cArgs == 0 ? InvokeGetData(Object, Result) : DISP_E_BADPARAMCOUNT;
    return Interface->Invoke(&Object, Id, Flags, Parameters, Result, Exception, BadArgument);
}

void ForgetTypeInfo() noexcept {
    for (ITypeInfo** const Info : {&Interface, &Record})
        if (ITypeInfo* const Released = std::exchange(*Info, nullptr)) Released->Release();
}
