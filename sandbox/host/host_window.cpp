#include "sandbox/host/host_window.h"

#include <algorithm>

#include <commctrl.h>

#include "sandbox/host/actions.h"
#include "sandbox/host/boxes.h"
#include "sandbox/host/host_menu.h"
#include "sandbox/host/journal.h"
#include "sandbox/host/loaded_plugin.h"
#include "sandbox/host/plugin_area.h"
#include "sandbox/host/request_pipe.h"
#include "sandbox/host/shown_interface.h"

namespace HostWindow {
namespace {

enum ControlId {
    ProfileList = 10,
    PluginArea,
    JournalPane,
    AdministratorBox,
    CommandEdit,
    SendButton = IDOK
};

constexpr UINT_PTR PulseTimer = 1;
constexpr UINT PulseMilliseconds = 100;
constexpr int Margin = 6, ListWidth = 250, JournalHeight = 170, LineHeight = 26;
constexpr std::size_t JournalLimit = 200000;

HWND Main = nullptr;
std::vector<TimedAction> Pending;
std::size_t NextAction = 0;
std::wstring ListText; // what the profile list shows, to redraw only changes

HWND Control(int Id) { return GetDlgItem(Main, Id); }

std::wstring TextOf(HWND Window) {
    std::wstring Text(static_cast<std::size_t>(GetWindowTextLengthW(Window)) + 1, L'\0');
    Text.resize(static_cast<std::size_t>(GetWindowTextW(Window, Text.data(), static_cast<int>(Text.size()))));
    return Text;
}

void ShowLine(const std::wstring& Line) {
    const HWND Pane = Control(JournalPane);
    if (!Pane) return;
    const int Length = GetWindowTextLengthW(Pane);
    const bool IsFull = static_cast<std::size_t>(Length) > JournalLimit;
    SendMessageW(Pane, EM_SETSEL, IsFull ? 0 : static_cast<WPARAM>(Length), Length);
    SendMessageW(Pane, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>((Line + L"\r\n").c_str()));
}

// --- The list of profiles

Long SelectedProfile() {
    const LRESULT Selected = SendMessageW(Control(ProfileList), LB_GETCURSEL, 0, 0);
    const auto& Profiles = Actions::Configured().Profiles;
    return Selected == LB_ERR ? 0 : Profiles[static_cast<std::size_t>(Selected)].Index;
}

// The profile that is shown, when another one is shown now; else the one that was selected.
LRESULT RowToSelect() {
    static Long Known = 0;
    const LRESULT Selected = std::max<LRESULT>(0, SendMessageW(Control(ProfileList), LB_GETCURSEL, 0, 0));
    if (Actions::ShownProfile() == Known) return Selected;
    Known = Actions::ShownProfile();
    return Known ? Known - 1 : Selected;
}

void RefreshList() {
    Lines Rows;
    for (const HostProfile& Profile : Actions::Configured().Profiles)
        Rows.push_back(ToText(Profile.Index) + L"  " + Profile.Name + L" (" +
                       Actions::StateOf(Profile.Index) + L")");
    const std::wstring Text = Join(Rows, L"\n") + L"\n" + ToText(Actions::ShownProfile());
    if (Text == ListText) return;
    ListText = Text;
    const HWND List = Control(ProfileList);
    const LRESULT Selected = RowToSelect();
    SendMessageW(List, LB_RESETCONTENT, 0, 0);
    for (const std::wstring& Row : Rows)
        SendMessageW(List, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Row.c_str()));
    SendMessageW(List, LB_SETCURSEL, static_cast<WPARAM>(Selected), 0);
}

// --- Commands

void SendCommand() {
    const std::wstring Command = Trim(TextOf(Control(CommandEdit)));
    if (Command.empty()) return;
    Actions::Run(L"console " + ToText(SelectedProfile()) + L" " + TextOf(Control(AdministratorBox)) + L" " +
                 Command);
    SetWindowTextW(Control(CommandEdit), L"");
}

void Chosen(int Id, int Notification) {
    if (Id == SendButton) {
        if (GetFocus() == Control(ProfileList))
            Actions::Run(L"load " + ToText(SelectedProfile()));
        else
            SendCommand();
    } else if (Id == ProfileList && Notification == LBN_DBLCLK) {
        Actions::Run(L"load " + ToText(SelectedProfile()));
    } else if (const std::wstring Action = HostMenu::ActionOf(Id, SelectedProfile()); !Action.empty()) {
        Actions::Run(Action);
    } else if (const std::wstring Template = HostMenu::CommandOf(Id); !Template.empty()) {
        SetWindowTextW(Control(CommandEdit), Template.c_str());
        SetFocus(Control(CommandEdit));
    }
    RefreshList();
}

// What is due, one action at a time: an action may open a box, behind which the pulse goes on.
void Pulse() {
    Boxes::Watch();
    ShownInterface::Continue();
    while (NextAction < Pending.size() && Pending[NextAction].Milliseconds <= Journal::Elapsed())
        Actions::Run(Pending[NextAction++].Action);
    RefreshList();
    InvalidateRect(Control(PluginArea), nullptr, FALSE);
}

// --- Layout

void Layout() {
    RECT Client{};
    GetClientRect(Main, &Client);
    const int CommandTop = Client.bottom - Margin - LineHeight;
    const int JournalTop = CommandTop - Margin - JournalHeight;
    const int AreaLeft = 2 * Margin + ListWidth;
    const int AreaHeight = JournalTop - 2 * Margin;
    const int EditLeft = AreaLeft;
    const int ButtonLeft = Client.right - Margin - 80;
    MoveWindow(Control(ProfileList), Margin, Margin, ListWidth, AreaHeight, TRUE);
    MoveWindow(Control(PluginArea), AreaLeft, Margin, Client.right - AreaLeft - Margin, AreaHeight, TRUE);
    MoveWindow(Control(JournalPane), Margin, JournalTop, Client.right - 2 * Margin, JournalHeight, TRUE);
    MoveWindow(Control(AdministratorBox), Margin, CommandTop, ListWidth, 8 * LineHeight, TRUE);
    MoveWindow(Control(CommandEdit), EditLeft, CommandTop, ButtonLeft - Margin - EditLeft, LineHeight - 2,
               TRUE);
    MoveWindow(Control(SendButton), ButtonLeft, CommandTop, 80, LineHeight - 2, TRUE);
    // The plug-in placed its window itself; afterwards it follows the area.
    if (const HWND Embedded = GetWindow(Control(PluginArea), GW_CHILD)) {
        RECT Area{};
        GetClientRect(Control(PluginArea), &Area);
        MoveWindow(Embedded, 2, CaptionHeight, Area.right - 4, Area.bottom - CaptionHeight - 2, TRUE);
    }
}

void MakeControls() {
    struct Made {
        const wchar_t* Class;
        const wchar_t* Text;
        DWORD Style, Extended;
        int Id;
    };
    static constexpr Made All[] = {
        {L"LISTBOX", L"", WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, WS_EX_CLIENTEDGE,
         ProfileList},
        {PluginAreaClass, L"", WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, PluginArea},
        {L"EDIT", L"", WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL,
         WS_EX_CLIENTEDGE, JournalPane},
        {L"COMBOBOX", L"", WS_TABSTOP | CBS_DROPDOWNLIST, 0, AdministratorBox},
        {L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, CommandEdit},
        {L"BUTTON", L"Send", WS_TABSTOP | BS_DEFPUSHBUTTON, 0, SendButton},
    };
    const auto Font = reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT));
    for (const Made& Child : All) {
        const HWND Window = CreateWindowExW(
            Child.Extended, Child.Class, Child.Text, WS_CHILD | WS_VISIBLE | Child.Style, 0, 0, 10, 10, Main,
            reinterpret_cast<HMENU>(static_cast<INT_PTR>(Child.Id)), GetModuleHandleW(nullptr), nullptr);
        SendMessageW(Window, WM_SETFONT, Font, FALSE);
    }
    SendMessageW(Control(JournalPane), EM_SETLIMITTEXT, 4 * JournalLimit, 0);
    SendMessageW(Control(CommandEdit), EM_SETCUEBANNER, TRUE,
                 reinterpret_cast<LPARAM>(L"Remote console command, such as: players"));
}

