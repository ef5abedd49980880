// The interface as early- and late-bound clients meet it: the descriptor record, and whatever automation
// clients send for the host's profile data.
#include "tests/wine/support.h"

namespace {

using namespace Support;
using Automation::FromLines;
using Automation::FromList;
using Automation::FromText;
using Automation::FromWhole;
using Automation::Value;
using Automation::Values;

class Client : public PluginTest {
protected:
    // A remote member with any data at all; what it answers, and whether the call itself went well.
    HRESULT Call(Long Index, const VARIANT& Data, const VARIANT& Request, LONG& Result) {
        Result = -1;
        return Early->SlapPlayerRem(Index, Data, Request, &Result);
    }
};

std::wstring Shown(const VARIANT& Held) {
    if (Held.vt == VT_EMPTY) return L"(empty)";
    if (Held.vt == VT_BOOL) return Held.boolVal ? L"True" : L"False";
    return Held.vt & VT_ARRAY ? Join(Automation::AsLines(Held), L"|") : Automation::AsText(Held);
}

std::wstring Taken(BSTR Text) {
    std::wstring Copy(Text ? Text : L"", SysStringLen(Text));
    SysFreeString(Text);
    return Copy;
}

// A Variant that refers to another one, as some clients pass what they hold in a variable.
VARIANT ReferenceTo(VARIANT& Held) {
    VARIANT Reference;
    VariantInit(&Reference);
    Reference.vt = VT_BYREF | VT_VARIANT;
    Reference.pvarVal = &Held;
    return Reference;
}

VARIANT ReferenceToArray(VARIANT& Held) {
    VARIANT Reference;
    VariantInit(&Reference);
    Reference.vt = static_cast<VARTYPE>(VT_BYREF | Held.vt);
    Reference.pparray = &Held.parray;
    return Reference;
}

} // namespace

TEST_F(Client, DescriptorIsTheSameForBothKindsOfClient) {
    BSTR Version = nullptr;
    BSTR Name = SysAllocString(L"tests");
    ASSERT_EQ(Early->dllVersion(Name, &Version), S_OK);
    SysFreeString(Name);
    const std::vector<std::pair<std::wstring, std::wstring>> Expected = {
        {L"Name", L"Vantor"},
        {L"File", L"qrvVNT.dll"},
        {L"Version", Taken(Version)},
        {L"Author", L"the Vantor authors"},
        {L"Description", L"This Plugin allows you to manage players that join your Ostra Server."},
        {L"Game", L"Delta Force,  V1.5.0.5|Delta Force, NovaWorld Affiliate Server V1.5.0.11A"},
        {L"HasInterface", L"True"},
        {L"ProfileMenu", L"False"},
        {L"ServerMenu", L"True"},
        {L"MainMenu", L"False"},
        {L"ProfileMenuItems", L"(empty)"},
        {L"ServerMenuItems", L"Players|"},
        {L"MainMenuItems", L"(empty)"},
        {L"HasPrivis", L"True"},
        {L"HelpFile", L"qrvVNT_help.chm"},
        {L"MinRCVer", L"1201"},
        {L"MinGMFVer", L"1104"},
        {L"MinMFMVer", L"1309"},
        {L"MinQRVVer", L"31105"},
    };
    const Value Record = Late.Call(L"GetData");
    std::vector<std::pair<std::wstring, std::wstring>> Fields;
    for (const auto& [Field, Content] : Automation::RecordFields(*Record))
        Fields.emplace_back(Field, Shown(*Content));
    EXPECT_EQ(Fields, Expected);

    PLUGIN Direct{};
    ASSERT_EQ(Early->GetData(&Direct), S_OK);
    EXPECT_EQ(Taken(Direct.Name), L"Vantor");
    EXPECT_EQ(Shown(Direct.Game), Expected[5].second);
    EXPECT_EQ(Direct.ServerMenu, VARIANT_TRUE);
    EXPECT_EQ(Direct.ProfileMenuItems.vt, VT_EMPTY);
    EXPECT_EQ(Taken(Direct.MinQRVVer), L"31105");
    for (BSTR Text : {Direct.File, Direct.Version, Direct.Author, Direct.Description, Direct.HelpFile,
                      Direct.MinRCVer, Direct.MinGMFVer, Direct.MinMFMVer})
        SysFreeString(Text);
    VariantClear(&Direct.Game);
    VariantClear(&Direct.ServerMenuItems);
}

