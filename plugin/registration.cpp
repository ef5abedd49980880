// The keys of the class and its type library.
#include "plugin/registration.h"

#include <olectl.h>

#include <iterator>
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

// "{FDFB2A44-...}", as the registry has it.
std::wstring TextOf(REFGUID Id) {
    wchar_t Text[39] = L"";
    StringFromGUID2(Id, Text, static_cast<int>(std::size(Text)));
    return Text;
}

// One value below Software\Classes; no name is the key's default value.
struct Entry {
    std::wstring Key;
    const wchar_t* Name;
    std::wstring Value;
};

std::vector<Entry> Entries() {
    const std::wstring ClassId = TextOf(CLSID_clsPlugin);
    const std::wstring Class = L"CLSID\\" + ClassId;
    return {
        {ProgId, nullptr, L"Vantor player management"},
        {std::wstring(ProgId) + L"\\CLSID", nullptr, ClassId},
        {Class, nullptr, L"Vantor player management"},
        {Class + L"\\InprocServer32", nullptr, Module::Path()},
        {Class + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {Class + L"\\ProgID", nullptr, ProgId},
        {Class + L"\\TypeLib", nullptr, TextOf(LIBID_qrvVNT)},
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
    ComPointer<ITypeLib> Library;
    HRESULT Result = LoadTypeLibEx(Path.c_str(), REGKIND_NONE, Library.Receive());
    if (FAILED(Result)) return SELFREG_E_TYPELIB;
    Result = Scope == RegistrationScope::User ? RegisterTypeLibForUser(Library.Get(), Path.data(), nullptr)
                                              : RegisterTypeLib(Library.Get(), Path.data(), nullptr);
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
        for (const Entry& Value : Entries())
            if (!Write(Scope, Value)) return SELFREG_E_CLASS;
        return RegisterLibrary(Scope);
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

HRESULT Unregister(RegistrationScope Scope) noexcept {
    try {
        const std::wstring Classes = L"Software\\Classes\\";
        RegDeleteTreeW(RootOf(Scope), (Classes + L"CLSID\\" + TextOf(CLSID_clsPlugin)).c_str());
        RegDeleteTreeW(RootOf(Scope), (Classes + ProgId).c_str());
        UnregisterLibrary(Scope);
        return S_OK;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}
