// The members of clsPlugin, each a guarded and trapped call into the logic.
#include "plugin/clsPlugin.h"

#include <new>
#include <utility>

#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/show_msg.h"
#include "game/sub_main.h"
#include "host/win32/boxes.h"
#include "host/win32/entry.h"
#include "host/win32/module.h"
#include "plugin/descriptor.h"
#include "plugin/host_values.h"
#include "plugin/lifecycle.h"
#include "plugin/remote.h"
#include "plugin/type_info.h"
#include "window/frmVNT.h"

namespace {

long Objects = 0;
bool IsStarted = false;

// Every member that can fail goes through here: its failure is reported under its name, and the host never
// sees it.
template <class F> HRESULT Run(TextView Name, Long Index, F&& Member) noexcept {
    const Module::Entry Guard;
    Trapped(Name, Index, std::forward<F>(Member));
    return S_OK;
}

HRESULT RunForLong(const RemoteMember<Long>& Member, LONG Index, const VARIANT& PDAT, const VARIANT& Data,
                   LONG* Result) noexcept {
    if (Result == nullptr) return E_POINTER;
    const Module::Entry Guard;
    Long Told = 0;
    CallMember(Member, Index, Told, [&] { return RequestFrom(Index, PDAT, Data); });
    *Result = Told;
    return S_OK;
}

// An array of strings, lower bound 0, in a Variant.
template <std::size_t N> VARIANT ArrayOfTexts(const TextView (&Texts)[N]) {
    ArrayOwner Array(VT_BSTR, N);
    for (std::size_t I = 0; I < N; ++I) Array.Put(I, Bstr(Texts[I]).Get());
    VARIANT Made;
    V_VT(&Made) = VT_ARRAY | VT_BSTR;
    V_ARRAY(&Made) = Array.Detach();
    return Made;
}

void FillDescriptor(PLUGIN& Filled) {
    static constexpr TextView Games[] = {StandardBuild, AffiliateBuild};
    Filled.Name = Bstr(Descriptor::Name).Detach();
    Filled.File = Bstr(mdlVNT::DllName).Detach();
    Filled.Version = Bstr(mdlVNT::Version).Detach();
    Filled.Author = Bstr(Descriptor::Author).Detach();
    Filled.Description = Bstr(Descriptor::Description).Detach();
    Filled.Game = ArrayOfTexts(Games);
    Filled.HasInterface = VARIANT_TRUE;
    Filled.ProfileMenu = VARIANT_FALSE;
    Filled.ServerMenu = VARIANT_TRUE;
    Filled.MainMenu = VARIANT_FALSE;
    Filled.ServerMenuItems = ArrayOfTexts(Descriptor::ServerMenuItems);
    Filled.HasPrivis = VARIANT_TRUE;
    Filled.HelpFile = Bstr(Descriptor::HelpFile).Detach();
    Filled.MinRCVer = Bstr(Descriptor::MinRCVer).Detach();
    Filled.MinGMFVer = Bstr(Descriptor::MinGMFVer).Detach();
    Filled.MinMFMVer = Bstr(Descriptor::MinMFMVer).Detach();
    Filled.MinQRVVer = Bstr(Descriptor::MinQRVVer).Detach();
}

// Everything that the plug-in holds goes with its last object: the host may unload the DLL next. It can
// release that object inside a call of ours; then the call ends first.
void ShutDownWhenUnused() noexcept {
    if (Objects != 0 || !std::exchange(IsStarted, false)) return;
    Trapped(L"ShutDown", 0, [] { frmVNT::Unload(); });
    Platform::CloseErrorBoxes();
    ForgetTypeInfo();
    mdlVNT::Forget();
}

} // namespace

clsPlugin::clsPlugin() noexcept {
    Module::AddLock();
    ++Objects;
    if (std::exchange(IsStarted, true)) return;
    Module::WhenLeft(ShutDownWhenUnused);
    SubMain();
}

clsPlugin::~clsPlugin() {
    --Objects;
    Module::RemoveLock();
}

clsPlugin* clsPlugin::Create() noexcept { return new (std::nothrow) clsPlugin; }

HRESULT clsPlugin::QueryInterface(REFIID Wanted, void** Object) noexcept {
    if (Object == nullptr) return E_POINTER;
    *Object = nullptr;
    if (Wanted != IID_IUnknown && Wanted != IID_IDispatch && Wanted != IID__clsPlugin) return E_NOINTERFACE;
    *Object = static_cast<_clsPlugin*>(this);
    AddRef();
    return S_OK;
}

ULONG clsPlugin::AddRef() noexcept { return static_cast<ULONG>(++References); }

ULONG clsPlugin::Release() noexcept {
    const Module::Entry Guard;
    const LONG Left = --References;
    if (Left == 0) delete this;
    return static_cast<ULONG>(Left);
}

HRESULT clsPlugin::GetTypeInfoCount(UINT* Count) noexcept {
    if (Count == nullptr) return E_POINTER;
    *Count = 1;
    return S_OK;
}

