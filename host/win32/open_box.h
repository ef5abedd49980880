// What every box and dialog of ours has in common while it is open.
#pragma once

#include <windows.h>

// Lives while a box or dialog is open. The DLL stays loaded, as its code is on the stack; the box stands
// in the middle of the host's window; and in the end the focus is back where it was, which the system
// forgets: it activates the owner and leaves the focus to the owner's own window.
class OpenBox {
public:
    // HostWindow may be null: the box stands where the system puts it.
    explicit OpenBox(HWND HostWindow) noexcept;
    ~OpenBox();
    OpenBox(const OpenBox&) = delete;
    OpenBox& operator=(const OpenBox&) = delete;
    static bool IsOpen() noexcept; // whether one lives

private:
    static LRESULT CALLBACK OnThreadEvent(int Code, WPARAM W, LPARAM L) noexcept;
    void OnActivate(HWND Activated) noexcept;

    OpenBox* const Outer; // boxes may open behind each other
    const HWND Host;
    const HWND Focus;
    HWND Box = nullptr; // once it is there
    HHOOK Hook;
};

// An open menu, the host's or ours, takes mouse and keys.
bool MenuIsOpen() noexcept;
// Puts the box in the middle of the other window, but on its screen as a whole. Does nothing if that one
// cannot be seen.
void MoveToCentre(HWND Box, HWND Host) noexcept;
// A window that has become invisible or disabled meanwhile (another page, another profile) must not take what
// is typed.
void ReturnFocus(HWND Focus) noexcept;
