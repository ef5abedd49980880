// The inside of the group boxes: lines of controls, one table for all. Sizes are pixels.
#pragma once

#include <vector>

#include "window/toolkit.h"

struct Placed {
    int Id;
    Rect Area; // in the control's parent
};

// The distance between group boxes, and of everything to the border.
int LayoutGap();

int GroupWidth(int Group); // the least that shows everything
int GroupHeight(int Group, int Width);
// Appends the group box and its controls; the line that can grow takes the height that is left over.
void PlaceGroup(std::vector<Placed>& Out, int Group, const Rect& Area);
// The least height of a list or grid.
int ListHeight();
