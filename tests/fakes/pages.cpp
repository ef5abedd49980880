#include "tests/fakes/pages.h"

#include <sys/mman.h>

void* MapPages(std::size_t Size) noexcept {
    void* const Pages = mmap(nullptr, Size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return Pages == MAP_FAILED ? nullptr : Pages;
}

void ZeroPages(void* Pages, std::size_t Size) noexcept { madvise(Pages, Size, MADV_DONTNEED); }
