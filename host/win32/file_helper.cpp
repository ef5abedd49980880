#include "host/file_helper.h"

#include <memory>

#include "host/win32/automation.h"
#include "host/win32/disk_room.h"

namespace FileHelper {

namespace {

HelperObject Object(L"qrvMFM.clsMFD");

// A section or a list of sections: whatever is no array has no elements.
Lines LinesIn(const Variant& Result, Place Where) {
    SAFEARRAY* const Array = ArrayIn(Result.Value);
    return Array == nullptr ? Lines() : ToLines(Array, Where);
}

void Put(SAFEARRAY* Array, LONG At, Argument Value) {
    SafeArrayPutElement(Array, &At, &Value.Value);
    VariantClear(&Value.Value);
}

struct DestroyArray {
    void operator()(SAFEARRAY* Array) const noexcept { SafeArrayDestroy(Array); }
};

SAFEARRAY* ArrayOf(const ErrorReport& Report, Place Where) {
    std::unique_ptr<SAFEARRAY, DestroyArray> Array(SafeArrayCreateVector(VT_VARIANT, 0, 6));
    if (!Array) Fail(ErrorNumber::OutOfMemory, {}, Where);
    Put(Array.get(), 0, Arg(TextView(Report.Number), Where));
    Put(Array.get(), 1, Arg(TextView(Report.Description), Where));
    Put(Array.get(), 2, Arg(TextView(Report.Version), Where));
    Put(Array.get(), 3, Arg(TextView(Report.Text), Where));
    Put(Array.get(), 4, Arg(Report.IsAffiliate));
    Put(Array.get(), 5, Arg(Report.Line));
    return Array.release();
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

// One member, two shapes of answer: the dispatch identifier is the same.
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
    IDispatch* const Err = MakeErrorObject(Error);
    Arguments With(Dll, Text, Err, Line);
    Err->Release();
    Object.Call(Called, std::move(With), Where);
}

bool SendErrorReport(const ErrorReport& Report, Place Where) {
    static Member Called{L"SendErrorReport"};
    return ToBool(Object.Call(Called, Arguments(ArrayOf(Report, Where)), Where).Value, Where);
}

} // namespace FileHelper
