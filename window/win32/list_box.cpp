// toolkit.h: the list box.
#include <algorithm>

#include "window/win32/native.h"

using Native::Send;

namespace {

// The list scrolls sideways as far as its longest item.
void Widen(int Id, int Width) {
    if (Width > Send(Id, LB_GETHORIZONTALEXTENT))
        Send(Id, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(Width));
}

int WidthOf(TextView Item) { return Measure::TextWidth(Item) + Measure::Scaled(6); }

void Paint(int Id, bool On) {
    Send(Id, WM_SETREDRAW, On);
    if (On) InvalidateRect(Native::WindowOf(Id), nullptr, TRUE);
}

void Add(int Id, const Lines& Items) {
    Paint(Id, false);
    Send(Id, LB_INITSTORAGE, Items.size(), 0);
    int Widest = 0;
    for (const std::wstring& Text : Items) {
        Widest = std::max(Widest, WidthOf(Text));
        Send(Id, LB_ADDSTRING, 0, Text.c_str());
    }
    Widen(Id, Widest);
    Paint(Id, true);
}

} // namespace

int ListBox::Count() const { return static_cast<int>(Send(Id, LB_GETCOUNT)); }

std::wstring ListBox::Item(int Number) const {
    const LRESULT Length = Number < 0 ? LB_ERR : Send(Id, LB_GETTEXTLEN, static_cast<WPARAM>(Number));
    if (Length <= 0) return {};
    std::wstring Text(static_cast<std::size_t>(Length) + 1, L'\0');
    const LRESULT Got = Send(Id, LB_GETTEXT, static_cast<WPARAM>(Number), Text.data());
    Text.resize(Got > 0 ? static_cast<std::size_t>(Got) : 0);
    return Text;
}

void ListBox::Append(const Lines& Items) const {
    Add(Id, Items);
    ShowAtTop(Count() - 1);
}

void ListBox::Remove(int Item) const {
    if (Item >= 0) Send(Id, LB_DELETESTRING, static_cast<WPARAM>(Item));
}

void ListBox::Fill(const Lines& Items) const {
    Paint(Id, false);
    Send(Id, LB_RESETCONTENT);
    Send(Id, LB_SETHORIZONTALEXTENT);
    Add(Id, Items);
}

int ListBox::Selected() const {
    return Native::WindowOf(Id) != nullptr ? static_cast<int>(Send(Id, LB_GETCURSEL)) : -1;
}

void ListBox::Select(int Item) const { Send(Id, LB_SETCURSEL, static_cast<WPARAM>(Item)); }

void ListBox::ShowAtTop(int Item) const { Send(Id, LB_SETTOPINDEX, static_cast<WPARAM>(Item)); }

std::intptr_t ListBox::ItemData(int Item) const {
    return Send(Id, LB_GETITEMDATA, static_cast<WPARAM>(Item));
}

void ListBox::SetItemData(int Item, std::intptr_t Data) const {
    if (Item >= 0) Send(Id, LB_SETITEMDATA, static_cast<WPARAM>(Item), Data);
}

int ListBox::FindPrefix(TextView Text) const {
    constexpr WPARAM FromTheTop = static_cast<WPARAM>(-1);
    return Native::WindowOf(Id) != nullptr
               ? static_cast<int>(Send(Id, LB_FINDSTRING, FromTheTop, std::wstring(Text).c_str()))
               : -1;
}

// The system looks through tens of thousands of items at once, but without regard to case, and begins again
// at the top.
bool ListBox::Has(TextView Text) const {
    const std::wstring Wanted(Text);
    LRESULT Found = -1;
    for (LRESULT Before = -2; Found > Before;) {
        Before = Found;
        Found = Send(Id, LB_FINDSTRINGEXACT, static_cast<WPARAM>(Before), Wanted.c_str());
        if (Found > Before && Item(static_cast<int>(Found)) == Text) return true;
    }
    return false;
}
