// Drives the plug-in's window as an administrator would who answers every question with Yes.
#pragma once

#include <windows.h>

#include "window/ids.h"

namespace Driver {

// Answers boxes and the file dialog from now on, for this thread, as long as it pumps messages.
void AnswerBoxes();

// What is done in the window, from left to right; 0 and null leave a part out. The item is the first that
// begins with the text. The button may be a menu entry; the one of the import takes the text as its file.
struct Edit {
    int List;
    const wchar_t* Item;
    int TextBox;
    const wchar_t* Text;
    int Button;
};

// Returns when the boxes that it opens are closed.
void Do(HWND Frame, const Edit& Made);

} // namespace Driver