// Hosts written with other tools read the record by these offsets.
TEST_F(Client, TheRecordIsAlignedToFourBytes) {
    const std::vector<ULONG> Expected = {0,  4,  8,  12, 16, 20,  36,  38,  40, 42,
                                         44, 60, 76, 92, 96, 100, 104, 108, 112};
    ITypeInfo *Interface = nullptr, *Record = nullptr;
    ITypeLib* Library = nullptr;
    UINT Number = 0;
    ASSERT_EQ(Early->GetTypeInfo(0, 0, &Interface), S_OK);
    ASSERT_EQ(Interface->GetContainingTypeLib(&Library, &Number), S_OK);
    const GUID RecordId{0xabb61003, 0x21f4, 0x4478, {0x93, 0x3e, 0x1f, 0x6a, 0xb4, 0x70, 0x6f, 0xa9}};
    ASSERT_EQ(Library->GetTypeInfoOfGuid(RecordId, &Record), S_OK);
    TYPEATTR* Attributes = nullptr;
    ASSERT_EQ(Record->GetTypeAttr(&Attributes), S_OK);
    EXPECT_EQ(Attributes->cbSizeInstance, 116u);
    EXPECT_EQ(Attributes->cbAlignment, 4);
    std::vector<ULONG> Offsets;
    for (UINT Field = 0; Field < Attributes->cVars; ++Field) {
        VARDESC* Description = nullptr;
        ASSERT_EQ(Record->GetVarDesc(Field, &Description), S_OK);
        Offsets.push_back(Description->oInst);
        Record->ReleaseVarDesc(Description);
    }
    EXPECT_EQ(Offsets, Expected);
    Record->ReleaseTypeAttr(Attributes);
    Record->Release();
    Library->Release();
    Interface->Release();
    EXPECT_EQ(sizeof(PLUGIN), 116u);
    EXPECT_EQ(offsetof(PLUGIN, Game), 20u);
    EXPECT_EQ(offsetof(PLUGIN, ProfileMenuItems), 44u);
    EXPECT_EQ(offsetof(PLUGIN, MinQRVVer), 112u);
}

TEST_F(Client, PrivilegesAreAnArrayOfStrings) {
    const Value List = Late.Call(L"GetPrivis");
    EXPECT_EQ(List->vt, VT_ARRAY | VT_BSTR);
    EXPECT_EQ(Shown(*List), L"Vantor|Slap Player|1|Punt/Ban Player|1|Disarm/Rearm Player|1|Kill Player|1|"
                            L"Switch Player Team|1|Edit Ban Lists|1|Edit Slap List|1");
}

// A request is carried out with data of any kind that holds the fourteen elements: its log line shows it.
TEST_F(Client, TakesProfileDataInEveryFormThatClientsSend) {
    const GameServer Server(L"forms", L"--build standard", "100 join 1 Alice 10.0.0.1\n");
    ASSERT_TRUE(Server.Await("join"));
    const Profile Given{L"forms", StandardGame, &Server};
    WriteText(L"profiles\\forms\\settings\\Slaps.ini", "");
    Lines Texts;
    for (const Value& ProfileElement : ProfileElements(Given))
        Texts.push_back(Shown(*ProfileElement) == L"(empty)" ? L"" : Shown(*ProfileElement));
    Value Variants = ProfileData(Given), Strings = FromLines(Texts);
    VARIANT NumberAsText = *Strings; // every number arrives as text
    VARIANT Reference = ReferenceTo(*Variants), ArrayReference = ReferenceToArray(*Strings);
    VARIANT Nested = ReferenceTo(ArrayReference);
    // Some run-times make arrays that do not know the type of their elements.
    Value Untyped = FromLines(Texts);
    Untyped->parray->fFeatures &= static_cast<USHORT>(~(FADF_HAVEVARTYPE | FADF_BSTR));
    int Sent = 0;
    for (VARIANT* Data : {&*Variants, &NumberAsText, &Reference, &ArrayReference, &Nested, &*Untyped}) {
        LONG Result;
        const std::string Message = "message " + std::to_string(++Sent);
        EXPECT_EQ(Call(1, *Data, *FromText(std::wstring(Message.begin(), Message.end())), Result), S_OK);
        EXPECT_TRUE(PumpUntil([&] { return Server.Count("message") == Sent; })) << "form " << Sent;
    }
    EXPECT_EQ(ReportsOf("SetProfileData"), 0);
    Untyped->parray->fFeatures |= FADF_BSTR; // its texts are freed with it
}

// Nothing reaches the host, the report names the procedure, and the plug-in answers the next call.
TEST_F(Client, ReportsProfileDataThatIsNone) {
    Values Short;
    Short.push_back(FromText(L"host text"));
    Short.push_back(FromText(StandardGame));
    Values WordForProcess = ProfileElements({L"bad"});
    WordForProcess[2] = FromText(L"four");
    Values Huge = ProfileElements({L"bad"});
    Huge[2] = FromText(L"99999999999");
    Values Endless = ProfileElements({L"bad"});
    Endless[2] = FromText(std::wstring(400, L'9')); // the conversion might overflow
    const Value Bad[] = {Automation::Missing(),
                         Value(),
                         FromText(L"text"),
                         FromWhole(7),
                         FromList({}),
                         FromList(std::move(Short)),
                         FromList(std::move(WordForProcess)),
                         FromList(std::move(Huge)),
                         FromList(std::move(Endless))};
    int Reports = 0;
    for (const Value& Data : Bad) {
        LONG Result;
        EXPECT_EQ(Call(1, *Data, *FromText(L"message"), Result), S_OK);
        EXPECT_EQ(Result, 0);
        const int Now = static_cast<int>(ErrorLog().size());
        EXPECT_GT(Now, Reports) << "variant type " << Data->vt;
        Reports = Now;
    }
    EXPECT_NE(ErrorLog().back().find("Type mismatch"), std::string::npos) << ErrorLog().back();
    EXPECT_EQ(Shown(*Late.Call(L"GetPrivis")).substr(0, 6), L"Vantor");
}

