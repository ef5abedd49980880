// Late-bound automation for the sandbox's own programs: a VARIANT that cleans up after itself, and calls by
// the member's name.
#pragma once

#include <utility>
#include <vector>

#include <windows.h>

#include <oleauto.h>

#include "host/text.h"

namespace Automation {

// Initialises COM for one thread while it lives.
class Apartment {
public:
    Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~Apartment() { CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

class Value {
public:
    Value() noexcept { VariantInit(&Held); }
    ~Value() { VariantClear(&Held); }
    Value(Value&& Other) noexcept : Held(Other.Held) { VariantInit(&Other.Held); }
    Value& operator=(Value&& Other) noexcept {
        std::swap(Held, Other.Held);
        return *this;
    }
    VARIANT* operator->() noexcept { return &Held; }
    const VARIANT* operator->() const noexcept { return &Held; }
    VARIANT& operator*() noexcept { return Held; }
    const VARIANT& operator*() const noexcept { return Held; }

private:
    VARIANT Held;
};
using Values = std::vector<Value>;

Value FromText(TextView Text);
Value FromWhole(Long Number);
Value FromBoolean(bool Flag);
// What an automation client sends for a parameter that it leaves out.
Value Missing();
// An array of Variants with lower bound 0.
Value FromList(Values Elements);
// An array of strings with lower bound 0.
Value FromLines(const Lines& Elements);

// Converted by the platform's rules; error 13 when they have none.
std::wstring AsText(const VARIANT& Held);
Long AsWhole(const VARIANT& Held);
// The elements of an array of strings or of Variants.
Lines AsLines(const VARIANT& Held);

// A field of a record: its name and a reference to its content, valid as long as the record.
using Field = std::pair<std::wstring, Value>;
// The fields in the record's order; error 13 when it is no record. The values are copies.
std::vector<Field> RecordFields(const VARIANT& Record);

class Object {
public:
    Object() = default;
    explicit Object(IDispatch* Taken) : Held(Taken) {}
    ~Object() { Release(); }
    Object(Object&& Other) noexcept : Held(std::exchange(Other.Held, nullptr)) {}
    Object& operator=(Object&& Other) noexcept {
        std::swap(Held, Other.Held);
        return *this;
    }
    explicit operator bool() const noexcept { return Held != nullptr; }
    IDispatch* Get() const noexcept { return Held; }
    void Release() noexcept {
        if (Held) std::exchange(Held, nullptr)->Release();
    }
    // Calls a member with positional arguments. Fails with the member's own error.
    Value Call(const wchar_t* Member, Values Arguments = {}) const;

private:
    IDispatch* Held = nullptr;
};

// Error 429 when the object cannot be created.
Object Create(const wchar_t* ProgramIdentifier);

} // namespace Automation
