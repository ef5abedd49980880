#include "tests/fakes/private_memory.h"

#include <new>
#include <vector>

#include "tests/fakes/pages.h"

namespace {

using Simulation::GameMemory;
using Simulation::MemoryBlock;

std::vector<GameMemory> Free;

MemoryBlock Map(std::uint32_t Address, std::size_t Size) {
    void* const Bytes = MapPages(Size);
    if (Bytes == nullptr) throw std::bad_alloc();
    return {Address, Size, static_cast<std::uint8_t*>(Bytes)};
}

GameMemory MapAll() {
    return {Map(Layout::ImageStart, Simulation::ImageSize), Map(0x10000000, Simulation::EntriesSize),
            Map(0x12000000, Simulation::StatisticsSize), Map(0x18000000, Simulation::ClientsSize),
            Map(0x19000000, Simulation::EntitiesSize)};
}

} // namespace

PrivateMemory::PrivateMemory() {
    if (Free.empty()) Free.push_back(MapAll());
    Memory = Free.back();
    Free.pop_back();
    for (const MemoryBlock* Each :
         {&Memory.Image, &Memory.Entries, &Memory.Statistics, &Memory.Clients, &Memory.Entities})
        ZeroPages(Each->Bytes, Each->Size);
}

PrivateMemory::~PrivateMemory() { Free.push_back(Memory); }
