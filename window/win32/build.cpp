// The windows behind the identifiers.
#include <array>

#include "host/win32/module.h"
#include "window/win32/native.h"

namespace Native {

namespace {

constexpr int FirstId = ID_Frame2;
constexpr int LastId = ID_cmdSlapDelete;
std::array<HWND, LastId - FirstId + 1> Windows{};
int QuietCount = 0;

// What each kind is made of. A group of option buttons ends where the next WS_GROUP begins.
struct ClassRow {
    Kind What;
    const wchar_t* Name;
    DWORD Style;
    DWORD ExtendedStyle;
};
constexpr ClassRow Classes[] = {
    {Kind::Page, PageClass, WS_CLIPSIBLINGS, WS_EX_CONTROLPARENT},
    {Kind::Frame, WC_BUTTONW, WS_VISIBLE | WS_GROUP | BS_GROUPBOX, 0},
    {Kind::Caption, WC_STATICW, WS_VISIBLE | SS_LEFT | SS_NOPREFIX, 0},
    {Kind::HiddenLabel, WC_STATICW, WS_VISIBLE | SS_LEFT | SS_NOPREFIX, 0}, // of no size
    {Kind::Value, WC_STATICW, WS_VISIBLE | SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS | SS_NOTIFY, 0},
    {Kind::Text, WC_EDITW, WS_VISIBLE | WS_GROUP | WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE},
    {Kind::Push, WC_BUTTONW, WS_VISIBLE | WS_GROUP | WS_TABSTOP | BS_PUSHBUTTON, 0},
    {Kind::Option, WC_BUTTONW, WS_VISIBLE | BS_AUTORADIOBUTTON, 0},
    {Kind::OptionStart, WC_BUTTONW, WS_VISIBLE | WS_GROUP | WS_TABSTOP | BS_AUTORADIOBUTTON, 0},
    {Kind::Check, WC_BUTTONW, WS_VISIBLE | WS_GROUP | WS_TABSTOP | BS_AUTOCHECKBOX, 0},
    {Kind::List, WC_LISTBOXW,
     WS_VISIBLE | WS_GROUP | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
     WS_EX_CLIENTEDGE},
    {Kind::Grid, WC_LISTVIEWW,
     WS_VISIBLE | WS_GROUP | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS, WS_EX_CLIENTEDGE},
    {Kind::Tab, WC_TABCONTROLW, WS_VISIBLE | WS_GROUP | WS_TABSTOP | WS_CLIPSIBLINGS, 0},
};

const ClassRow& ClassOf(Kind What) noexcept {
    for (const ClassRow& Row : Classes)
        if (Row.What == What) return Row;
    return Classes[0];
}

HWND& Slot(int Id) noexcept { return Windows[static_cast<std::size_t>(Id - FirstId)]; }

DWORD StyleOf(const ControlRow& Row, DWORD Usual) noexcept {
    // A reason may take the lines that the page has to spare; the page draws it.
    constexpr DWORD Drawing = SS_TYPEMASK | SS_ENDELLIPSIS;
    return Row.Id == ID_lblReason ? (Usual & ~Drawing) | SS_OWNERDRAW : Usual;
}

void Build(const ControlRow& Row, HWND Root) {
    const ClassRow& Class = ClassOf(Row.What);
    const HWND Parent = Row.Parent != 0 ? WindowOf(Row.Parent) : Root;
    Slot(Row.Id) = CreateWindowExW(
        Class.ExtendedStyle, Class.Name, Row.Caption, WS_CHILD | StyleOf(Row, Class.Style), 0, 0, 0, 0,
        Parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(Row.Id)), Module::Instance(), nullptr);
    if (Slot(Row.Id) == nullptr) Fail(ErrorNumber::OutOfMemory, L"A control could not be created.");
}

void AddTabs() {
    int Page = 0;
    for (const ControlRow& Row : Controls()) {
        if (Row.What != Kind::Page) continue;
        std::wstring Caption = Row.Caption;
        TCITEMW Item{};
        Item.mask = TCIF_TEXT;
        Item.pszText = Caption.data();
        Send(ID_stMain, TCM_INSERTITEMW, static_cast<WPARAM>(Page++), &Item);
    }
}

} // namespace

HWND WindowOf(int Id) noexcept { return Id < FirstId || Id > LastId ? nullptr : Slot(Id); }

int IdOf(HWND Window) noexcept {
    for (const ControlRow& Row : Controls())
        if (Window != nullptr && WindowOf(Row.Id) == Window) return Row.Id;
    return 0;
}

std::optional<Kind> KindOf(int Id) noexcept {
    for (const ControlRow& Control : Controls())
        if (Control.Id == Id) return Control.What;
    return std::nullopt;
}

void BuildControls(HWND Root) {
    for (const ControlRow& Row : Controls()) Build(Row, Root);
    AddTabs();
}

void ForgetControls() noexcept { Windows.fill(nullptr); }

Quiet::Quiet() noexcept { ++QuietCount; }
Quiet::~Quiet() { --QuietCount; }
bool Quiet::Now() noexcept { return QuietCount != 0; }

} // namespace Native
