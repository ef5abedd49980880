#include "plugin/registration.h"

#include <olectl.h>

#include <string>
#include <vector>

#include "host/win32/module.h"
#include "plugin/type_info.h"

// In the import library, but not in the cross compiler's header.
extern "C" {
HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* Library, OLECHAR* Path, OLECHAR* HelpFolder);
HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID Library, WORD Major, WORD Minor, LCID Locale, SYSKIND System);
}

namespace {

constexpr const wchar_t* ProgId = L"qrvVNT.clsPlugin";
constexpr const wchar_t* ClassId = L"{FDFB2A44-D551-4813-89C6-5D271388583C}";
constexpr const wchar_t* LibraryId = L"{EB5C12C4-AC6C-496C-B4F2-E79111D31A10}";

// One value below Software\Classes; no name is the key's default value.
struct Entry {
    std::wstring Key;
    const wchar_t* Name;
    std::wstring Value;
};

std::vector<Entry> Entries() {
    const std::wstring Class = std::wstring(L"CLSID\\") + ClassId;
    return {
        {ProgId, nullptr, L"Vantor player management"},
        {std::wstring(ProgId) + L"\\CLSID", nullptr, ClassId},
        {Class, nullptr, L"Vantor player management"},
        {Class + L"\\InprocServer32", nullptr, Module::Path()},
        {Class + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {Class + L"\\ProgID", nullptr, ProgId},
        {Class + L"\\TypeLib", nullptr, LibraryId},
        {Class + L"\\Version", nullptr, L"1.0"},
    };
}

HKEY RootOf(RegistrationScope Scope) {
    return Scope == RegistrationScope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

bool Write(RegistrationScope Scope, const Entry& Written) {
    const std::wstring Path = L"Software\\Classes\\" + Written.Key;
    const std::size_t Bytes = (Written.Value.size() + 1) * sizeof(wchar_t);
    return RegSetKeyValueW(RootOf(Scope), Path.c_str(), Written.Name, REG_SZ, Written.Value.c_str(),
                           static_cast<DWORD>(Bytes)) == ERROR_SUCCESS;
}

HRESULT RegisterLibrary(RegistrationScope Scope) {
    std::wstring Path = Module::Path();
    ITypeLib* Library = nullptr;
    HRESULT Result = LoadTypeLibEx(Path.c_str(), REGKIND_NONE, &Library);
    if (FAILED(Result)) return SELFREG_E_TYPELIB;
    Result = Scope == RegistrationScope::User ? RegisterTypeLibForUser(Library, Path.data(), nullptr)
                                              : RegisterTypeLib(Library, Path.data(), nullptr);
    Library->Release();
    return FAILED(Result) ? SELFREG_E_TYPELIB : S_OK;
}

void UnregisterLibrary(RegistrationScope Scope) {
    if (Scope == RegistrationScope::User)
        UnRegisterTypeLibForUser(LIBID_qrvVNT, 1, 0, LOCALE_NEUTRAL, SYS_WIN32);
    else
        UnRegisterTypeLib(LIBID_qrvVNT, 1, 0, LOCALE_NEUTRAL, SYS_WIN32);
}

} // namespace

HRESULT Register(RegistrationScope Scope) noexcept {
    try {
        for (const Entry& Each : Entries())
            if (!Write(Scope, Each)) return SELFREG_E_CLASS;
        return RegisterLibrary(Scope);
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

HRESULT Unregister(RegistrationScope Scope) noexcept {
    try {
        const std::wstring Classes = L"Software\\Classes\\";
        RegDeleteTreeW(RootOf(Scope), (Classes + L"CLSID\\" + ClassId).c_str());
        RegDeleteTreeW(RootOf(Scope), (Classes + ProgId).c_str());
        UnregisterLibrary(Scope);
        return S_OK;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}
