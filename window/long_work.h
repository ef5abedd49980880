// Work on thousands of entries, which somebody may want to watch, or to end.
#pragma once

#include "lists/progress.h"
#include "window/toolkit.h"

class LongWork {
public:
    explicit LongWork(TextView What, bool HasCancel = true); // "Importing the ban file..."
    // For the work to call; valid while this lives.
    Progress GoOn();
    // To be added to the summary: how far the work came if Cancel ended it, else empty.
    std::wstring Note() const;

private:
    ProgressWindow Shown;
    Long Done = 0, Total = 0;
    bool Ended = false;
};
