// Late-bound automation: owners of its types, and the one place that calls Invoke.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <optional>
#include <utility>

#include "host/failure.h"
#include "host/text.h"
#include "host/win32/system_error.h"

// A VARIANT that is ours to clear.
class Variant {
public:
    Variant() noexcept { VariantInit(&Value); }
    ~Variant() { VariantClear(&Value); }
    Variant(Variant&& From) noexcept : Value(From.Value) { VariantInit(&From.Value); }
    Variant& operator=(Variant&& From) noexcept {
        std::swap(Value, From.Value);
        return *this;
    }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;

    VARIANT Value;
};

// A BSTR that is ours to free.
class Bstr {
public:
    explicit Bstr(TextView Text, Place Where = Place::current());
    ~Bstr() { SysFreeString(Value); }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    // Hands the BSTR over.
    BSTR Detach() noexcept { return std::exchange(Value, nullptr); }

private:
    BSTR Value;
};

std::wstring TextOf(BSTR Text);

// --- Conversions by the platform's automation rules, the same on every system language (a point is a point).
// Errors 6, 7, 13.
Long ToLong(const VARIANT& Value, Place Where = Place::current());
bool ToBool(const VARIANT& Value, Place Where = Place::current());
std::wstring ToWideText(const VARIANT& Value, Place Where = Place::current());

// The array in a Variant, directly or by reference; null when there is none.
SAFEARRAY* ArrayIn(const VARIANT& Value) noexcept;
// The elements of a one-dimensional array of strings or Variants as texts; error 13 for another kind.
Lines ToLines(SAFEARRAY* Array, Place Where = Place::current());

// --- Calling a member.

// One argument of a call. A text that is absent travels as a null string.
struct Argument {
    VARIANT Value;
};
Argument Arg(Long Number);
Argument Arg(bool Flag);
Argument Arg(TextView Text, Place Where = Place::current());
Argument Arg(const std::optional<TextView>& Text, Place Where = Place::current());
// The object stays the caller's.
Argument Arg(IDispatch* Object);
// The array goes over to the argument.
Argument Arg(SAFEARRAY* Variants);

// The arguments of one call, last first as Invoke wants them; cleared at its end.
class Arguments {
public:
    static constexpr std::size_t Most = 6;
    Arguments() noexcept = default;
    // Delegates, so that the arguments made so far are cleared when a later one fails.
    template <class... A> explicit Arguments(const A&... Each) : Arguments() {
        static_assert(sizeof...(A) <= Most);
        (Push(Arg(Each)), ...);
    }
    ~Arguments();
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    VARIANT* First() noexcept { return Values + (Most - Count); }
    UINT Number() const noexcept { return static_cast<UINT>(Count); }

private:
    void Push(Argument Each) noexcept;
    VARIANT Values[Most];
    std::size_t Count = 0;
};

// A member of an object; its dispatch identifier is looked up once for each object.
struct Member {
    const wchar_t* Name;
    DISPID Id = DISPID_UNKNOWN;
    unsigned Generation = 0;
};

// An object of the host, created by program identifier.
class HelperObject {
public:
    explicit HelperObject(const wchar_t* ProgramIdentifier) : ProgId(ProgramIdentifier) {}
    ~HelperObject() = default; // released by Release: at the end of the process COM is gone already
    HelperObject(const HelperObject&) = delete;
    HelperObject& operator=(const HelperObject&) = delete;

    // Error 429 when it cannot be created.
    void Create(Place Where);
    void Release() noexcept;
    // Calls the member. Error 91 without an object, 438 without such a member, else the object's own.
    Variant Call(Member& Called, Arguments&& With, Place Where);

private:
    DISPID IdOf(Member& Called, Place Where) const;

    const wchar_t* ProgId;
    IDispatch* Object = nullptr;
    unsigned Generation = 0;
};

// The running error as an automation object with Number, Description and Source; one reference is the
// caller's.
IDispatch* MakeErrorObject(const Failure& Error);
