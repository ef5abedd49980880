// The interface as clients meet it: the descriptor record, and whatever automation
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
    // A remote member with any data at all, as an early-bound client calls it.
    LONG Send(const VARIANT& Data, const std::wstring& Request) {
        LONG Result = -1;
        EXPECT_EQ(Early->SlapPlayerRem(1, Data, *FromText(Request), &Result), S_OK);
        return Result;
    }
};

std::wstring Shown(const VARIANT& Held) {
    if (Held.vt == VT_EMPTY) return L"(empty)";
    if (Held.vt == VT_BOOL) return Held.boolVal ? L"True" : L"False";
    return Held.vt & VT_ARRAY ? Join(Automation::AsLines(Held), L"|") : Automation::AsText(Held);
}

// As some clients pass what they hold in a variable.
VARIANT ReferenceTo(VARIANT& Held, VARTYPE Type, void* To) {
    VARIANT Reference = Held;
    Reference.vt = static_cast<VARTYPE>(VT_BYREF | Type);
    Reference.byref = To;
    return Reference;
}

} // namespace

TEST_F(Client, DescriptorHasEveryField) {
    Values Name;
    Name.push_back(FromText(L"tests"));
    const std::wstring Version = Automation::AsText(*Late.Call(L"dllVersion", std::move(Name)));
    const Lines Expected = Split(
        L"Name=Vantor;File=qrvVNT.dll;Version=" + Version +
            L";Author=the Vantor authors;"
            L"Description=This Plugin allows you to manage players that join your Ostra Server.;"
            L"Game=Delta Force,  V1.5.0.5|Delta Force, NovaWorld Affiliate Server V1.5.0.11A;"
            L"HasInterface=True;ProfileMenu=False;ServerMenu=True;MainMenu=False;ProfileMenuItems=(empty);"
            L"ServerMenuItems=Players|;MainMenuItems=(empty);HasPrivis=True;HelpFile=qrvVNT_help.chm;"
            L"MinRCVer=1201;MinGMFVer=1104;MinMFMVer=1309;MinQRVVer=31105",
        L";");
    const Value Record = Late.Call(L"GetData");
    Lines Fields;
    for (const auto& [Field, Content] : Automation::RecordFields(*Record))
        Fields.push_back(Field + L"=" + Shown(*Content));
    EXPECT_EQ(Fields, Expected);
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
    VARIANT Reference = ReferenceTo(*Variants, VT_VARIANT, &*Variants);
    VARIANT ArrayReference = ReferenceTo(*Strings, Strings->vt, &Strings->parray);
    VARIANT Nested = ReferenceTo(ArrayReference, VT_VARIANT, &ArrayReference);
    // Some run-times make arrays that do not know the type of their elements.
    Value Untyped = FromLines(Texts);
    Untyped->parray->fFeatures &= static_cast<USHORT>(~(FADF_HAVEVARTYPE | FADF_BSTR));
    int Sent = 0;
    for (const VARIANT* Data : {&*Variants, &*Strings, &Reference, &ArrayReference, &Nested, &*Untyped}) {
        Send(*Data, L"message " + std::to_wstring(++Sent));
        EXPECT_TRUE(PumpUntil([&] { return Server.Count("message") == Sent; })) << "form " << Sent;
    }
    EXPECT_EQ(ReportsOf("SetProfileData"), 0);
    Untyped->parray->fFeatures |= FADF_BSTR; // its texts are freed with it
}

// Nothing reaches the host, the report names the procedure, and the plug-in answers the next call.
TEST_F(Client, ReportsProfileDataThatIsNone) {
    const auto WithProcess = [](const std::wstring& Text) {
        Values Elements = ProfileElements({L"bad"});
        Elements[2] = FromText(Text);
        return FromList(std::move(Elements));
    };
    Values Short;
    Short.push_back(FromText(L"host text"));
    const Value Record = Late.Call(L"GetData");
    SAFEARRAYBOUND Fourteen{14, 0};
    Value Records;
    Records->vt = VT_ARRAY | VT_RECORD;
    Records->parray = SafeArrayCreateEx(VT_RECORD, 1, &Fourteen, Record->pRecInfo);
    ASSERT_NE(Records->parray, nullptr);
    const Value Bad[] = {std::move(Records),
                         Automation::Missing(),
                         Value(),
                         FromText(L"text"),
                         FromWhole(7),
                         FromList({}),
                         FromList(std::move(Short)),
                         WithProcess(L"99999999999"),
                         WithProcess(std::wstring(400, L'9')),
                         WithProcess(L"four")};
    std::size_t Reports = 0;
    for (const Value& Data : Bad) {
        EXPECT_EQ(Send(*Data, L"message"), 0);
        EXPECT_GT(ErrorLog().size(), Reports) << "variant type " << Data->vt;
        Reports = ErrorLog().size();
    }
    EXPECT_NE(ErrorLog().back().find("Type mismatch"), std::string::npos) << ErrorLog().back();
    EXPECT_EQ(Shown(*Late.Call(L"GetPrivis")).substr(0, 6), L"Vantor");
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
