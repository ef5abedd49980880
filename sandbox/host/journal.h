// What the stand-in host did and saw, line by line: in its window's log pane, in a file and on the standard
// output, so that a person, a script and a test read the same.
#pragma once

#include "host/text.h"

namespace Journal {

// Starts the file anew. Before that, lines go to the standard output alone.
void Open(TextView Path);
void Close();

// Milliseconds since the program's start.
unsigned Elapsed();

// Writes "seconds.milliseconds text"; line breaks in the text become blanks.
void Write(TextView Text);

// The pane that shows the lines too.
using Pane = void (*)(const std::wstring& Line);
void Attach(Pane Shown);

} // namespace Journal
