// Where each control lies, computed from the size of the window and the measures of its font.
#pragma once

#include <vector>

#include "window/layout_frames.h"

// Below this size the layout stays as it is and the window has to scroll.
Size SmallestLayout();

// Every control's place; sizes below the smallest count as the smallest.
std::vector<Placed> LayOut(int Width, int Height);
