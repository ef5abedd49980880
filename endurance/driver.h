// Drives the plug-in's window as an administrator would who answers every question with Yes.
#pragma once

#include <string>

#include <windows.h>

namespace Driver {

// Answers boxes and the file dialog from now on, for this thread, as long as it pumps messages.
void AnswerBoxes();
// Labels so far, of each of which Wine 8 keeps a block of 12 bytes once it was given a font: of the windows
// that were counted, and of all boxes but file dialogs that were answered.
extern long Labels;
void CountLabels(HWND Window);
// Writes a ban file of one line, with which the file dialog is answered from now on. Into the current folder.
void WriteImportFile(HWND Frame, int Id, const std::wstring& Line);

// On a control of the window, at any depth. All of them have the parameters of a step, used or not. Clicks
// and menu entries return when the boxes that they open are closed.
void Type(HWND Frame, int Id, const std::wstring& Text);
// Selects the first item that begins with the text.
void Select(HWND Frame, int List, const std::wstring& Item);
void DoubleClick(HWND Frame, int List, const std::wstring&);
void Click(HWND Frame, int Id, const std::wstring&);
void TakeMenuEntry(HWND Frame, int Id, const std::wstring&);

// A row of a table of what is done.
struct Step {
    void (*Do)(HWND Frame, int Id, const std::wstring& Text);
    int Id;
    const wchar_t* Text;
};

} // namespace Driver
