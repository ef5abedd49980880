// What the controls report: an identifier and what happened there. The toolkit raises, a table finds the
// procedure.
#pragma once

enum class Event : unsigned char {
    Click, // also: a menu entry, list item or grid row chosen, with mouse or keyboard
    DblClick,
    Change,
    Leave,       // the focus goes from a text box
    RightClick,  // also the menu key
    ColumnClick, // on a heading of a grid
    Enter,       // the Enter key, in place of the button that belongs to the control
    Delete,      // the Delete key, on a list
    Tick,        // of a timer
};

// Runs the procedure that the table has for the event and reports its failure under its name. An event
// without a procedure is ignored. Detail is the grid's row (from 0; -1: its header, or the space below the
// rows) or column (from 0).
void Raise(int Id, Event What, int Detail = 0) noexcept;
