// Warnings in the log "Application", under the library's name.
#include "filter/event_log.h"

#include <windows.h>

#include <exception>

#include "filter/win32/failure_text.h"

namespace EventLog {

void Report(const Failure& Failed) noexcept {
    try {
        const std::wstring Text =
            L"The packet filter could not do what it was asked to; banned addresses may not be blocked. " +
            FailureText(Failed, L" The host must run as administrator (elevated).") +
            L" It is tried again every few seconds.";
        // Whatever the identifier, from 1 to 1000, the message file of the system's EventCreate shows the
        // text.
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
