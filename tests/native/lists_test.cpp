// The ban files, the links, the slap messages and the import.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "game/mdlVNT.h"
#include "lists/ban_import.h"
#include "lists/ban_lists.h"
#include "lists/ban_references.h"
#include "lists/numbered_section.h"
#include "lists/slap_messages.h"
#include "tests/fakes/server.h"

namespace {

std::wstring References() { return Outside::FileText(SettingsFile(L"BannedReference.ini")); }

TEST(BanLists, ItemsAndKeys) {
    for (const TextView Name : {L"Bob", L"", L" Bob ", L"[1] Bob", L"a=b", L"%s|;"}) {
        const BannedName Banned = BannedName::Part(Name);
        EXPECT_EQ(BannedName::OfItem(Banned.Item()).Key(), Banned.Key());
        EXPECT_EQ(BannedName::OfKey(Banned.Key()).Item(), Banned.Item());
    }
    EXPECT_EQ(BannedName::Whole(L"Bob").Item(), L"[1] Bob");
    EXPECT_THROW(BannedName::OfItem(L"[1]"), Failure);
    EXPECT_THROW(BannedName::OfKey(L"x"), Failure);
}

// Whom or what an unlinking reports, and what the file of links holds then.
Lines Linked;
void Note(const std::wstring& Item) { Linked.push_back(Item); }

TEST(References, UnlinkingRenumbersWhatStays) {
    Server Game;
    Linked.clear();
    Outside::PutFile(
        SettingsFile(L"BannedReference.ini"),
        L"[Bob]\r\n0=1.1.1.1\r\n1=2.2.2.2\r\n2=3.3.3.3\r\n[Eve]\r\n0=2.2.2.2\r\n[Ann]\r\n0=4.4.4.4\r\n");
    UnlinkAddress(BanFiles(TestProfile), L"2.2.2.2", Note);
    EXPECT_EQ(References(), L"[Bob]\r\n0=1.1.1.1\r\n1=3.3.3.3\r\n[Ann]\r\n0=4.4.4.4\r\n");
    UnlinkName(BanFiles(TestProfile), L"Bob", Note);
    EXPECT_EQ(Linked, (Lines{L"Bob", L"Eve", L"1.1.1.1", L"3.3.3.3"}));
    EXPECT_EQ(References(), L"[Ann]\r\n0=4.4.4.4\r\n");
}

TEST(References, BlanksAroundANameAndGapsCostNoLink) {
    Server Game;
    Outside::PutFile(SettingsFile(L"BannedReference.ini"), L"[Ann]\r\n0=1.1.1.1\r\n2=2.2.2.2\r\n");
    for (const TextView Address : {L"3.3.3.3", L"4.4.4.4", L"3.3.3.3"})
        AddBanReference(BanFiles(TestProfile), L"Ann ", Address);
    Linked.clear();
    UnlinkName(BanFiles(TestProfile), L"Ann ", Note);
    EXPECT_EQ(Linked, (Lines{L"1.1.1.1", L"2.2.2.2", L"3.3.3.3", L"4.4.4.4"}));
    EXPECT_EQ(References(), L"");
}

// A write that fails ends a change in place, as the end of the process would.
TEST(NumberedSections, NoValueIsMissingWhicheverWriteFails) {
    constexpr TextView Section = L"S", File = L"C:\\s.ini";
    const Lines Wanted{L"b", L"c", L"d"};
    // With how many values may be missing; a section with gaps is cleared first.
    const std::pair<TextView, std::ptrdiff_t> Table[] = {{L"[S]\r\n9=a\r\n1=b\r\n2=c\r\n3=d\r\n", 1},
                                                         {L"[S]\r\n0=a\r\n1=b\r\n2=c\r\n3=d\r\n", 0},
                                                         {L"[S]\r\n0=a\r\n2=b\r\n5=c\r\n6=d\r\n", 1}};
    for (const auto& [Text, Missing] : Table)
        for (int Failing = 1; Failing <= 5; ++Failing) {
            Outside::Reset();
            Outside::PutFile(File, std::wstring(Text));
            int Writes = 0;
            Outside::BeforeCall = [&](TextView Name) {
                const bool IsWrite = Name == L"WriteIniKey" || Name == L"ClearIniSection";
                if (IsWrite && ++Writes == Failing) Fail(1004, L"locked");
            };
            const auto Rewrite = [&] { RewriteNumbered(Section, ReadEntries(Section, File), Wanted, File); };
            if (Failing <= 4)
                EXPECT_THROW(Rewrite(), Failure);
            else
                Rewrite();
            Outside::BeforeCall = nullptr;
            const std::wstring Left = Outside::FileText(File);
            EXPECT_LE(std::count_if(Wanted.begin(), Wanted.end(),
                                    [&](const std::wstring& Value) { return Left.find(Value) == Left.npos; }),
                      Missing)
                << Failing;
            EXPECT_TRUE(Failing <= 4 || Left == L"[S]\r\n0=b\r\n1=c\r\n2=d\r\n");
        }
}

TEST(NumberedSections, OddLinesAreKeptAndEmptyAnswersAreNot) {
    constexpr TextView Section = L"S", File = L"C:\\s.ini";
    Outside::Reset();
    Outside::PutFile(File, L"[S]\r\n0=a\r\n=\r\n1=\r\n");
    EXPECT_EQ(ValuesOf(ReadEntries(Section, File)), (Lines{L"a", L"", L""}));
    Outside::FailCall(2, Outside::Fault::Empty); // the first line's answer
    EXPECT_THROW(ReadEntries(Section, File), Failure);
    const Entries WithGap{{L"0", L"a"}, {L"3", L"b"}, {L"4", L"c"}};
    EXPECT_EQ(FreeKey(WithGap), L"5");
}

TEST(Slaps, AMessageThatTheFileCannotHoldLeavesTheListAsItWas) {
    Server Game;
    AddSlap(TestProfile, L"one");
    for (const TextView Message : {L" ", L"\x416"}) {
        EXPECT_THROW(AddSlap(TestProfile, Message), Failure);
        EXPECT_THROW(EditSlap(TestProfile, L"one", Message), Failure);
    }
    // Written, and not there when it is read again: the new one is taken out, the edited one put back.
    for (const bool Edits : {false, true}) {
        bool IsWritten = false;
        Outside::BeforeCall = [&](TextView Name) {
            if (Name == L"GetIniKey" && IsWritten)
                Outside::PutIni(SettingsFile(L"Slaps.ini"), L"Messages", Edits ? L"0" : L"1", L"cut");
            IsWritten |= Name == L"WriteIniKey";
        };
        EXPECT_THROW(Edits ? void(EditSlap(TestProfile, L"one", L"two")) : AddSlap(TestProfile, L"two"),
                     Failure);
        Outside::BeforeCall = nullptr;
        EXPECT_EQ(ReadSlaps(TestProfile), Lines{L"one"});
    }
}

TEST(Slaps, KeysFollowTheOrderAndNothingIsOverwritten) {
    Server Game;
    EXPECT_FALSE(ReadSlaps(TestProfile).has_value());
    for (const TextView Message : {L"one", L"two", L"three"}) AddSlap(TestProfile, Message);
    EXPECT_EQ(ReadSlaps(TestProfile), (Lines{L"one", L"two", L"three"}));
    DeleteSlap(TestProfile, L"two", 1);
    EXPECT_EQ(Outside::FileText(SettingsFile(L"Slaps.ini")), L"[Messages]\r\n0=one\r\n1=three\r\n");
    EXPECT_TRUE(EditSlap(TestProfile, L"three", L"last", 2)) << "moved up meanwhile";
    EXPECT_FALSE(EditSlap(TestProfile, L"two", L"nowhere", 1));
    EXPECT_EQ(ReadSlaps(TestProfile), (Lines{L"one", L"last"}));
    // A file edited by hand, with a gap.
    Outside::PutFile(SettingsFile(L"Slaps.ini"), L"[Messages]\r\n0=a\r\n2=b\r\n");
    AddSlap(TestProfile, L"c");
    EditSlap(TestProfile, L"b", L"a");
    EXPECT_EQ(ReadSlaps(TestProfile), (Lines{L"a", L"a", L"c"}));
    DeleteSlap(TestProfile, L"a", 1);
    EXPECT_EQ(Outside::FileText(SettingsFile(L"Slaps.ini")), L"[Messages]\r\n0=a\r\n1=c\r\n");
}

// A line of the other manager's ban file.
std::wstring ForeignLine(TextView Address, TextView Name, TextView Reason) {
    std::wstring Line(Address);
    Line.resize(19, L' ');
    Line += Name;
    Line.resize(40, L' ');
    return Line + std::wstring(Reason);
}

TEST(Import, CountsAddsAndLinks) {
    Server Game;
    BanIp(L"10.0.0.6");
    mdlVNT::IpListChanged(TestProfile) = false;
    Outside::PutFile(L"C:\\bans.txt", ForeignLine(L"10.0.0.5", L"Bob;", L"cheat;") + L"\r\n\r\n" +
                                          ForeignLine(L"10.0.0.6", L"*Eve;", L";") + L"\r\n" +
                                          ForeignLine(L"", L"Ann*;", L"x;") + L"\r\n" +
                                          ForeignLine(L"", L";", L"x;") + L"\r\n" +
                                          ForeignLine(L"not an address", L";", L"x;") + L"\r\n");
    std::vector<ImportedEntry> Added;
    const ImportCounts Counts = ImportBanFile(BanFiles(TestProfile), L"C:\\bans.txt", Added);
    EXPECT_EQ(ImportSummary(Counts),
              L"Ban File Parsed Successfully\r\n\r\nTotal Items Found: 6\r\nTotal Items Added: 5\r\n"
              L"Total Items Skipped: 1\r\nTotal Invalid Items: 1");
    EXPECT_EQ(GetBannedNames(TestProfile), (Lines{L"[1] Bob", L"[2] *Eve", L"[2] Ann*"}));
    EXPECT_EQ(GetBannedIps(TestProfile), (Lines{L"10.0.0.6", L"10.0.0.5", L"not an address"}));
    EXPECT_EQ(BannedNameDetails(TestProfile, BannedName::Whole(L"Bob")).Reason, L"cheat");
    EXPECT_EQ(BannedNameDetails(TestProfile, BannedName::Part(L"*Eve")).Reason, L"None");
    EXPECT_EQ(References(), L"[Bob]\r\n0=10.0.0.5\r\n[*Eve]\r\n0=10.0.0.6\r\n");
    EXPECT_TRUE(mdlVNT::IpListChanged(TestProfile));
    EXPECT_EQ(Added.size(), 5u);
    // Again: names are refreshed, addresses skipped.
    EXPECT_EQ(ImportBanFile(BanFiles(TestProfile), L"C:\\bans.txt", Added).Skipped, 3);
    // A name that no list can hold does not save its address.
    Outside::PutFile(L"C:\\bans.txt", ForeignLine(L"10.0.0.9", L"[clan]Eve;", L"x;") + L"\r\n");
    const ImportCounts Clan = ImportBanFile(BanFiles(TestProfile), L"C:\\bans.txt", Added);
    EXPECT_EQ(Clan.Added + Clan.Invalid * 10, 11);
    EXPECT_EQ(GetBannedIps(TestProfile)->back(), L"10.0.0.9");
}

// The sample files, with the figures that are given for them. A field that is missing ends an import and
// keeps what came before.
TEST(Import, TheSamplesShowWhatIsSaidOfThem) {
    const struct {
        const char* File;
        std::optional<ImportCounts> Counts; // absent: ends without a summary
        Lines Names, Ips;
    } Samples[] = {
        {"bans.txt",
         ImportCounts{11, 10, 1, 0},
         {L"[1] Bob", L"[1] Silent Sam", L"[2] *clan*", L"[2] Rita*", L"[1] Nameonly", L"[1] Bobby"},
         {L"203.0.113.9", L"203.0.113.10", L"203.0.113.11", L"198.51.100.7"}},
        {"odd-lines.txt",
         ImportCounts{4, 4, 0, 1},
         {L"[1] Uma", L"[1] Victor"},
         {L"203.0.113.30", L"999.1.1.1"}},
        {"no-reason.txt", std::nullopt, {L"[1] Tom"}, {L"203.0.113.20"}}};
    for (const auto& Tried : Samples) {
        Server Game;
        std::ifstream File(std::string(VANTOR_IMPORT_SAMPLES) + Tried.File, std::ios::binary);
        Outside::PutFile(L"C:\\bans.txt", std::wstring(std::istreambuf_iterator<char>(File), {}));
        std::vector<ImportedEntry> Added;
        std::optional<ImportCounts> Counts;
        try {
            Counts = ImportBanFile(BanFiles(TestProfile), L"C:\\bans.txt", Added);
        } catch (const Failure&) { // ends it
        }
        EXPECT_EQ(Counts, Tried.Counts) << Tried.File;
        EXPECT_EQ(GetBannedNames(TestProfile), Tried.Names) << Tried.File;
        EXPECT_EQ(GetBannedIps(TestProfile), Tried.Ips) << Tried.File;
        EXPECT_EQ(Added.size(), Tried.Names.size() + Tried.Ips.size()) << Tried.File;
    }
}

} // namespace