// --- Window procedures

LRESULT CALLBACK MainProcedure(HWND Window, UINT Message, WPARAM First, LPARAM Second) {
    switch (Message) {
    case WM_SIZE: Layout(); return 0;
    case WM_TIMER: Pulse(); return 0;
    case WM_COMMAND: Chosen(LOWORD(First), HIWORD(First)); return 0;
    case RequestPipe::Arrived: RequestPipe::Answer(Second); return 0;
    case WM_CLOSE:
        KillTimer(Window, PulseTimer);
        Actions::End();
        DestroyWindow(Window);
        return 0;
    case WM_DESTROY: PostQuitMessage(0); return 0;
    default: return DefWindowProcW(Window, Message, First, Second);
    }
}

void RegisterMain() {
    WNDCLASSW Class{};
    Class.lpszClassName = L"SandboxHost";
    Class.lpfnWndProc = MainProcedure;
    Class.hInstance = GetModuleHandleW(nullptr);
    Class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    Class.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    Class.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    RegisterClassW(&Class);
}

} // namespace

HWND Open(const HostConfiguration& Read, std::vector<TimedAction> Script) {
    RegisterMain();
    RegisterPluginArea();
    const int Dpi = static_cast<int>(LoadedPlugin::DotsPerInch(LOGPIXELSX));
    Main = CreateWindowExW(0, L"SandboxHost", Read.Title.c_str(), WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 20,
                           20, MulDiv(1180, Dpi, 96), MulDiv(900, Dpi, 96), nullptr, HostMenu::Create(),
                           GetModuleHandleW(nullptr), nullptr);
    if (!Main) return nullptr;
    MakeControls();
    for (const Administrator& Admin : Read.Administrators)
        SendMessageW(Control(AdministratorBox), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(Admin.Name.c_str()));
    SendMessageW(Control(AdministratorBox), CB_SETCURSEL, 0, 0);
    Journal::Attach(ShowLine);
    Pending = std::move(Script);
    ShowWindow(Main, SW_SHOW);
    Layout();
    Actions::Begin(Read, Control(PluginArea));
    RequestPipe::Listen(Read.Pipe, Main);
    SetTimer(Main, PulseTimer, PulseMilliseconds, nullptr);
    return Main;
}

void Run(HWND Window) {
    for (MSG Message; GetMessageW(&Message, nullptr, 0, 0) > 0;) {
        const bool IsPlugins = IsChild(Control(PluginArea), Message.hwnd);
        if (!IsPlugins && IsDialogMessageW(Window, &Message)) continue;
        TranslateMessage(&Message);
        DispatchMessageW(&Message);
    }
}

} // namespace HostWindow
