// What the list boxes have in common: selecting with details, removing, searching.
#pragma once

#include "host/text.h"
#include "window/toolkit.h"

// A list, and what shows the details of its selected item.
struct DetailedList {
    ListBox Box;
    const wchar_t* Procedure; // the name under which ShowDetails reports
    void (*ShowDetails)();
};

// Selects an item (-1: none) and shows its details, as a click on it would. A failure to show them is
// reported and ends here.
void SelectAndShow(const DetailedList& List, int Item);
// Selects the first item, if there is one.
void SelectFirst(const DetailedList& List);
// Takes an item out of the list (-1: none); if it was the selected one, the first is selected. Use
// SelectAndShow afterwards: where many items go, the details of each are not worth reading.
void DropItem(const ListBox& List, int Item);
// The first item that begins with the text, without regard to case; -1 for none. A longer item that comes
// first is found too, on purpose: "[1] Bob" finds "[1] Bobby".
int FindListItem(const ListBox& List, TextView Text);

// Selects the next item that contains the text and brings it to the top of the list. Without one, says so
// with NotFound, or offers to begin again if the search did not begin at the first item.
void SearchList(const DetailedList& List, TextView Text, TextView NotFound);
