// The window's controls in memory: what a test does to them and reads from them. Defines window/toolkit.h for
// the native tests in place of window/win32/.
//
// What an administrator could not do (click a disabled button, choose from a menu that does not have the
// entry) fails the test that tries it.
#pragma once

#include <functional>
#include <map>

#include "window/controls.h"

namespace FakeWindow {

// No window, no host window known.
void Reset();

// --- What the administrator does.

void Click(int Id); // a button, check box or option button
void DoubleClick(int List, int Index);
void ChooseItem(int List, int Index);
void RightClick(int Id);
void Type(int TextBox, TextView Text); // replaces the text
void PressEnter(int Id);
void PressDelete(int List);
void ChooseRow(int Row);     // left button; rows count from 0
void RightClickRow(int Row); // -1 is the header, or the empty space below the rows
void PressHeader(int Column);
void Command(int Entry); // a menu entry without its menu

// What is chosen in the menus that pop up next, from the front; nothing when empty.
extern std::vector<int> MenuChoices;
extern std::function<void()> WhileNextMenuIsOpen; // once
// Right click on the row, then the entry.
void ChooseForRow(int Row, int Entry);

// --- What is on the screen.

std::wstring Text(int Id);
bool IsOn(int Id); // a checked or chosen button
bool IsEnabled(int Id);
Lines Items(int List);
int SelectedItem(int List);
std::intptr_t ItemData(int List, int Index);
int TopItem(int List);
Lines Rows();            // "07|Bob|10.0.0.7|50|1", the team last
int SelectedRow();       // -1 for none
std::wstring SortMark(); // "1 up", empty for none
Lines LastMenu();        // of the last menu popped up: "Punt Player", "-", "Slap Player > go away"
bool IsShown();
Rect Area(); // in the host's window
int Page();
// Writes to the grid since the last call.
long GridWrites();
long HourglassTurns();
bool HourglassIsShown();

// --- Long work: after how many entries Cancel is chosen, -1 for never.

extern Long CancelAfter;

// --- Timers. Time passes only here.

Long IntervalOf(int Timer); // 0: not running
void Tick(int Timer);       // fails when it is not running
extern int TimersLeft;      // how many more the system has

// --- The host's side.

extern int PixelsPerInch;
void HostDestroysItsWindow();

} // namespace FakeWindow
