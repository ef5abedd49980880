// What the files of this folder share: the windows behind the identifiers, and the look.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <type_traits>

#include "host/text.h"
#include "window/controls.h"

namespace Native {

// --- The windows; null while the frame is not there.

HWND FrameWindow() noexcept;
HWND WindowOf(int Id) noexcept;
// The identifier of one of our controls; 0 for any other window.
int IdOf(HWND Window) noexcept;
// What the control is; absent for any other identifier.
std::optional<Kind> KindOf(int Id) noexcept;

template <class T> LRESULT Send(int Id, UINT Message, WPARAM W, T L) noexcept {
    const HWND Window = WindowOf(Id);
    if (Window == nullptr) return 0;
    if constexpr (std::is_pointer_v<T>)
        return SendMessageW(Window, Message, W, reinterpret_cast<LPARAM>(L));
    else
        return SendMessageW(Window, Message, W, static_cast<LPARAM>(L));
}
inline LRESULT Send(int Id, UINT Message, WPARAM W = 0) noexcept { return Send<LPARAM>(Id, Message, W, 0); }

// The controls of the table, as children of the frame and of the pages.
void BuildControls(HWND Root);
void ForgetControls() noexcept;

// While one lives, what the controls report is our own doing and no event.
class Quiet {
public:
    Quiet() noexcept;
    ~Quiet();
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;
    static bool Now() noexcept;
};

// --- The look (appearance.cpp): visual styles where the system has them, the message font at the window's
// scale.

void LoadAppearance() noexcept;
void UnloadAppearance() noexcept;
// Takes the font of the frame's scale and gives it to every control.
void ApplyFont(HWND Window) noexcept;
HFONT Font() noexcept;
int DotsPerInch() noexcept;
// Lets the font go that texts are measured with (measure.cpp).
void ForgetMeasures() noexcept;
bool IsHighContrast() noexcept;
// Whether somebody reads the screen who may not see colours: under high contrast, with a screen reader, or
// with any other client of the accessibility interfaces.
bool NeedsWords() noexcept;

// --- Pages (page.cpp): they look like the inside of the tab control.

bool RegisterPageClass() noexcept;
void UnregisterPageClass() noexcept;
inline constexpr const wchar_t* PageClass = L"frmVNT.Page";
void ShowPage(int Page) noexcept;
// The tab strip comes before its pages in the Tab order, which is the z-order: so it lies above them, with a
// hole where they are. After each change of place.
void CutPageHole() noexcept;
// After a change of size or look.
void ForgetPageBackground() noexcept;
// The system's colours, contrast or screen reader have changed.
void OnLookChanged(UINT Message, WPARAM W, LPARAM L) noexcept;

// --- Layout and scrolling (scrolling.cpp).

void ApplyLayout() noexcept;
void Scroll(int Bar, WPARAM Request) noexcept;
void ScrollByWheel(WPARAM Turn) noexcept;
// Brings a control of the frame or of a page into sight.
void ScrollTo(HWND Control) noexcept;
void ForgetScrolling() noexcept;

// --- Messages of the frame and its pages (messages.cpp).

void OnCommand(WPARAM W, LPARAM L) noexcept;
LRESULT OnNotify(const NMHDR* Header) noexcept;
// The Enter key.
void OnEnter(int Focused) noexcept;
void OnTimer(WPARAM Id) noexcept;
void ForgetTimers() noexcept;
constexpr LPARAM ByKeyboard = -1; // instead of the mouse's place
void OnContextMenu(HWND Asked, LPARAM Position) noexcept;

// --- The grid (grid.cpp, grid_columns.cpp).

LRESULT OnGridNotify(const NMHDR* Header) noexcept;
// Raises the right click, with the row at the mouse's place on the screen; null: with the selected row or the
// first, for the menu key.
void OnGridMenu(int Id, const POINT* Mouse) noexcept;
void FitGridColumns(int Id) noexcept;
// The grid is painted again, and has the scroll bars that its rows need.
void ResumePainting() noexcept;
HWND HeaderOf(int Id) noexcept;
// While a row's colour does not tell the team (NeedsWords) a column does, after those that can be sorted by.
bool HasTeamColumn() noexcept;
int SortableColumns() noexcept;
// Adds or removes that column when the answer has changed.
void FitTeamColumn(int Id);
void ShowTeamName(int Id, int Row);
std::wstring CellText(int Id, int Row, int Column);

// --- Tooltips (tooltips.cpp).

void StartTooltips(HWND Root) noexcept;
void StopTooltips() noexcept;
void FitTooltips() noexcept; // to the scale
void OnTooltip(const NMHDR* Header) noexcept;
// The mouse is at this place in the grid: a cell that is cut has a tip.
void TrackCell(POINT Mouse) noexcept;

// --- Keyboard (keyboard.cpp): our keys reach our controls although the message loop is the host's.

void StartKeyboard() noexcept;
void StopKeyboard() noexcept;
inline constexpr UINT KeyOfOurs = WM_APP; // posted to the frame with the key's parameters
void OnKey(WPARAM Key, LPARAM Flags) noexcept;

// Puts the selected row or list item on the clipboard (copy.cpp).
void CopySelected(int Id) noexcept;

// --- Pop-up menus (menu.cpp): where the next one appears, on the screen.

void SetMenuPoint(POINT Screen) noexcept;
void SetMenuPointBelow(const RECT& Box) noexcept; // a row or control

} // namespace Native
