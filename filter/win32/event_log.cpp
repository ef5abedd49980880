// Warnings in the log "Application", under the library's name.
#include "filter/event_log.h"

#include <windows.h>

#include <exception>

#include "filter/win32/failure_text.h"

namespace EventLog {

void Report(const Failure& Failed) noexcept {
    try {
        const std::wstring Text = L"The packet filter does not work, banned addresses are not blocked. " +
                                  FailureText(Failed) + L" It is tried again every few seconds.";
        const HANDLE Log = RegisterEventSourceW(nullptr, L"qrvudpfw");
        if (Log == nullptr) return;
        const wchar_t* Texts[] = {Text.c_str()};
        ReportEventW(Log, EVENTLOG_WARNING_TYPE, 0, 1, nullptr, 1, 0, Texts, nullptr);
        DeregisterEventSource(Log);
    } catch (const std::exception&) {
        // Without memory for the text nothing can be said.
    }
}

} // namespace EventLog
