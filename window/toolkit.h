// The controls as the rest of the window sees them: small handles on an identifier of window/ids.h.
// window/win32/ puts them on the system's own controls; the tests keep them in memory.
//
// While the window is not there every operation does nothing and every question returns nothing: a
// box may outlive the window. What the program sets raises no event. Items, rows and
// columns count from 0.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "host/failure.h"
#include "host/text.h"

struct Label {
    int Id;
    std::wstring Text() const;
    void SetText(TextView Text) const;
};

struct TextBox {
    int Id;
    std::wstring Text() const;
    void SetText(TextView Text) const;
    void Edit() const; // takes the focus, with the caret behind the text
};

struct Button {
    int Id;
    bool Enabled() const;
    void Enable(bool On) const;
};

struct CheckBox {
    int Id;
    bool Checked() const;
    void Check(bool On) const;
};

// Option buttons with consecutive identifiers, of which one is chosen.
struct OptionGroup {
    int Id;
    int Size;
    int Chosen() const; // -1 for none
    void Choose(int Element) const;
};

struct ListBox {
    int Id;
    int Count() const;
    std::wstring Item(int Number) const;   // empty past the end
    void Append(const Lines& Items) const; // painted once, and brought into view
    void Remove(int Item) const;           // nothing for -1
    void Fill(const Lines& Items) const;   // instead of all items, painted once
    int Selected() const;                  // -1 for none
    void Select(int Item) const;           // -1 for none
    void ShowAtTop(int Item) const;
    std::intptr_t ItemData(int Item) const;
    void SetItemData(int Item, std::intptr_t Data) const;
    // The first item that begins with the text, without regard to case; -1 for none.
    int FindPrefix(TextView Text) const;
    bool Has(TextView Text) const; // exactly this item
};

enum class Align : unsigned char { Left, Right };

struct GridColumn {
    const wchar_t* Caption;
    const wchar_t* Longest; // the text that always fits, beside the caption
    int Share;              // per cent of the width that is left over once every cell fits
    Align Alignment;        // the first column is always aligned left
};

// A table with one fixed header row above the rows.
struct Grid {
    int Id;
    void SetColumns(std::span<const GridColumn> Columns) const;
    void SetRowCount(int Count) const; // new rows are empty and of no team
    void SetCell(int Row, int Column, TextView Text) const;
    void FitColumns() const;               // to what is in the cells; the first column that grows fits first
    void SetTeam(int Row, int Team) const; // colours the row: 1 light blue, 2 light red
    void Select(int Row) const;            // -1 for none
    void ShowSort(int Column, bool Ascending) const;
};

// While one lives the grid is not painted; afterwards once, if a row has changed.
class GridUpdate {
public:
    GridUpdate() noexcept;
    ~GridUpdate();
    GridUpdate(const GridUpdate&) = delete;
    GridUpdate& operator=(const GridUpdate&) = delete;
};

struct TabControl {
    int Id;
    void Turn(int Page) const;
};

struct Timer {
    int Id;
    bool Start(Long Milliseconds) const; // or gives it a new interval; false when the system has none left
    void Stop() const;
};

// Shows the hourglass pointer while it lives.
class Hourglass {
public:
    Hourglass() noexcept;
    ~Hourglass();
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

private:
    [[maybe_unused]] std::intptr_t Previous; // not every implementation has a pointer to restore
};

// Shows how far long work has come: after one second a small window with what is done, how many of how many,
// a bar and, unless half of the work would be worse than all of it, Cancel. It handles only its own messages:
// no timer, refresh or remote call runs inside the work.
class ProgressWindow {
public:
    explicit ProgressWindow(TextView What, bool HasCancel = true); // "Importing the ban file..."
    ~ProgressWindow();
    ProgressWindow(const ProgressWindow&) = delete;
    ProgressWindow& operator=(const ProgressWindow&) = delete;
    // Called before each entry. Returns false once Cancel has been chosen.
    bool GoesOn(Long Done, Long Total);

private:
    struct State;
    std::unique_ptr<State> Its;
};

struct MenuEntry {
    int Id;
    bool IsSeparator;
    std::wstring Caption;
    std::vector<MenuEntry> Items; // not empty: a sub-menu
    bool IsChecked;
};
// Pops a menu up where the mouse or the keyboard asked for it. Returns the chosen entry, 0 for none.
int PopUpMenu(const std::vector<MenuEntry>& Entries);

// --- What the layout measures, in pixels.

struct Rect {
    int X = 0, Y = 0, Width = 0, Height = 0;
};

struct Size {
    int Width = 0, Height = 0;
};

namespace Measure {
int Scaled(int Pixels96); // pixels at 96 dpi
int LineHeight();
int TextWidth(TextView Text);
int TextHeight(TextView Text, int Width); // broken into lines at the width
Rect TabInterior(const Rect& Outer);
} // namespace Measure

// --- The window as a whole.

namespace Frame {
void Create(Place Where = Place::current()); // hidden, with all controls; error 7 when the system refuses
bool Exists();
void Destroy();
void Move(Long X, Long Y, Long Width, Long Height);
// The window that holds the frame from now on; without a valid one it stands by itself, and so it does when
// the system refuses that one, which is reported.
void SetParent(std::intptr_t Host);
void Show(bool On);
Size PixelsPerInch(); // of the screen
} // namespace Frame
