// What the two ban lists have in common.
#pragma once

#include "host/text.h"
#include "window/toolkit.h"

// Whether the lists are still this profile's: another one may have been loaded while a box was open.
bool ListsShow(Long Index);
// Selects an item (-1: none) and runs the list's click handler, as a click on it would.
void SelectAndShow(const ListBox& List, int Index);
// Takes the selected item out of the list and selects the first one that is left.
void RemoveSelected(const ListBox& List);

// The first item that begins with the text, without regard to case; -1 for none. A longer item that comes
// first is found too, on purpose: "[1] Bob" finds "[1] Bobby".
int FindListItem(const ListBox& List, TextView Text);

// Selects the next item that contains the text and brings it to the top of the list. Without one, tells so
// with NotFound, or offers to begin again when it did not begin at the first item.
void SearchList(const ListBox& List, TextView Text, TextView NotFound);