HRESULT clsPlugin::GetTypeInfo(UINT Number, LCID, ITypeInfo** Info) noexcept {
    if (Info == nullptr) return E_POINTER;
    *Info = nullptr;
    if (Number != 0) return DISP_E_BADINDEX;
    const Module::Entry Guard;
    return InterfaceInfo(Info);
}

HRESULT clsPlugin::GetIDsOfNames(REFIID, LPOLESTR* Names, UINT Count, LCID, DISPID* Ids) noexcept {
    const Module::Entry Guard;
    return IdsOfNames(Names, Count, Ids);
}

HRESULT clsPlugin::Invoke(DISPID Id, REFIID, LCID, WORD Flags, DISPPARAMS* Parameters, VARIANT* Result,
                          EXCEPINFO* Exception, UINT* BadArgument) noexcept {
    const Module::Entry Guard;
    return InvokeMember(*this, Id, Flags, Parameters, Result, Exception, BadArgument);
}

HRESULT clsPlugin::dllVersion(BSTR PNAME, BSTR* Result) noexcept {
    if (Result == nullptr) return E_POINTER;
    *Result = nullptr;
    return Run(L"dllVersion", 0, [&] {
        mdlVNT::HostName = TextOf(PNAME);
        *Result = Bstr(mdlVNT::Version).Detach();
    });
}

HRESULT clsPlugin::GetData(PLUGIN* Result) noexcept {
    if (Result == nullptr) return E_POINTER;
    // Zero is a valid record: null strings, empty Variants, False.
    *Result = PLUGIN{};
    return Run(L"GetData", 0, [&] { FillDescriptor(*Result); });
}

HRESULT clsPlugin::GetPrivis(VARIANT* Result) noexcept {
    if (Result == nullptr) return E_POINTER;
    VariantInit(Result);
    return Run(L"GetPrivis", 0, [&] { *Result = ArrayOfTexts(Descriptor::Privileges); });
}

HRESULT clsPlugin::LoadInterface(LONG Index, LONG pHwnd, VARIANT PDAT, BSTR) noexcept {
    if (Index == 0) return S_OK; // before anything is looked at
    return Run(L"LoadInterface", Index, [&] { ::LoadInterface(Index, pHwnd, PdatFrom(PDAT)); });
}

HRESULT clsPlugin::UnLoadInterface(BSTR) noexcept {
    return Run(L"UnLoadInterface", mdlVNT::CurrentProfile, ::UnLoadInterface);
}

HRESULT clsPlugin::DisableProfile(LONG Index) noexcept {
    return Run(L"DisableProfile", Index, [&] { ::DisableProfile(Index); });
}

HRESULT clsPlugin::HideInterface(BSTR) noexcept {
    return Run(L"HideInterface", mdlVNT::CurrentProfile, ::HideInterface);
}

HRESULT clsPlugin::GetPlayersRem(LONG Index, VARIANT PDAT, VARIANT Data, BSTR* Result) noexcept {
    if (Result == nullptr) return E_POINTER;
    *Result = nullptr;
    const Module::Entry Guard;
    std::wstring Reply;
    CallMember(::GetPlayersRem, Index, Reply, [&] { return RequestFrom(Index, PDAT, Data); });
    return Run(L"GetPlayersRem", Index, [&] { *Result = Bstr(Reply).Detach(); });
}

LONG_MEMBER(clsPlugin::PuntPlayerRem) { return RunForLong(::PuntPlayerRem, Index, PDAT, Data, Result); }
LONG_MEMBER(clsPlugin::ArmPlayerRem) { return RunForLong(::ArmPlayerRem, Index, PDAT, Data, Result); }
LONG_MEMBER(clsPlugin::SlapPlayerRem) { return RunForLong(::SlapPlayerRem, Index, PDAT, Data, Result); }
LONG_MEMBER(clsPlugin::AddSlapRem) { return RunForLong(::AddSlapRem, Index, PDAT, Data, Result); }
LONG_MEMBER(clsPlugin::SetBanMethod) { return RunForLong(::SetBanMethod, Index, PDAT, Data, Result); }
LONG_MEMBER(clsPlugin::SetIdlePunt) { return RunForLong(::SetIdlePunt, Index, PDAT, Data, Result); }
LONG_MEMBER(clsPlugin::SetIdleMax) { return RunForLong(::SetIdleMax, Index, PDAT, Data, Result); }
LONG_MEMBER(clsPlugin::DeleteSlapRem) { return RunForLong(::DeleteSlapRem, Index, PDAT, Data, Result); }
LONG_MEMBER(clsPlugin::EditSlapRem) { return RunForLong(::EditSlapRem, Index, PDAT, Data, Result); }
LONG_MEMBER(clsPlugin::RemoveBannedRem) { return RunForLong(::RemoveBannedRem, Index, PDAT, Data, Result); }
LONG_MEMBER(clsPlugin::AddBannedRem) { return RunForLong(::AddBannedRem, Index, PDAT, Data, Result); }
