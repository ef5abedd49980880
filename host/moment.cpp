// Dates and times as texts.
#include "host/moment.h"

std::wstring DateText(const Moment& When) {
    return ToText(When.Year) + L"-" + TwoDigits(When.Month) + L"-" + TwoDigits(When.Day);
}

std::wstring ListTimeText(const Moment& When) {
    return ToText(When.Hour) + L":" + TwoDigits(When.Minute) + L":" + TwoDigits(When.Second);
}

std::wstring LogTimeText(const Moment& When) {
    return TwoDigits(When.Hour) + L":" + TwoDigits(When.Minute) + L":" + TwoDigits(When.Second);
}
