// What the two ban lists have in common.
#pragma once

#include "host/text.h"
#include "window/toolkit.h"

// Whether the lists are still this profile's: another one may have been loaded while a box was open.
bool ListsShow(Long Index);
// Selects an item (-1: none) and runs the list's click handler, as a click on it would.
void SelectAndShow(const ListBox& List, int Index);
// Takes an item out of the list (-1: none); when it was the selected one, selects the first that is left.
void RemoveItem(const ListBox& List, int Index);
void RemoveSelected(const ListBox& List);
// Whether the list has exactly this item.
bool HasItem(const ListBox& List, TextView Text);

// The first item that begins with the text, without regard to case; -1 for none. A longer item that comes
// first is found too, on purpose: "[1] Bob" finds "[1] Bobby".
int FindListItem(const ListBox& List, TextView Text);

// Selects the next item that contains the text and brings it to the top of the list. Without one, tells so
// with NotFound, or offers to begin again when it did not begin at the first item.
void SearchList(const ListBox& List, TextView Text, TextView NotFound);
