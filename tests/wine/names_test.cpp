// Odd names through the whole way: read from the game, banned by a remote console, stored in a real INI file,
// found by the sweep, and removed again.
#include "tests/wine/support.h"

namespace {

using namespace Support;

struct OddName {
    std::string Bytes; // of the system's code page, as the game holds them
    bool CanBeStored;
};

std::wstring Wide(const std::string& Bytes) {
    std::wstring Text(Bytes.size(), L'\0');
    Text.resize(
        static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, Bytes.data(), static_cast<int>(Bytes.size()),
                                                     Text.data(), static_cast<int>(Text.size()))));
    return Text;
}

// Whether the byte alone is a character, as all are in Western code pages and none above 127 is in UTF-8.
bool IsCharacter(char Byte) {
    const std::wstring Text = Wide({Byte});
    char Back[8] = "";
    const int Count = WideCharToMultiByte(CP_ACP, 0, Text.data(), static_cast<int>(Text.size()), Back,
                                          sizeof Back, nullptr, nullptr);
    return Count == 1 && Back[0] == Byte;
}

// Every byte from 128 to 255 that is a character, in pieces that a name can hold.
std::vector<OddName> HighNames() {
    std::vector<OddName> Names;
    for (int Byte = 128; Byte < 256; ++Byte) {
        if (Byte % 32 == 0 && (Names.empty() || !Names.back().Bytes.empty())) Names.push_back({"", true});
        if (IsCharacter(static_cast<char>(Byte))) Names.back().Bytes += static_cast<char>(Byte);
    }
    if (Names.back().Bytes.empty()) Names.pop_back();
    return Names;
}

std::vector<OddName> OddNames() {
    std::vector<OddName> Names{
        {" lead", false},  {"trail ", true}, {"50% off", true},    {"A & B", true},     {"\"quoted\"", true},
        {"a[1]b", true},   {"p|ipe", true},  {"semi;colon", true}, {"tab\there", true}, {"'single'", true},
        {";first", false}, {"a=b", false},   {"e[2]=", false},     {"[clan]Bob", false}};
    for (OddName& Odd : HighNames()) Names.push_back(std::move(Odd));
    return Names;
}

std::string Scenario(const std::vector<OddName>& Names) {
    std::string Lines;
    int Slot = 1;
    for (const OddName& Odd : Names) {
        std::string Escaped;
        for (const char Byte : Odd.Bytes) {
            char Code[8];
            std::snprintf(Code, sizeof Code, "\\x%02X", static_cast<unsigned char>(Byte));
            Escaped += Code;
        }
        Lines +=
            "0 join " + std::to_string(Slot) + " \"" + Escaped + "\" 10.0.0." + std::to_string(Slot) + "\n";
        ++Slot;
    }
    return Lines;
}

class OddNamesOnAServer : public PluginTest {
protected:
    OddNamesOnAServer() : Memory(Automation::Create(L"qrvGMF.clsMemory")) {}

    std::wstring Encoded(const std::wstring& Text) {
        Automation::Values Arguments;
        Arguments.push_back(Automation::FromText(Text));
        return Automation::AsText(*Memory.Call(L"Enc64", std::move(Arguments)));
    }

    Automation::Object Memory;
};

} // namespace

TEST_F(OddNamesOnAServer, AreBannedFoundAndRemovedAndHitNobodyElse) {
    const std::vector<OddName> Names = OddNames();
    const GameServer Server(L"odd", L"--build standard --players 40", Scenario(Names));
    ASSERT_TRUE(Server.Await("join", Names.back().Bytes));
    const Support::Profile Given{L"odd", StandardGame, &Server};
    WriteText(L"profiles\\odd\\settings\\keep.txt", "");
    Load(1, Given);
    int Dropped = 0;
    for (const OddName& Odd : Names) {
        const std::wstring Key = Wide(Odd.Bytes) + L"[1]";
        EXPECT_EQ(Remote(L"AddBannedRem", 1, Given, Encoded(Key) + L"|" + Encoded(L"odd") + L"|Name"),
                  Odd.CanBeStored ? 1 : 0)
            << Odd.Bytes;
        Sweep(1);
        if (Odd.CanBeStored) {
            EXPECT_TRUE(Server.Await("dropped", Odd.Bytes)) << Odd.Bytes;
            ++Dropped;
            EXPECT_EQ(Remote(L"RemoveBannedRem", 1, Given, Encoded(Wide(Odd.Bytes)) + L"|Name"), 1);
        }
        EXPECT_EQ(Server.Count("dropped"), Dropped) << Odd.Bytes;
    }
    const std::string File = ReadText(L"profiles\\odd\\settings\\BannedNames.ini");
    EXPECT_EQ(File.find("[-]odd"), std::string::npos) << File;
}
