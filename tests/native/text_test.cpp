// Number, text and address rules.
#include <cfenv>

#include <gtest/gtest.h>

#include "enforcement/kernel_method.h"
#include "enforcement/name_fragments.h"
#include "game/ini_key.h"
#include "game/mdlVNT.h"
#include "game/memory_map.h"
#include "game/player_table.h"
#include "game/settings.h"
#include "lists/ban_lists.h"
#include "tests/fakes/server.h"

namespace {

TEST(Numbers, OnlyPlainDecimalsAreNumeric) {
    for (const TextView Text : {L"0", L"7", L" 12 ", L"-3", L"+4", L"1.5", L".5", L"5.", L"00012", L"-.25"})
        EXPECT_TRUE(IsNumeric(Text)) << std::string(Text.begin(), Text.end());
    for (const TextView Text :
         {L"", L" ", L".", L"-", L"1e5", L"0x1F", L"&H1", L"1,000", L"$3", L"1 2", L"--1", L"\t1"})
        EXPECT_FALSE(IsNumeric(Text)) << std::string(Text.begin(), Text.end());
}

// The number of the failure; 0 when there is none.
template <class F> Long ErrorOf(F&& Call) {
    try {
        Call();
        return 0;
    } catch (const Failure& Caught) {
        return Caught.Number;
    }
}

TEST(Numbers, WholeNumbersRoundHalfToEvenAndEndAt32Bits) {
    const std::pair<TextView, Long> Table[] = {{L"0.5", 0},
                                               {L"1.5", 2},
                                               {L"2.5", 2},
                                               {L"-0.5", 0},
                                               {L"-1.5", -2},
                                               {L"2.51", 3},
                                               {L" 7 ", 7},
                                               {L"2147483647", 2147483647},
                                               {L"-2147483648", -2147483647 - 1}};
    for (const auto& [Text, Number] : Table) EXPECT_EQ(ToWhole(Text), Number);
    EXPECT_EQ(ErrorOf([] { ToWhole(L"2147483648"); }), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([] { ToWhole(L"abc"); }), ErrorNumber::TypeMismatch);
    // A host may have it raised when a number overflows.
    std::feclearexcept(FE_ALL_EXCEPT);
    const std::wstring Digits(400, L'9');
    EXPECT_TRUE(IsNumeric(Digits + L"." + Digits));
    EXPECT_EQ(ErrorOf([&] { ToWhole(Digits); }), ErrorNumber::Overflow);
    EXPECT_FALSE(std::fetestexcept(FE_OVERFLOW | FE_INVALID | FE_DIVBYZERO));
}

TEST(Addresses, PatternRules) {
    for (const TextView Text : {L"127.0.0.1", L"127.0.0.*", L"127.0.*", L"127.*", L"*", L"-5.1.1.1",
                                L" 1 .2.3.4", L"255.255.255.255"})
        EXPECT_TRUE(IsValidIp(Text)) << std::string(Text.begin(), Text.end());
    for (const TextView Text :
         {L"", L"127.0.0", L"127.*.0.1", L"256.1.1.1", L"1.2.3.4.5", L"1.2.3.", L"1..2.3", L"a.b.c.d",
          L"1.2.3.4.*", L"13.12.11.", L"*.*", L"1.2.3.99999999999999999999"})
        EXPECT_FALSE(IsValidIp(Text)) << std::string(Text.begin(), Text.end());
}

TEST(Addresses, PackedWithTheFirstPartLowest) {
    EXPECT_EQ(IpToLong(L"1.2.3.4"), 0x04030201);
    EXPECT_EQ(IpToLong(L"0.0.0.255"), static_cast<Long>(0xFF000000u));
    const std::pair<TextView, Long> Refused[] = {{L"300.1.1.1", ErrorNumber::Overflow},
                                                 {L"-1.1.1.1", ErrorNumber::Overflow},
                                                 {L"1.2.3", ErrorNumber::SubscriptOutOfRange},
                                                 {L"a.2.3.4", ErrorNumber::TypeMismatch}};
    for (const auto& Row : Refused) EXPECT_EQ(ErrorOf([&] { IpToLong(Row.first); }), Row.second);
}

TEST(Addresses, ConvertIpReversesThePairs) {
    const std::pair<TextView, TextView> Table[] = {{L"C0A80001", L"1.0.168.192"},
                                                   {L"0", L"0.0.0.0"},
                                                   {L" 0 ", L"0.0.0.0"},
                                                   {L" c0a80001 ", L"1.0.168.192"},
                                                   {L"0102030405", L"4.3.2.1"}};
    for (const auto& [Raw, Dotted] : Table) EXPECT_EQ(ConvertIP(Raw), Dotted);
    for (const TextView Garbage : {L"xx0B0C0D", L"0A0B0Cxx", L"1234"})
        EXPECT_THROW(ConvertIP(Garbage), Failure);
}

TEST(StartUp, BaseFolderIsWhatLiesAboveThePluginsFolders) {
    const std::pair<TextView, TextView> Table[] = {
        {L"C:\\Host\\Plugins\\dlls\\Vantor", L"C:\\Host"},
        {L"C:\\Host\\plugins\\dlls\\Vantor", L"C:\\Host"},
        {L"C:\\Host\\PLUGINS\\dlls\\Vantor", L"C:\\Host\\PLUGINS"},
        {L"D:\\Plugins\\Host\\Plugins\\dlls\\Vantor", L"D:\\Host"},
        {L"C:\\Elsewhere", L"C:\\Elsewhere"},
    };
    for (const auto& [Folder, Base] : Table) EXPECT_EQ(HostBaseOf(std::wstring(Folder)), Base);
}

// What the window and the sweep make of a stored text, and what consoles are sent.
TEST(Settings, AcceptedTexts) {
    struct Row {
        const Setting& Read;
        TextView Text, Valid, Sent;
    };
    const Row Table[] = {
        {Settings::BanMethod, L"", L"0", L"0"},       {Settings::BanMethod, L"1", L"1", L"1"},
        {Settings::BanMethod, L"x", L"x", L"x"},      {Settings::IdlePunt, L"", L"0", L"0"},
        {Settings::IdlePunt, L"1", L"1", L"1"},       {Settings::IdlePunt, L"True", L"0", L"True"},
        {Settings::IdleMax, L"", L"5", L"5"},         {Settings::IdleMax, L"0", L"5", L"0"},
        {Settings::IdleMax, L"0.5", L"5", L"0.5"},    {Settings::IdleMax, L"05", L"5", L"05"},
        {Settings::IdleMax, L"abc", L"5", L"5"},      {Settings::IdleMax, L"1.5", L"1.5", L"1.5"},
        {Settings::IdleMax, L"1", L"1", L"1"},        {Settings::AutoRefresh, L"1", L"1", L"1"},
        {Settings::AutoRefresh, L"2", L"0", L"2"},    {Settings::RefreshInterval, L"-3", L"5", L"-3"},
        {Settings::RefreshInterval, L"", L"5", L"5"}, {Settings::RefreshInterval, L"30", L"30", L"30"},
    };
    Server Game;
    for (const Row& Case : Table) {
        const std::string What(Case.Text.begin(), Case.Text.end());
        WriteSetting(TestProfile, Case.Read, Case.Text);
        EXPECT_EQ(ReadSetting(TestProfile, Case.Read), Case.Text) << What;
        EXPECT_EQ(ReadValidSetting(TestProfile, Case.Read), Case.Valid) << What;
        EXPECT_EQ(Case.Read.IsValidForConsoles(Case.Text) ? Case.Text : Case.Read.Default, Case.Sent) << What;
    }
    Outside::SetReadOnly(true);
    EXPECT_THROW(WriteSetting(TestProfile, Settings::IdleMax, L"1"), Failure);
    Outside::RemoveAll(PlayersIni); // it cannot even be made
    EXPECT_THROW(WriteSetting(TestProfile, Settings::IdleMax, L"1"), Failure);
    Outside::SetReadOnly(false);
    for (const std::wstring& Text : {std::wstring(1001, L'1'), std::wstring(L"1\x1A")})
        EXPECT_THROW(WriteSetting(TestProfile, Settings::IdleMax, Text), Failure);
    mdlVNT::Profiles(TestProfile).ProfileFolder = L"[1]"; // Players.ini cannot hold it as a key
    EXPECT_THROW(WriteSetting(TestProfile, Settings::IdleMax, L"1"), Failure);
}

TEST(Keys, WhatAnIniFileKeeps) {
    for (const TextView Kept : {L"Bob[1]", L"a b ", L"10.0.0.7", L"]x", L"\xE9t\xE9", L"%s"})
        EXPECT_TRUE(CanBeKey(Kept));
    for (const TextView Lost : {L"", L"e[2]=", L"[x", L";x", L" x", L"\tx", L"\x416", L"a\rb", L"a\nb"})
        EXPECT_FALSE(CanBeKey(Lost));
    for (const auto& [Written, Read] : {std::pair<TextView, TextView>{L" go ", L"go"},
                                        {L"\"go\"", L"go"},
                                        {L"'go'", L"go"},
                                        {L"\"go\"", L"\"go\""}})
        EXPECT_TRUE(ReadsBackAs(Written, Read));
    EXPECT_FALSE(ReadsBackAs(L"go away", L"go"));
    EXPECT_FALSE(ReadsBackAs(L"'go\"", L"go"));
}

TEST(Keys, PartsOfNamesThatNoFileHolds) {
    const std::pair<TextView, TextView> Table[] = {{L"[ABC]Bob", L"ABC]Bob"},
                                                   {L"; [x]y", L"x]y"},
                                                   {L" Bob", L"Bob"},
                                                   {L"Bob", L""},
                                                   {L"[ab", L""},
                                                   {L"[[[", L""},
                                                   {L"[abc=", L""},
                                                   {L"[\x416zz", L""}};
    for (const auto& [Name, Part] : Table) {
        const std::optional<BannedName> Found = PartInsteadOf(Name);
        EXPECT_EQ(Found ? Found->Name : L"", Part);
        EXPECT_TRUE(!Found || Found->Key().ends_with(L"[2]"));
    }
}

TEST(MemoryMap, BothBuildsHoldThirteenAddressesHoweverOftenTheyAreSet) {
    for (const auto Build : {Layout::Build::Standard, Layout::Build::Affiliate}) {
        Server Game({.Build = Build});
        SetMemory(TestProfile, Build == Layout::Build::Affiliate);
        EXPECT_EQ(mdlVNT::MemoryMap(TestProfile).Count(), 13u);
        const Layout::MemoryMap& Map = Layout::MapOf(Build);
        const std::pair<const wchar_t*, std::uint32_t> Table[] = {
            {L"GameState", Map.GameState},         {L"GameType", Map.GameType},
            {L"MsgTypeAdd", Map.MsgTypeAdd},       {L"MsgTitleAdd", Map.MsgTitleAdd},
            {L"MsgDisplayAdd", Map.MsgDisplayAdd}, {L"MsgStrAdd", Map.MsgStrAdd},
            {L"PlayerList", Map.PlayerList},       {L"IpList", Map.IpList},
            {L"MaxPlayers", Map.MaxPlayers},       {L"SerDedi", Map.SerDedi},
            {L"PlyrStats", Map.PlyrStats},         {L"GamePort", Map.GamePort},
            {L"WpnNameAdd", Map.WpnNameAdd}};
        for (const auto& [Key, Address] : Table)
            EXPECT_EQ(static_cast<std::uint32_t>(AddressOf(TestProfile, Key)), Address);
    }
    EXPECT_TRUE(IsAffiliateGame(L"DF_AFF"));
    for (const TextView Other : {L"DF_aff", L"DF", L"", L"AFF", L"_AFF "})
        EXPECT_FALSE(IsAffiliateGame(Other));
}

TEST(NameFragments, FewAndManyCountAlike) {
    // Plain search and sorted endings must agree.
    const Lines Names{L"xbobx", L"BOB", L"bobbob", L"[clan]x", L"", L"b"};
    const std::vector<Long> Expected{4, 0, 3, 2, 0, 0};
    Lines Fragments{L"bob", L"bo", L"", L"x", L"[clan]", L"bob"};
    EXPECT_EQ(CountFragments(Names, Fragments), Expected);
    for (int I = 0; I < 500; ++I) Fragments.push_back(L"never" + std::to_wstring(I));
    EXPECT_EQ(CountFragments(Names, Fragments), Expected);
}

} // namespace
