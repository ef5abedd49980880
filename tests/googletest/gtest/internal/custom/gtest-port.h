// GoogleTest's own notification between threads needs std::mutex, which our compilers for Windows lack. This
// is the place that GoogleTest has for another one; it is found before its empty namesake.
#pragma once

#ifdef _WIN32
#include <windows.h>

#define GTEST_HAS_NOTIFICATION_ 1

namespace testing::internal {

class Notification {
public:
    Notification() : Event(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}
    ~Notification() { CloseHandle(Event); }
    Notification(const Notification&) = delete;
    Notification& operator=(const Notification&) = delete;
    void Notify() { SetEvent(Event); }
    void WaitForNotification() { WaitForSingleObject(Event, INFINITE); }

private:
    HANDLE Event;
};

} // namespace testing::internal
#endif
