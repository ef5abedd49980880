// A local date and time, and the two ways in which the plug-in writes it.
#pragma once

#include "host/text.h"

struct Moment {
    int Year, Month, Day, Hour, Minute, Second;
};

// "2004-07-09"
std::wstring DateText(const Moment& When);
// "9:05:03", as the entries of the lists carry it.
std::wstring ListTimeText(const Moment& When);
// "09:05:03", as the lines of the log carry it.
std::wstring LogTimeText(const Moment& When);
