// The message boxes that are open on the host's thread.
#pragma once

namespace Boxes {

// Journals each box once, with its title and text. Called now and then.
void Watch();

// Presses the button that Enter presses, in each open box.
void CloseAll();

} // namespace Boxes
