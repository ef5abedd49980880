// Writes large ban lists to try the plug-in with:
//
//   banlists FOLDER [names [addresses [seed]]]
//
// puts BannedNames.ini, BannedIps.ini and BannedReference.ini for a profile's settings folder, and
// import.txt, a ban file for "Import Ban List", into the folder; existing files are replaced. 2000 names and
// 5000 addresses unless told otherwise, at most 1000000 each; the same seed gives the same lists on every
// system. Exit code 2 for a wrong argument, 1 when a file cannot be written.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <random>
#include <string>

namespace {

// Not a distribution of the library: those differ between systems.
class Random {
public:
    explicit Random(unsigned Seed) : Engine(Seed) {}
    unsigned Below(unsigned Limit) { return static_cast<unsigned>(Engine() % Limit); }

private:
    std::mt19937 Engine;
};

std::string Name(Random& Dice, unsigned Number) {
    static constexpr const char* First[] = {"Silent", "Iron", "Lucky", "Night", "Red", "Old", "Fast", "Mad"};
    static constexpr const char* Second[] = {"Fox",  "Hawk", "Sniper", "Ghost",
                                             "Wolf", "Tank", "Medic",  "Jack"};
    return std::string(First[Dice.Below(8)]) + Second[Dice.Below(8)] + std::to_string(Number);
}

// Distinct for each number: 10.0.0.0 upward, and where ranges are wanted every tenth a range of 256
// from 11.0.0.*.
std::string Address(unsigned Number, bool WithRanges) {
    const auto Part = [](unsigned Value) { return std::to_string(Value & 255) + "."; };
    const unsigned Range = Number / 10;
    if (WithRanges && Number % 10 == 9) return "11." + Part(Range >> 8) + Part(Range) + "*";
    return "10." + Part(Number >> 16) + Part(Number >> 8) + std::to_string(Number & 255);
}

std::string Reason(Random& Dice) {
    static constexpr const char* Reasons[] = {"None", "Team killing", "Cheating", "Spamming", "Insults"};
    return Reasons[Dice.Below(5)];
}

std::string Padded(std::string Text, std::size_t Width) {
    Text.resize(std::max(Width, Text.size()), ' ');
    return Text;
}

constexpr const char* Stamp = "2004-07-09 9:05:03";

struct Wanted {
    std::string Folder;
    unsigned Names = 2000, Addresses = 5000, Seed = 1;
};

class File {
public:
    File(const Wanted& Asked, const char* FileName) : Out(Asked.Folder + "/" + FileName, std::ios::binary) {}
    void Line(const std::string& Text) { Out << Text << "\r\n"; }
    bool Good() { return static_cast<bool>(Out.flush()); }

private:
    std::ofstream Out;
};

bool WriteNames(const Wanted& Asked) {
    Random Dice(Asked.Seed);
    File Names(Asked, "BannedNames.ini"), References(Asked, "BannedReference.ini");
    Names.Line("[Players]");
    for (unsigned At = 0; At < Asked.Names; ++At) {
        const std::string Each = Name(Dice, At);
        Names.Line(Each + (At % 10 == 9 ? "[2]=" : "[1]=") + Stamp + "[-]" + Reason(Dice));
        if (At >= Asked.Addresses || At % 10 == 9) continue;
        References.Line("[" + Each + "]");
        References.Line("0=" + Address(At, true));
    }
    return Names.Good() && References.Good();
}

bool WriteAddresses(const Wanted& Asked) {
    File Addresses(Asked, "BannedIps.ini");
    Addresses.Line("[IpAddresses]");
    for (unsigned At = 0; At < Asked.Addresses; ++At) Addresses.Line(Address(At, true) + "=" + Stamp);
    return Addresses.Good();
}

// Address in columns 1 to 17, name from 20, reason from 41; name and reason end in a character that the
// import drops.
bool WriteImport(const Wanted& Asked) {
    Random Dice(Asked.Seed + 1);
    File Import(Asked, "import.txt");
    for (unsigned At = 0; At < Asked.Names; ++At)
        Import.Line(Padded(Padded(Address(At + (128u << 16), false), 19) + Name(Dice, At) + ";", 40) +
                    Reason(Dice) + ";");
    return Import.Good();
}

bool Number(const char* Text, unsigned& Into) {
    char* End = nullptr;
    const long Value = std::strtol(Text, &End, 10);
    if (End == Text || *End != '\0' || Value < 0 || Value > 1000000) return false;
    Into = static_cast<unsigned>(Value);
    return true;
}

} // namespace

int main(int Count, char** Words) {
    Wanted Asked;
    unsigned* const Numbers[] = {&Asked.Names, &Asked.Addresses, &Asked.Seed};
    bool Understood = Count >= 2 && Count <= 5;
    for (int At = 2; Understood && At < Count; ++At) Understood = Number(Words[At], *Numbers[At - 2]);
    if (!Understood) {
        std::cerr << "banlists FOLDER [names [addresses [seed]]], each number 0 to 1000000\n";
        return 2;
    }
    Asked.Folder = Words[1];
    if (WriteNames(Asked) && WriteAddresses(Asked) && WriteImport(Asked)) return 0;
    std::cerr << "banlists: cannot write to " << Asked.Folder << "\n";
    return 1;
}
