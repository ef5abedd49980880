#include "tests/fakes/pages.h"

#include <windows.h>

void* MapPages(std::size_t Size) noexcept {
    return VirtualAlloc(nullptr, Size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void ZeroPages(void* Pages, std::size_t Size) noexcept {
    VirtualFree(Pages, Size, MEM_DECOMMIT);
    VirtualAlloc(Pages, Size, MEM_COMMIT, PAGE_READWRITE);
}
