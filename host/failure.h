// How a failure travels: thrown where it happens, with the automation error number, the description and
// the source line; caught once, in the trap of the named procedure (game/show_msg.h).
#pragma once

#include <cstdint>
#include <source_location>
#include <string>
#include <string_view>
#include <utility>

// The automation type of the same name: 32 bits, signed.
using Long = std::int32_t;

// The place in the logic from which an outside call is made; its line is reported.
using Place = std::source_location;

struct Failure {
    Long Number; // 0: work that ended with its server, which nobody reports
    std::wstring Description;
    Long Line;
    const char* File; // the source file without its folders; empty where it is not known
};

// Automation's own error numbers, as far as the plug-in raises them itself.
namespace ErrorNumber {
inline constexpr Long InvalidCall = 5;
inline constexpr Long Overflow = 6;
inline constexpr Long OutOfMemory = 7;
inline constexpr Long SubscriptOutOfRange = 9;
inline constexpr Long TypeMismatch = 13;
inline constexpr Long LoadingDll = 48;
inline constexpr Long InternalError = 51;
inline constexpr Long FileNotFound = 53;
inline constexpr Long DeviceUnavailable = 68;
inline constexpr Long PathAccess = 75;
inline constexpr Long PathNotFound = 76;
inline constexpr Long ObjectNotSet = 91;
inline constexpr Long AlreadyLoaded = 360;
inline constexpr Long CannotCreateObject = 429;
inline constexpr Long NoSuchMember = 438;
inline constexpr Long ArgumentNotOptional = 449;
inline constexpr Long NoEntryPoint = 453;
inline constexpr Long KeyExists = 457;
} // namespace ErrorNumber

// The usual description of an automation error number; a general text for any other.
std::wstring ErrorDescription(Long Number);

// Throws a Failure. An empty description becomes the number's usual one.
[[noreturn]] void Fail(Long Number, std::wstring Description = {}, Place Where = Place::current());

// Runs Body; a failure in it names what it was about: "Type mismatch [300.1.1.1]".
template <class F> void Naming(std::wstring_view What, F&& Body) {
    try {
        std::forward<F>(Body)();
    } catch (Failure& Caught) {
        Caught.Description += L" [" + std::wstring(What) + L"]";
        throw;
    }
}

// The exception that is being handled, as a Failure. The one catch ladder of the product: call it in a
// catch-all only. A foreign exception has line 0.
Failure CurrentFailure() noexcept;
