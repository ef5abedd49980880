// Late binding through the type library.
#include "plugin/type_info.h"

#include "host/win32/module.h"

namespace {

// As in qrvVNT.idl.
constexpr DISPID GetDataId = 2;

StaticComPointer<ITypeInfo> Interface;
StaticComPointer<ITypeInfo> Record;

HRESULT FindRecord(ITypeLib& Library) noexcept {
    wchar_t Name[] = L"PLUGIN";
    MEMBERID Member = MEMBERID_NIL;
    USHORT Count = 1;
    const HRESULT Result = Library.FindName(Name, 0, Record.Receive(), &Member, &Count);
    return SUCCEEDED(Result) && Count == 0 ? TYPE_E_ELEMENTNOTFOUND : Result;
}

HRESULT LoadTypeInfo() noexcept {
    if (Interface && Record) return S_OK;
    ComPointer<ITypeLib> Library;
    HRESULT Result = E_OUTOFMEMORY;
    try {
        Result = LoadTypeLibEx(Module::Path().c_str(), REGKIND_NONE, Library.Receive());
    } catch (...) {
        return E_OUTOFMEMORY;
    }
    if (SUCCEEDED(Result)) Result = Library->GetTypeInfoOfGuid(IID__clsPlugin, Interface.Receive());
    return SUCCEEDED(Result) ? FindRecord(*Library.Get()) : Result;
}

// The system's own Invoke cannot return a record: the member is called and its record handed over as it is.
HRESULT InvokeGetData(_clsPlugin& Object, VARIANT* Result) noexcept {
    if (Result == nullptr) return S_OK;
    ComPointer<IRecordInfo> Info;
    const HRESULT Found = GetRecordInfoFromTypeInfo(Record.Get(), Info.Receive());
    if (FAILED(Found)) return Found;
    void* const Created = Info->RecordCreate();
    if (Created == nullptr) return E_OUTOFMEMORY;
    const HRESULT Outcome = Object.GetData(static_cast<PLUGIN*>(Created));
    if (FAILED(Outcome)) {
        Info->RecordDestroy(Created);
        return Outcome;
    }
    VariantInit(Result);
    V_VT(Result) = VT_RECORD;
    V_RECORD(Result) = Created;
    V_RECORDINFO(Result) = Info.Detach();
    return S_OK;
}

} // namespace

HRESULT InterfaceInfo(ITypeInfo** Info) noexcept {
    const HRESULT Result = LoadTypeInfo();
    if (FAILED(Result)) return Result;
    *Info = Interface.Share().Detach();
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
    Interface.Release();
    Record.Release();
}
