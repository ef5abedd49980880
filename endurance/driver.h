// Drives the plug-in's window as an administrator would who answers every question with Yes.
#pragma once

#include <string>

#include <windows.h>

namespace Driver {

// Answers boxes and the file dialog from now on, for this thread.
void AnswerBoxes();
// What the file dialog is answered with.
void ChooseFile(const std::wstring& Path);

// A control of the window, at any depth; null when there is none.
HWND Control(HWND Frame, int Id);
void Type(HWND Frame, int Id, const std::wstring& Text);
// Selects the item that begins with the text, and tells the window; false when there is none.
bool Select(HWND Frame, int List, const std::wstring& Item);
// These return when the boxes that the handler opens are closed.
void Click(HWND Frame, int Id);
void DoubleClick(HWND Frame, int List);
void TakeMenuEntry(HWND Frame, int Id);

} // namespace Driver
