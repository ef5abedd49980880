// What the controls report: an identifier and what happened there. The toolkit raises, a table finds the
// handler.
#pragma once

enum class Event : unsigned char {
    Click, // also: a menu entry or list item chosen, with mouse or keyboard
    DblClick,
    Change,
    RightClick, // also the menu key
    Enter,      // the Enter key, in place of the button that belongs to the control
};

// What nobody handles is ignored.
void Raise(int Id, Event What) noexcept;
// A tick of the timer with this identifier.
void RaiseTimer(int Id) noexcept;
// The window is gone, at our wish or with the host's window that held it: all that was kept of it is
// forgotten.
void FrameGone() noexcept;
