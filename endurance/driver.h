// Drives the plug-in's window as an administrator would who answers every question with Yes.
#pragma once

#include <string>

#include <windows.h>

namespace Driver {

// Answers boxes and the file dialog from now on, for this thread.
void AnswerBoxes();
// Writes a ban file, with which the file dialog is answered from now on.
void WriteImportFile(HWND Frame, int Id, const std::wstring& Line);

// On a control of the window, at any depth. Clicks and menu entries return when the boxes that they open are
// closed.
void Type(HWND Frame, int Id, const std::wstring& Text);
// The item that begins with the text.
void Select(HWND Frame, int List, const std::wstring& Item);
void DoubleClick(HWND Frame, int List, const std::wstring&);
void Click(HWND Frame, int Id, const std::wstring&);
void TakeMenuEntry(HWND Frame, int Id, const std::wstring&);

// For tables of what is done.
struct Step {
    void (*Do)(HWND Frame, int Id, const std::wstring& Text);
    int Id;
    const wchar_t* Text;
};

} // namespace Driver
