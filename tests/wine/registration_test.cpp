// How the system sees the DLL: registration, exports, imports, version resource, and when it may go.
#include "endurance/census.h"
#include "tests/wine/support.h"

#include <filesystem>

namespace {

using namespace Support;

constexpr const wchar_t* ClassId = L"{FDFB2A44-D551-4813-89C6-5D271388583C}";
constexpr const wchar_t* LibraryId = L"{EB5C12C4-AC6C-496C-B4F2-E79111D31A10}";

std::wstring PluginPath() { return BaseFolder() + L"\\Plugins\\dlls\\Vantor\\qrvVNT.dll"; }

// The default value, or the named one; a mark when the key or value is absent.
std::wstring RegistryText(HKEY Root, const std::wstring& Key, const wchar_t* Name = nullptr) {
    wchar_t Text[1024] = L"";
    DWORD Size = sizeof Text;
    const std::wstring Path = L"Software\\Classes\\" + Key;
    const LSTATUS Result = RegGetValueW(Root, Path.c_str(), Name, RRF_RT_REG_SZ, nullptr, Text, &Size);
    return Result == ERROR_SUCCESS ? Text : L"(absent)";
}

void ExpectRegistered(HKEY Root) {
    const std::wstring Class = std::wstring(L"CLSID\\") + ClassId;
    EXPECT_EQ(RegistryText(Root, L"qrvVNT.clsPlugin\\CLSID"), ClassId);
    EXPECT_EQ(RegistryText(Root, Class + L"\\InprocServer32"), PluginPath());
    EXPECT_EQ(RegistryText(Root, Class + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_EQ(RegistryText(Root, Class + L"\\ProgID"), L"qrvVNT.clsPlugin");
    EXPECT_EQ(RegistryText(Root, Class + L"\\TypeLib"), LibraryId);
}

std::wstring RegisteredLibrary(HKEY Root) {
    return RegistryText(Root, std::wstring(L"TypeLib\\") + LibraryId + L"\\1.0\\0\\win32");
}

void ExpectAbsent(HKEY Root) {
    for (const std::wstring& Key :
         {std::wstring(L"qrvVNT.clsPlugin"), std::wstring(L"qrvVNT.clsPlugin\\CLSID"),
          std::wstring(L"CLSID\\") + ClassId + L"\\InprocServer32",
          std::wstring(L"TypeLib\\") + LibraryId + L"\\1.0\\0\\win32"})
        EXPECT_EQ(RegistryText(Root, Key), L"(absent)");
}

class Dll : public testing::Test {
protected:
    Dll() : Module(LoadLibraryW(PluginPath().c_str())) {}
    ~Dll() override { FreeLibrary(Module); }

    template <class F> F Export(const char* Name) const {
        return reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(Module, Name)));
    }

    Automation::Apartment Com;
    HMODULE Module;
};

// The version of a file as its resource has it, in numbers and in words; a remark when the two differ.
std::wstring VersionOf(const std::wstring& Path) {
    std::vector<char> Resource(GetFileVersionInfoSizeW(Path.c_str(), nullptr));
    VS_FIXEDFILEINFO* Fixed = nullptr;
    wchar_t* Text = nullptr;
    UINT Size = 0;
    if (!GetFileVersionInfoW(Path.c_str(), 0, static_cast<DWORD>(Resource.size()), Resource.data()) ||
        !VerQueryValueW(Resource.data(), L"\\", reinterpret_cast<void**>(&Fixed), &Size) ||
        !VerQueryValueW(Resource.data(), L"\\StringFileInfo\\040904E4\\FileVersion",
                        reinterpret_cast<void**>(&Text), &Size))
        return L"no version resource";
    const std::wstring Numbers = std::to_wstring(HIWORD(Fixed->dwFileVersionMS)) + L"." +
                                 std::to_wstring(LOWORD(Fixed->dwFileVersionMS)) + L"." +
                                 std::to_wstring(HIWORD(Fixed->dwFileVersionLS));
    return Numbers == Text ? Numbers : Numbers + L" is called " + Text;
}

} // namespace

TEST(Registration, AndBack) {
    const std::wstring Quoted = L"\"" + PluginPath() + L"\"";
    for (const auto& [Root, Options] :
         {std::pair(HKEY_LOCAL_MACHINE, L""), std::pair(HKEY_CURRENT_USER, L"/n /i:user ")}) {
        EXPECT_EQ(RunProgram(L"regsvr32 /s " + (Options + Quoted)).ExitCode, 0u);
        ExpectRegistered(Root);
        // Wine registers a user's type library for the machine.
        const std::wstring Library = RegisteredLibrary(Root);
        EXPECT_EQ(Library == L"(absent)" ? RegisteredLibrary(HKEY_LOCAL_MACHINE) : Library, PluginPath());
        EXPECT_EQ(RunProgram(L"regsvr32 /s /u " + (Options + Quoted)).ExitCode, 0u);
        ExpectAbsent(Root);
    }
}

