#include "tests/fakes/fake_toolkit.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "window/events.h"
#include "window/frmVNT.h"

namespace FakeWindow {

std::vector<int> MenuChoices;
std::function<void()> WhileNextMenuIsOpen;
int TimersLeft;
int PixelsPerInch;
Long CancelAfter;

namespace {

struct Item {
    std::wstring Text;
    std::intptr_t Data = 0;
};

struct State {
    std::wstring Text;
    bool On = false;
    bool Enabled = true;
    std::vector<Item> Items;
    int Selected = -1;
    int Top = 0;
};

struct Row {
    std::map<int, std::wstring> Cells;
    int Team = 0;
};

struct Window {
    std::map<int, State> States;
    std::vector<Row> GridRows;
    std::size_t Columns = 0;
    int GridSelected = -1;
    std::wstring Sorted;
    std::map<int, Long> Timers;
    bool Shown = false;
    std::intptr_t Host = 0;
    Rect Area;
    int ShownPage = -1;
};
std::optional<Window> TheWindow;

Lines Menu;
long Writes, Turns, Turned;

// Nothing that a trap could take for the plug-in's own failure.
[[noreturn]] void Impossible(const char* What, int Id) {
    std::fprintf(stderr, "FakeWindow: %s %d\n", What, Id);
    std::abort();
}

State& At(int Id) {
    if (!TheWindow) Impossible("no window for control", Id);
    return TheWindow->States[Id];
}

// A control that can be used: one that is enabled.
State& Usable(int Id) {
    State& Found = At(Id);
    if (!Found.Enabled) Impossible("disabled control", Id);
    return Found;
}

// For the product: null without a window.
State* StateOf(int Id) { return TheWindow ? &TheWindow->States[Id] : nullptr; }

Item* ItemAt(int Id, int Number) {
    State* Found = StateOf(Id);
    const bool There =
        Found != nullptr && Number >= 0 && static_cast<std::size_t>(Number) < Found->Items.size();
    return There ? &Found->Items[static_cast<std::size_t>(Number)] : nullptr;
}

Row* RowAt(int Number) {
    if (!TheWindow) return nullptr;
    if (Number < 0 || static_cast<std::size_t>(Number) >= TheWindow->GridRows.size())
        Impossible("no grid row", Number);
    return &TheWindow->GridRows[static_cast<std::size_t>(Number)];
}

bool Offers(const std::vector<MenuEntry>& Entries, int Id) {
    return std::any_of(Entries.begin(), Entries.end(), [&](const MenuEntry& Item) {
        return Item.Items.empty() ? Item.Id == Id && !Item.IsSeparator : Offers(Item.Items, Id);
    });
}

void Note(const std::vector<MenuEntry>& Entries, const std::wstring& Before) {
    for (const MenuEntry& Entry : Entries) {
        if (Entry.Items.empty())
            Menu.push_back(Entry.IsSeparator ? L"-" : Before + Entry.Caption);
        else
            Note(Entry.Items, Before + Entry.Caption + L" > ");
    }
}

wchar_t Lower(wchar_t Letter) {
    return Letter >= L'A' && Letter <= L'Z' ? static_cast<wchar_t>(Letter + 0x20) : Letter;
}

bool BeginsWith(TextView Item, TextView Start) {
    return Item.size() >= Start.size() &&
           std::equal(Start.begin(), Start.end(), Item.begin(),
                      [](wchar_t A, wchar_t B) { return Lower(A) == Lower(B); });
}

} // namespace

void Reset() {
    if (TheWindow) Frame::Destroy();
    MenuChoices.clear();
    WhileNextMenuIsOpen = nullptr;
    TimersLeft = 1000;
    PixelsPerInch = 96;
    CancelAfter = -1;
    Menu.clear();
    Writes = Turns = Turned = 0;
}

void Click(int Id) {
    State& Clicked = Usable(Id);
    const Kind What = RowOf(Id).What;
    if (What == Kind::Check) Clicked.On = !Clicked.On;
    for (const OptionGroup& Group : {optBanned, optMethod})
        if (Id >= Group.Id && Id < Group.Id + Group.Size) Group.Choose(Id - Group.Id);
    Raise(Id, Event::Click);
}

void ChooseItem(int List, int Number) {
    if (ItemAt(List, Number) == nullptr) Impossible("no such item", Number);
    At(List).Selected = Number;
    Raise(List, Event::Click);
}

void DoubleClick(int List, int Number) {
    ChooseItem(List, Number);
    Raise(List, Event::DblClick);
}

void RightClick(int Id) { Raise(Id, Event::RightClick); }

void Type(int TextBox, TextView Text) {
    Usable(TextBox).Text = Text;
    Raise(TextBox, Event::Change);
}

void PressEnter(int Id) {
    Usable(Id);
    Raise(Id, Event::Enter);
}

void ChooseRow(int Row) {
    RowAt(Row);
    Raise(ID_mfg, Event::Click, Row);
}

void RightClickRow(int Row) {
    if (Row >= 0) RowAt(Row);
    Raise(ID_mfg, Event::RightClick, Row);
}

void PressHeader(int Column) { Raise(ID_mfg, Event::ColumnClick, Column); }

void PressDelete(int List) { Raise(List, Event::Delete); }

void Command(int Entry) { Raise(Entry, Event::Click); }

void ChooseForRow(int Row, int Entry) {
    MenuChoices.push_back(Entry);
    RightClickRow(Row);
}

std::wstring Text(int Id) { return At(Id).Text; }
bool IsOn(int Id) { return At(Id).On; }
bool IsEnabled(int Id) { return At(Id).Enabled; }

Lines Items(int List) {
    Lines Texts;
    for (const Item& Current : At(List).Items) Texts.push_back(Current.Text);
    return Texts;
}

int SelectedItem(int List) { return At(List).Selected; }
std::intptr_t ItemData(int List, int Number) { return ListBox{List}.ItemData(Number); }
int TopItem(int List) { return At(List).Top; }

Lines Rows() {
    Lines Texts;
    for (Row& Current : TheWindow.value().GridRows) {
        std::wstring Line;
        for (std::size_t Column = 0; Column < TheWindow->Columns; ++Column)
            Line += Current.Cells[static_cast<int>(Column)] + L"|";
        Texts.push_back(Line + std::to_wstring(Current.Team));
    }
    return Texts;
}

int SelectedRow() { return TheWindow.value().GridSelected; }
std::wstring SortMark() { return TheWindow.value().Sorted; }
Lines LastMenu() { return Menu; }
bool IsShown() { return TheWindow && TheWindow->Shown; }
Rect Area() { return TheWindow.value().Area; }
int Page() { return TheWindow.value().ShownPage; }
long GridWrites() { return std::exchange(Writes, 0); }
long HourglassTurns() { return Turned; }
bool HourglassIsShown() { return Turns > 0; }

Long IntervalOf(int Timer) {
    if (!TheWindow) return 0;
    const auto Found = TheWindow->Timers.find(Timer);
    return Found != TheWindow->Timers.end() ? Found->second : 0;
}

void Tick(int Timer) {
    if (IntervalOf(Timer) == 0) Impossible("timer does not run", Timer);
    Raise(Timer, Event::Tick);
}

void HostDestroysItsWindow() {
    TheWindow.reset();
    frmVNT::Gone();
}

} // namespace FakeWindow

