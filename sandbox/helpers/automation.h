// A late-bound automation object from a table of members: what both helper objects are made of.
//
// Texts arrive and leave as bytes of the system's code page, as in programs that know no other texts.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Automation {

// Thrown by members; the caller gets it as an automation exception with this number.
struct Error {
    int Number;
    std::string Description;
};
inline constexpr int InvalidCall = 5, OutOfMemory = 7, TypeMismatch = 13, InternalError = 51,
                     FileNotFound = 53, PathAccess = 75, MadeToFail = 1000;

// In this code page each byte has a character of its own, so that a text can carry any bytes.
inline constexpr UINT ByteForByte = 1252;
std::string ToBytes(std::wstring_view Text, UINT CodePage = CP_ACP); // "?" for what the code page lacks
std::wstring FromBytes(std::string_view Bytes, UINT CodePage = CP_ACP);

// The positional arguments of one call, the first at 0. Everything is converted by automation's own rules;
// what does not convert is error 13.
class Arguments {
public:
    explicit Arguments(const DISPPARAMS& From) : Passed(From) {}
    unsigned Count() const { return Passed.cArgs; }
    // Absent for a null text, a null value and an omitted argument. A copied Variant would turn the null
    // text into an empty one, so the argument is looked at where it lies.
    std::optional<std::string> MaybeText(unsigned At) const;
    std::string Text(unsigned At) const { return MaybeText(At).value_or(""); }
    std::wstring Wide(unsigned At) const { return FromBytes(Text(At)); }
    // A text that carries bytes.
    std::string Bytes(unsigned At) const;
    std::int32_t Long(unsigned At) const;
    bool Boolean(unsigned At) const;
    // The elements of a one-dimensional array, each as text.
    std::vector<std::string> Texts(unsigned At) const;
    // An automation object's property as text; empty when there is no object or no such property.
    std::string Property(unsigned At, const wchar_t* Name) const;

private:
    const VARIANT& Value(unsigned At) const;
    const DISPPARAMS& Passed;
};

// Each puts a value into an empty Variant.
void SetText(VARIANT& Result, std::string_view Text, UINT CodePage = CP_ACP);
void SetTexts(VARIANT& Result, const std::vector<std::string>& Texts);
void SetLong(VARIANT& Result, std::int32_t Value);
void SetByte(VARIANT& Result, std::uint8_t Value);
void SetBoolean(VARIANT& Result, bool Value);

struct Member {
    const wchar_t* Name;
    unsigned Least, Most; // arguments
    void (*Run)(const Arguments& Given, VARIANT& Result);
};

// The one class of a DLL, defined by it.
struct Class {
    const wchar_t* ProgId;
    CLSID Id;
    std::span<const Member> Members;
};
extern const Class TheClass;

// The DLL's full path.
std::wstring ModulePath();

} // namespace Automation
