// Memory by the page, from the system that the test runs on: pages.cpp, or win32/pages.cpp on Windows.
#pragma once

#include <cstddef>

// Zeroed pages, which cost nothing until they are touched; null when there are none left.
void* MapPages(std::size_t Size) noexcept;
// Zeroed again, at the price of those that were touched.
void ZeroPages(void* Pages, std::size_t Size) noexcept;