// --- toolkit.h

using FakeWindow::At;
using FakeWindow::ItemAt;
using FakeWindow::StateOf;
using FakeWindow::TheWindow;

std::wstring Label::Text() const { return StateOf(Id) ? StateOf(Id)->Text : L""; }
void Label::SetText(TextView Text) const {
    if (StateOf(Id)) At(Id).Text = Text;
}
std::wstring TextBox::Text() const { return Label{Id}.Text(); }
void TextBox::SetText(TextView Text) const { Label{Id}.SetText(Text); }
void TextBox::Edit() const { FakeWindow::Usable(Id); }

bool Button::Enabled() const { return StateOf(Id) && At(Id).Enabled; }
void Button::Enable(bool On) const {
    if (StateOf(Id)) At(Id).Enabled = On;
}

bool CheckBox::Checked() const { return StateOf(Id) && At(Id).On; }
void CheckBox::Check(bool On) const {
    if (StateOf(Id)) At(Id).On = On;
}

int OptionGroup::Chosen() const {
    for (int Number = 0; Number < Size; ++Number)
        if (StateOf(Id + Number) && At(Id + Number).On) return Number;
    return -1;
}
void OptionGroup::Choose(int Number) const {
    for (int Other = 0; Other < Size; ++Other)
        if (StateOf(Id + Other)) At(Id + Other).On = Other == Number;
}