TEST_F(Dll, ExportsUndecoratedNamesAlone) {
    for (const char* Name :
         {"DllGetClassObject", "DllCanUnloadNow", "DllRegisterServer", "DllUnregisterServer", "DllInstall"})
        EXPECT_TRUE(GetProcAddress(Module, Name)) << Name;
    const auto* Image = reinterpret_cast<const char*>(Module);
    const auto* Dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(Image);
    const auto* Headers = reinterpret_cast<const IMAGE_NT_HEADERS32*>(Image + Dos->e_lfanew);
    const DWORD Table = Headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress;
    EXPECT_EQ(reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(Image + Table)->NumberOfNames, 5u);
}

// The next index of thread-local storage that the process gets: of about a thousand.
DWORD NextIndex() {
    const DWORD Index = TlsAlloc();
    TlsFree(Index);
    return Index;
}

// One that begins with a failure: with the first that is thrown, the run-time takes more for itself.
void Live() {
    const HMODULE Module = LoadLibraryW(PluginPath().c_str());
    using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const auto GetClass = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(Module, "DllGetClassObject")));
    IClassFactory* Factory = nullptr;
    _clsPlugin* Plugin = nullptr;
    ASSERT_EQ(GetClass(CLSID_clsPlugin, IID_IClassFactory, reinterpret_cast<void**>(&Factory)), S_OK);
    ASSERT_EQ(Factory->CreateInstance(nullptr, IID__clsPlugin, reinterpret_cast<void**>(&Plugin)), S_OK);
    EXPECT_EQ(Plugin->DisableProfile(-1), S_OK);
    Plugin->Release();
    Factory->Release();
    FreeLibrary(Module);
}

TEST(Loading, LeavesNothingInTheProcess) {
    const Automation::Apartment Com;
    // The plug-in brings the file dialogs, which take an index first; given back, it would hide a lost one.
    const HMODULE FileDialogs = LoadLibraryW(L"comdlg32.dll");
    BaseFolder();
    for (int Warm = 0; Warm < 3; ++Warm) Live();
    const DWORD Index = NextIndex();
    const long Handles = Census::CountOf("handles"), Bytes = Census::CountOf("heap bytes");
    constexpr int Lives = 50;
    for (int Life = 0; Life < Lives; ++Life) Live();
    EXPECT_EQ(NextIndex(), Index);
    EXPECT_LT(Census::CountOf("handles"), Handles + Lives / 2);
    EXPECT_LT(Census::CountOf("heap bytes"), Bytes + Lives * 1024);
    EXPECT_EQ(ReportsOf("DisableProfile"), Lives + 3);
    FreeLibrary(FileDialogs);
}

TEST_F(Dll, VersionResourceIsTheVersionThatItTells) {
    Automation::Values Name;
    Name.push_back(Automation::FromText(L"tests"));
    // The last test may have taken the registration away.
    Export<HRESULT(WINAPI*)()>("DllRegisterServer")();
    const Automation::Object Plugin = Automation::Create(L"qrvVNT.clsPlugin");
    EXPECT_EQ(Automation::AsText(*Plugin.Call(L"dllVersion", std::move(Name))), VersionOf(PluginPath()));
    // The same resource as a release whose revision is not 0 has it.
    EXPECT_EQ(VersionOf(ProgramFolder() + L"\\release_143.dll"), L"1.4.3");
}

TEST_F(Dll, ServesOneClassAndStaysWhileAnObjectOfItLives) {
    const auto GetClass = Export<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
    const auto MayGo = Export<HRESULT(WINAPI*)()>("DllCanUnloadNow");
    EXPECT_EQ(MayGo(), S_OK);
    IClassFactory* Factory = nullptr;
    void* Refused = &Refused;
    EXPECT_EQ(GetClass(IID_IDispatch, IID_IClassFactory, &Refused), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(Refused, nullptr);
    ASSERT_EQ(GetClass(CLSID_clsPlugin, IID_IClassFactory, reinterpret_cast<void**>(&Factory)), S_OK);
    EXPECT_EQ(Factory->CreateInstance(Factory, IID_IUnknown, &Refused), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(Factory->CreateInstance(nullptr, IID_IClassFactory, &Refused), E_NOINTERFACE);
    EXPECT_EQ(Refused, nullptr);
    IUnknown* Object = nullptr;
    ASSERT_EQ(Factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(&Object)), S_OK);
    Factory->Release();
    EXPECT_EQ(MayGo(), S_FALSE);
    Object->Release();
    EXPECT_EQ(MayGo(), S_OK);
}
