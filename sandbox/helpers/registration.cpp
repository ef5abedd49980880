// Puts the class into the registry, for the machine, and takes it out again.
#include <windows.h>

#include <objbase.h>
#include <olectl.h>

#include "sandbox/helpers/automation.h"

namespace {

using Automation::TheClass;

std::wstring ClassKey() {
    wchar_t Id[40];
    return {L"CLSID\\" +
            std::wstring(Id, static_cast<std::size_t>(StringFromGUID2(TheClass.Id, Id, 40) - 1))};
}

bool Set(const std::wstring& Key, const wchar_t* Name, const std::wstring& Value) {
    const auto Bytes = static_cast<DWORD>((Value.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(HKEY_CLASSES_ROOT, Key.c_str(), Name, REG_SZ, Value.c_str(), Bytes) ==
           ERROR_SUCCESS;
}

} // namespace

STDAPI DllRegisterServer() {
    const std::wstring Class = ClassKey(), Server = Class + L"\\InprocServer32";
    const bool Done =
        Set(Class, nullptr, TheClass.ProgId) && Set(Class + L"\\ProgID", nullptr, TheClass.ProgId) &&
        Set(Server, nullptr, Automation::ModulePath()) && Set(Server, L"ThreadingModel", L"Apartment") &&
        Set(std::wstring(TheClass.ProgId) + L"\\CLSID", nullptr, Class.substr(6));
    return Done ? S_OK : SELFREG_E_CLASS;
}

STDAPI DllUnregisterServer() {
    for (const std::wstring& Key : {ClassKey(), std::wstring(TheClass.ProgId)}) {
        const LSTATUS Status = RegDeleteTreeW(HKEY_CLASSES_ROOT, Key.c_str());
        if (Status != ERROR_SUCCESS && Status != ERROR_FILE_NOT_FOUND) return SELFREG_E_CLASS;
    }
    return S_OK;
}
