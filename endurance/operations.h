// What is done to the lists while the host is killed, and what must stand in the files meanwhile. Parent and
// child draw the same operations from the same seed.
#pragma once

#include <array>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "endurance/driver.h"

namespace Kill {

enum File { Names, Ips, Links, Slaps, Settings, Log, FileCount };

// Each file's entries as short texts, without what changes by itself: keys that only number, and times.
using State = std::array<std::multiset<std::string>, FileCount>;

// The files as every round begins with them.
void WriteFirstFiles(const std::filesystem::path& Base);
// What stands in the files. Damage gets a line for each place that is no whole line of its file.
State Read(const std::filesystem::path& Base, std::vector<std::string>& Damage);
// The file's name without its folder.
const char* NameOf(File Which);

struct Operation;

// In texts, $E stands for the entry and $O for the other one.
struct Kind {
    const char* Name; // of a request: the member
    int Milliseconds; // about how long it takes
    File PicksFrom;   // it takes an entry of this file; of FileCount: a new one
    void (*Change)(State&, const Operation&);
    const char* Data;    // of a request, with what goes as Base64 in braces; null for one in the window
    const char* LogLine; // what a request leaves in the log
    std::vector<Driver::Step> Steps;
};

struct Operation {
    const Kind* What;
    std::string Entry; // the name, address or message
    std::string Other; // another address, message or number that goes with it
};

// The text with $E and $O replaced.
std::string Filled(std::string Text, const Operation& Op);
// Changes what must stand in the files as the operation, done whole, changes the files.
void Apply(State& Lists, const Operation& Op);

// The operations of a seed, one after the other.
class Source {
public:
    explicit Source(unsigned Seed) : Random(Seed) {}
    // One that can be done while the files stand so.
    Operation Next(const State& Lists);

private:
    std::mt19937 Random;
    int Number = 1000;
};

} // namespace Kill
