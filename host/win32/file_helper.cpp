// The members of the host's file helper object.
#include "host/file_helper.h"

#include "host/win32/automation.h"
#include "host/win32/disk_room.h"

namespace FileHelper {

namespace {

HelperObject Object(L"qrvMFM.clsMFD");

// A section or a list of sections: whatever is no array has no elements.
Lines LinesIn(const Variant& Result, Place Where) {
    const ArrayView Array = ArrayIn(Result.Value);
    return Array.Array == nullptr ? Lines() : ToLines(Array, Where);
}

void Put(ArrayOwner& Array, std::size_t At, Argument Given, Place Where) {
    Variant Element;
    Element.Value = Given.Value;
    Array.Put(At, &Element.Value, Where);
}

ArrayOwner ArrayOf(const ErrorReport& Report, Place Where) {
    ArrayOwner Array(VT_VARIANT, 6, Where);
    Put(Array, 0, Arg(TextView(Report.Number), Where), Where);
    Put(Array, 1, Arg(TextView(Report.Description), Where), Where);
    Put(Array, 2, Arg(TextView(Report.Version), Where), Where);
    Put(Array, 3, Arg(TextView(Report.Text), Where), Where);
    Put(Array, 4, Arg(Report.IsAffiliate), Where);
    Put(Array, 5, Arg(Report.Line), Where);
    return Array;
}

// Calls the member as Usual does and, when it refuses the kind of an argument, as Otherwise does. Helpers of
// different makers declare the same parameter in different ways.
template <class F, class G> auto CallEitherWay(F&& Usual, G&& Otherwise) {
    try {
        return Usual();
    } catch (const Failure& Refused) {
        if (Refused.Number != ErrorNumber::TypeMismatch) throw;
    }
    return Otherwise();
}

} // namespace

void Create(Place Where) { Object.Create(Where); }
void Release() noexcept { Object.Release(); }

std::wstring GetIniKey(TextView Section, TextView Key, TextView File, Place Where) {
    static Member Called{L"GetIniKey"};
    return ToWideText(Object.Call(Called, Arguments(Section, Key, File), Where).Value, Where);
}

void WriteIniKey(TextView Section, MaybeText Key, MaybeText Value, TextView File, Place Where) {
    static Member Called{L"WriteIniKey"};
    if (Key && Value) RequireRoomForEntry(File, Section, *Key, *Value, Where);
    Object.Call(Called, Arguments(Section, Key, Value, File), Where);
}

Lines GetIniSection(TextView Section, TextView File, Place Where) {
    static Member Called{L"GetIniSection"};
    return LinesIn(Object.Call(Called, Arguments(Section, File), Where), Where);
}

Lines GetAllIniSections(TextView File, Place Where) {
    static Member Called{L"GetAllIniSections"};
    return LinesIn(Object.Call(Called, Arguments(File), Where), Where);
}

void ClearIniSection(TextView Section, TextView File, Place Where) {
    static Member Called{L"ClearIniSection"};
    Object.Call(Called, Arguments(Section, File), Where);
}

// One member, two kinds of result: the dispatch identifier is the same.
static Member ParseMember{L"ParseIniKey"};

std::wstring ParseIniKey(TextView Line, Place Where) {
    return ToWideText(Object.Call(ParseMember, Arguments(Line), Where).Value, Where);
}

std::pair<std::wstring, std::wstring> ParseIniEntry(TextView Line, Place Where) {
    const Variant Result = Object.Call(ParseMember, Arguments(Line, true), Where);
    Lines Parts = ToLines(ArrayIn(Result.Value), Where);
    if (Parts.empty()) Fail(ErrorNumber::SubscriptOutOfRange, {}, Where);
    Parts.resize(2);
    return {std::move(Parts[0]), std::move(Parts[1])};
}

void AppendFile(TextView Path, TextView Text, Place Where) {
    static Member Called{L"AppendFile"};
    RequireRoomForLine(Path, Text, Where);
    Object.Call(Called, Arguments(Path, Text), Where);
}

void WriteFile(TextView Path, TextView Text, Place Where) {
    static Member Called{L"WriteFile"};
    Object.Call(Called, Arguments(Path, Text), Where);
}

Lines ReadFile(TextView Path, Place Where) {
    static Member Called{L"ReadFile"};
    return ToLines(ArrayIn(Object.Call(Called, Arguments(Path), Where).Value), Where);
}

std::wstring CompressString(TextView Text, Place Where) {
    static Member Called{L"CompressString"};
    return ToWideText(Object.Call(Called, Arguments(Text), Where).Value, Where);
}

void LogError(TextView Dll, TextView Text, const Failure& Error, Long Line, Place Where) {
    static Member Called{L"LogError"};
    const ComPointer<IDispatch> Err = MakeErrorObject(Error);
    const auto CallWith = [&](IDispatch* ErrorObject) {
        Object.Call(Called, Arguments(Dll, Text, ErrorObject, Line), Where);
    };
    // One that wants an error object of its own type logs the text at least.
    CallEitherWay([&] { CallWith(Err.Get()); }, [&] { CallWith(nullptr); });
}

bool SendErrorReport(const ErrorReport& Report, Place Where) {
    static Member Called{L"SendErrorReport"};
    const auto ByValue = [&] {
        return Object.Call(Called, Arguments(ArrayOf(Report, Where).Detach()), Where);
    };
    const auto ByReference = [&] {
        ArrayOwner Array = ArrayOf(Report, Where);
        return Object.Call(Called, Arguments(Array.Address()), Where);
    };
    const Variant Sent = CallEitherWay(ByValue, ByReference);
    return ToBool(Sent.Value, Where);
}

} // namespace FileHelper
