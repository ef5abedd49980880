#include "bench/ban_lists.h"

BanLists MakeBanLists(int Entries) {
    BanLists Made{"[Players]\r\n", "[IpAddresses]\r\n"};
    for (int Entry = 0; Entry < Entries; ++Entry) {
        const std::string Number = std::to_string(Entry);
        Made.Names += "Somebody else " + Number + "[1]=2024-01-01 1:02:03[-]None\r\n";
        Made.Names += "Cheater " + Number + "[2]=2024-01-01 1:02:03[-]None\r\n";
        Made.Ips += "172.16." + std::to_string(Entry / 256 % 256) + "." + std::to_string(Entry % 256) +
                    "=2024-01-01 1:02:03\r\n";
    }
    return Made;
}
