// Descriptions of error numbers, and the one catch ladder.
#include "host/failure.h"

#include <cstring>
#include <exception>
#include <new>
#include <utility>

std::wstring ErrorDescription(Long Number) {
    static constexpr std::pair<Long, const wchar_t*> Descriptions[] = {
        {ErrorNumber::InvalidCall, L"Invalid procedure call or argument"},
        {ErrorNumber::Overflow, L"Overflow"},
        {ErrorNumber::OutOfMemory, L"Out of memory"},
        {ErrorNumber::SubscriptOutOfRange, L"Subscript out of range"},
        {ErrorNumber::TypeMismatch, L"Type mismatch"},
        {ErrorNumber::LoadingDll, L"Error in loading DLL"},
        {ErrorNumber::InternalError, L"Internal error"},
        {ErrorNumber::FileNotFound, L"File not found"},
        {ErrorNumber::DeviceUnavailable, L"Device unavailable"},
        {ErrorNumber::PathAccess, L"Path/File access error"},
        {ErrorNumber::PathNotFound, L"Path not found"},
        {ErrorNumber::ObjectNotSet, L"Object variable not set"},
        {ErrorNumber::AlreadyLoaded, L"Object already loaded"},
        {ErrorNumber::CannotCreateObject, L"ActiveX component can't create object"},
        {ErrorNumber::NoSuchMember, L"Object doesn't support this property or method"},
        {ErrorNumber::ArgumentNotOptional, L"Argument not optional"},
        {ErrorNumber::NoEntryPoint, L"Can't find DLL entry point"},
        {ErrorNumber::KeyExists, L"This key is already associated with an element of this collection"},
    };
    for (const auto& [Known, Text] : Descriptions)
        if (Known == Number) return Text;
    return L"Application-defined or object-defined error";
}

void Fail(Long Number, std::wstring Description, Place Where) {
    if (Description.empty()) Description = ErrorDescription(Number);
    const char* const File = std::strrchr(Where.file_name(), '/');
    throw Failure{Number, std::move(Description), static_cast<Long>(Where.line()),
                  File != nullptr ? File + 1 : Where.file_name()};
}

Failure CurrentFailure() noexcept {
    try {
        throw;
    } catch (Failure& Caught) {
        return std::move(Caught);
    } catch (const std::bad_alloc&) {
        // The description stays empty: this path must not need memory.
        return Failure{ErrorNumber::OutOfMemory, {}, 0, ""};
    } catch (const std::exception& Caught) {
        try {
            const std::string Text = Caught.what();
            return Failure{ErrorNumber::InternalError, std::wstring(Text.begin(), Text.end()), 0, ""};
        } catch (...) {
            return Failure{ErrorNumber::InternalError, {}, 0, ""};
        }
    } catch (...) {
        return Failure{ErrorNumber::InternalError, {}, 0, ""};
    }
}