TEST_F(Client, IndexOutsideTheHostsRange) {
    const Value Data = ProfileData({L"range"});
    BSTR Nothing = SysAllocString(L"");
    ASSERT_EQ(Early->LoadInterface(0, HandleToLong(Area), *Data, Nothing), S_OK);
    EXPECT_EQ(Frame(), nullptr);
    EXPECT_TRUE(ErrorLog().empty()) << "index 0 is ignored without a word";
    for (const LONG Index : {-1L, LONG_MIN, 32768L, LONG_MAX}) {
        EXPECT_EQ(Early->LoadInterface(Index, HandleToLong(Area), *Data, Nothing), S_OK);
        EXPECT_EQ(Early->DisableProfile(Index), S_OK);
        LONG Result;
        EXPECT_EQ(Call(Index, *Data, *FromText(L"message"), Result), S_OK);
        EXPECT_EQ(Result, 0);
    }
    SysFreeString(Nothing);
    EXPECT_EQ(Frame(), nullptr);
    EXPECT_GE(ErrorLog().size(), 12u);
    for (const std::string& Line : ErrorLog())
        EXPECT_NE(Line.find("Subscript out of range"), std::string::npos) << Line;
}

TEST_F(Client, LeavesOutWhatIsOptional) {
    Values Two;
    Two.push_back(FromWhole(1));
    Two.push_back(ProfileData({L"optional"}));
    EXPECT_EQ(Automation::AsWhole(*Late.Call(L"AddSlapRem", std::move(Two))), 0);
    EXPECT_GE(ReportsOf("AddSlapRem"), 1);
    EXPECT_NO_THROW(Late.Call(L"HideInterface"));
    Values Wrong;
    Wrong.push_back(FromText(L"no number"));
    Wrong.push_back(ProfileData({L"optional"}));
    EXPECT_THROW(Late.Call(L"AddSlapRem", std::move(Wrong)), Failure)
        << "the system refuses it before the plug-in";
    EXPECT_THROW(Late.Call(L"NoSuchMember"), Failure);
}

// What a hostile or broken console may send: refused with a report, and no file has half an entry.
TEST_F(Client, MalformedRequestsDoNothing) {
    const Profile Given{L"hostile"};
    WriteText(L"profiles\\hostile\\settings\\BannedNames.ini", "[Players]\r\n");
    const std::wstring Megabyte(1024 * 1024, L'x');
    const std::pair<const wchar_t*, std::wstring> Requests[] = {
        {L"PuntPlayerRem", L""},
        {L"PuntPlayerRem", L"QWxpY2U=|10.0.0.1"},
        {L"PuntPlayerRem", L"QWxpY2U=|10.0.0.1|no slot|1"},
        {L"PuntPlayerRem", L"***|10.0.0.1|1|1"},
        {L"PuntPlayerRem", L"QWxpY2U=|10.0.0.1|" + std::wstring(400, L'9') + L"|1"},
        {L"PuntPlayerRem", Megabyte},
        {L"ArmPlayerRem", L"QWxpY2U="},
        {L"AddBannedRem", L"QWxpY2VbMV0=|QQ=="},
        {L"AddBannedRem", L"%%%|QQ==|Name"},
        {L"AddBannedRem", L"QQpCWzFd|QQ==|Name"}, // a line break in the name
        {L"AddBannedRem", L"MzAwLjEuMS4x|QQ==|Address"},
        {L"RemoveBannedRem", L"QWxpY2U="},
        {L"AddSlapRem", std::wstring(L"one\0two", 7)},
        {L"EditSlapRem", L"no separator"},
    };
    for (const auto& [Member, Data] : Requests) EXPECT_EQ(Remote(Member, 1, Given, Data), 0) << Member;
    EXPECT_EQ(ReadText(L"profiles\\hostile\\settings\\BannedNames.ini"), "[Players]\r\n");
    EXPECT_EQ(ReadText(L"profiles\\hostile\\settings\\BannedIps.ini"), "");
    EXPECT_EQ(ReadText(L"profiles\\hostile\\settings\\Slaps.ini"), "");
}
