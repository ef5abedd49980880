// How long something takes.
#pragma once

#include <windows.h>

#include <functional>

inline double Milliseconds(const std::function<void()>& Timed) {
    LARGE_INTEGER Start, End, Frequency;
    QueryPerformanceFrequency(&Frequency);
    QueryPerformanceCounter(&Start);
    Timed();
    QueryPerformanceCounter(&End);
    return static_cast<double>(End.QuadPart - Start.QuadPart) * 1000.0 /
           static_cast<double>(Frequency.QuadPart);
}
