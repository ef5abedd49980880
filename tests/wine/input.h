// Real mouse and keyboard events, and what to do while a menu is open.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>

#include "host/text.h"

inline constexpr UINT MenuHandleOf = 0x01E1; // MN_GETHMENU

// --- Input

// Has the windows of this thread work for so long.
inline void Pump(DWORD Milliseconds = 60) {
    const DWORD End = GetTickCount() + Milliseconds;
    do {
        MSG Message;
        while (PeekMessageW(&Message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&Message);
            DispatchMessageW(&Message);
        }
        Sleep(1);
    } while (GetTickCount() < End);
}

// Windows may refuse the foreground to a program that somebody else has started.
inline void TakeForeground(HWND Window) {
    SetWindowPos(Window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    SetForegroundWindow(Window);
}

// Ends the program rather than type Delete and Enter into somebody else's window.
inline void RequireForeground() {
    DWORD Process = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &Process);
    if (Process == GetCurrentProcessId()) return;
    std::puts("Another program has the foreground. Leave keyboard and mouse alone while these tests run.");
    std::exit(1);
}

inline void SendKey(WORD Key, bool Down) {
    if (Down) RequireForeground();
    INPUT Input{};
    Input.type = INPUT_KEYBOARD;
    Input.ki.wVk = Key;
    Input.ki.dwFlags = Down ? 0 : KEYEVENTF_KEYUP;
    SendInput(1, &Input, sizeof Input);
}

// A key, with another one held down.
inline void Press(WORD Key, WORD With = 0) {
    if (With != 0) SendKey(With, true);
    SendKey(Key, true);
    SendKey(Key, false);
    if (With != 0) SendKey(With, false);
}

// Down and Up are the flags of the button's two events (MOUSEEVENTF_LEFTDOWN, ...).
inline void ClickAt(POINT Screen, DWORD Down, DWORD Up) {
    SetCursorPos(Screen.x, Screen.y);
    for (const DWORD Flags : {Down, Up}) {
        INPUT Input{};
        Input.type = INPUT_MOUSE;
        Input.mi.dwFlags = Flags;
        SendInput(1, &Input, sizeof Input);
    }
}

// On the screen, of a part of the window.
inline POINT MiddleOf(HWND Window, RECT Area) {
    MapWindowPoints(Window, nullptr, reinterpret_cast<POINT*>(&Area), 2);
    return {(Area.left + Area.right) / 2, (Area.top + Area.bottom) / 2};
}

// --- What runs while a menu is open: its own message loop keeps ours from going on.

// Runs once, with the menu that opens next.
inline std::function<void(HMENU)> InMenu;

// A timer procedure.
inline void CALLBACK LookForMenu(HWND Window, UINT, UINT_PTR Id, DWORD) {
    const HWND Menu = FindWindowW(L"#32768", nullptr);
    if (Menu == nullptr || !IsWindowVisible(Menu) || !InMenu) return;
    KillTimer(Window, Id);
    std::exchange(InMenu, nullptr)(reinterpret_cast<HMENU>(SendMessageW(Menu, MenuHandleOf, 0, 0)));
}

inline std::wstring CaptionAt(HMENU Menu, int Position) {
    wchar_t Text[200] = L"";
    GetMenuStringW(Menu, static_cast<UINT>(Position), Text, 200, MF_BYPOSITION);
    return Text;
}

// Goes down to the entry with the caption and takes it, with the keyboard.
inline void Choose(HMENU Menu, TextView Caption) {
    for (int Position = 0; Position < GetMenuItemCount(Menu); ++Position) {
        const std::wstring At = CaptionAt(Menu, Position);
        if (!At.empty()) Press(VK_DOWN); // separators are passed over
        if (At == Caption) return Press(VK_RETURN);
    }
    ADD_FAILURE() << "the menu has no such entry";
    Press(VK_ESCAPE);
}
