// Work on thousands of entries, which somebody may want to watch, or to end.
#include "window/long_work.h"

LongWork::LongWork(TextView What, bool HasCancel) : Shown(What, HasCancel) {}

Progress LongWork::GoOn() {
    return [this](Long DoneNow, Long TotalNow) {
        Done = DoneNow;
        Total = TotalNow;
        Ended = !Shown.GoesOn(Done, Total);
        return !Ended;
    };
}

std::wstring LongWork::Note() const {
    return Ended ? L"\r\n\r\nCancelled after " + ToText(Done) + L" of " + ToText(Total) + L"."
                 : std::wstring();
}
