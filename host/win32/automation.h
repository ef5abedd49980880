// Late-bound automation: owners of its types, and the one place that calls Invoke.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <optional>
#include <utility>

#include "host/failure.h"
#include "host/text.h"
#include "host/win32/owners.h"
#include "host/win32/system_error.h"

std::wstring TextOf(BSTR Text);

// --- Conversions by the platform's automation rules, the same on every system language (a point is a point).
// Errors 6, 7, 13.
Long ToLong(const VARIANT& Value, Place Where = Place::current());
bool ToBool(const VARIANT& Value, Place Where = Place::current());
std::wstring ToWideText(const VARIANT& Value, Place Where = Place::current());

// The array in a Variant, directly or by reference, with the type of its elements: the array's own or, where
// it carries none, the Variant's. Array is null when there is none.
struct ArrayView {
    SAFEARRAY* Array = nullptr;
    VARTYPE Type = VT_EMPTY;
};
ArrayView ArrayIn(const VARIANT& Value) noexcept;
// Whether it is a record or an array of records, which is no value of ours (error 13).
bool IsRecord(const VARIANT& Value) noexcept;
// A copy of the element with the index; error 9 when there is none.
Variant ElementOf(const ArrayView& Elements, LONG At, Place Where = Place::current());
// The elements of a one-dimensional array as texts; error 13 for what is none.
Lines ToLines(const ArrayView& Elements, Place Where = Place::current());

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
// The array of Variants goes over to the argument; by reference it stays the caller's.
Argument Arg(SAFEARRAY* Variants);
Argument Arg(SAFEARRAY** Variants);

// The arguments of one call, last first as Invoke wants them; cleared at its end.
class Arguments {
public:
    static constexpr std::size_t Most = 6;
    Arguments() noexcept = default;
    // Delegates, so that the arguments made so far are cleared when a later one fails.
    template <class... A> explicit Arguments(const A&... Given) : Arguments() {
        static_assert(sizeof...(A) <= Most);
        (Push(Arg(Given)), ...);
    }
    ~Arguments();
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    VARIANT* First() noexcept { return Values + (Most - Count); }
    UINT Number() const noexcept { return static_cast<UINT>(Count); }

private:
    void Push(Argument Made) noexcept;
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
    StaticComPointer<IDispatch> Object;
    unsigned Generation = 0;
};

// The running error as an automation object with Number, Description and Source.
ComPointer<IDispatch> MakeErrorObject(const Failure& Error);