int ListBox::Count() const { return StateOf(Id) ? static_cast<int>(At(Id).Items.size()) : 0; }
std::wstring ListBox::Item(int Number) const { return ItemAt(Id, Number) ? ItemAt(Id, Number)->Text : L""; }
void ListBox::Append(const Lines& Items) const {
    if (!StateOf(Id)) return;
    for (const std::wstring& Text : Items) At(Id).Items.push_back({Text});
}
void ListBox::Remove(int Number) const {
    if (ItemAt(Id, Number) == nullptr) return;
    At(Id).Items.erase(At(Id).Items.begin() + Number);
    // As the system does it: the selection goes with its item and moves with the items above it.
    if (At(Id).Selected == Number)
        At(Id).Selected = -1;
    else if (At(Id).Selected > Number)
        --At(Id).Selected;
}
void ListBox::Fill(const Lines& Items) const {
    if (!StateOf(Id)) return;
    At(Id).Items.clear();
    At(Id).Selected = -1;
    Append(Items);
}
int ListBox::Selected() const { return StateOf(Id) ? At(Id).Selected : -1; }
void ListBox::Select(int Number) const {
    if (StateOf(Id)) At(Id).Selected = ItemAt(Id, Number) ? Number : -1;
}
void ListBox::ShowAtTop(int Number) const {
    if (StateOf(Id)) At(Id).Top = Number;
}
std::intptr_t ListBox::ItemData(int Number) const {
    return ItemAt(Id, Number) ? ItemAt(Id, Number)->Data : 0;
}
void ListBox::SetItemData(int Number, std::intptr_t Data) const {
    if (ItemAt(Id, Number)) ItemAt(Id, Number)->Data = Data;
}
int ListBox::FindPrefix(TextView Text) const {
    for (int Number = 0; Number < Count(); ++Number)
        if (FakeWindow::BeginsWith(Item(Number), Text)) return Number;
    return -1;
}
bool ListBox::Has(TextView Text) const {
    return StateOf(Id) && std::any_of(At(Id).Items.begin(), At(Id).Items.end(),
                                      [&](const auto& Item) { return Item.Text == Text; });
}

GridUpdate::GridUpdate() noexcept {}
GridUpdate::~GridUpdate() = default;
void Grid::SetColumns(std::span<const GridColumn> Columns) const {
    if (TheWindow) TheWindow->Columns = Columns.size();
}
void Grid::SetRowCount(int Count) const {
    if (!TheWindow) return;
    ++FakeWindow::Writes;
    TheWindow->GridRows.resize(static_cast<std::size_t>(Count));
    if (TheWindow->GridSelected >= Count) TheWindow->GridSelected = -1;
}
void Grid::SetCell(int Row, int Column, TextView Text) const {
    if (!TheWindow) return;
    ++FakeWindow::Writes;
    FakeWindow::RowAt(Row)->Cells[Column] = Text;
}
void Grid::FitColumns() const {}
void Grid::SetTeam(int Row, int Team) const {
    if (!TheWindow) return;
    ++FakeWindow::Writes;
    FakeWindow::RowAt(Row)->Team = Team;
}
void Grid::Select(int Row) const {
    if (TheWindow) TheWindow->GridSelected = Row;
}
void Grid::ShowSort(int Column, bool Ascending) const {
    if (TheWindow) TheWindow->Sorted = std::to_wstring(Column) + (Ascending ? L" up" : L" down");
}

void TabControl::Turn(int Page) const {
    if (TheWindow) TheWindow->ShownPage = Page;
}

bool Timer::Start(Long Milliseconds) const {
    if (!TheWindow) return false;
    if (TheWindow->Timers.count(Id) == 0 && FakeWindow::TimersLeft-- <= 0) return false;
    TheWindow->Timers[Id] = Milliseconds;
    return true;
}
void Timer::Stop() const {
    if (TheWindow) TheWindow->Timers.erase(Id);
}

Hourglass::Hourglass() noexcept : Previous(0) {
    ++FakeWindow::Turns;
    ++FakeWindow::Turned;
}
Hourglass::~Hourglass() { --FakeWindow::Turns; }

struct ProgressWindow::State {};
ProgressWindow::ProgressWindow(TextView, bool) {}
ProgressWindow::~ProgressWindow() = default;
bool ProgressWindow::GoesOn(Long Done, Long) { return Done != FakeWindow::CancelAfter; }

int PopUpMenu(const std::vector<MenuEntry>& Entries) {
    using namespace FakeWindow;
    Menu.clear();
    Note(Entries, L"");
    if (const auto Once = std::exchange(WhileNextMenuIsOpen, nullptr)) Once();
    if (MenuChoices.empty()) return 0;
    const int Chosen = MenuChoices.front();
    MenuChoices.erase(MenuChoices.begin());
    if (!Offers(Entries, Chosen)) Impossible("the menu does not offer", Chosen);
    return Chosen;
}

namespace Frame {
void Create(Place) { TheWindow.emplace(); }
bool Exists() { return TheWindow.has_value(); }
void Destroy() {
    if (TheWindow) FakeWindow::HostDestroysItsWindow();
}
void Move(Long X, Long Y, Long Width, Long Height) {
    if (TheWindow) TheWindow->Area = {X, Y, Width, Height};
}
void SetParent(std::intptr_t Host) {
    if (TheWindow) TheWindow->Host = Host;
}
void Show(bool On) {
    if (TheWindow) TheWindow->Shown = On;
}
Size PixelsPerInch() { return {FakeWindow::PixelsPerInch, FakeWindow::PixelsPerInch}; }
} // namespace Frame
