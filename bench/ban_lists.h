// The ban lists that both benchmarks measure with, so that their figures can be compared.
#pragma once

#include <string>

// What BannedNames.ini and BannedIps.ini hold.
struct BanLists {
    std::string Names, Ips;
};

// Entries whole names, as many parts of names and as many addresses, none of which matches a player of the
// benchmarks. Distinct up to 65536 addresses.
BanLists MakeBanLists(int Entries);
