// The look: the system's styled controls, and the message font at the window's scale.
#include "host/win32/styled.h"
#include "window/win32/native.h"

namespace Native {

namespace {

HMODULE CommonControls = nullptr;
HMODULE Automation = nullptr; // the library that knows who reads the screen
HFONT MessageFont = nullptr;
int Dpi = 96;

int SystemDpi() noexcept {
    const HDC Screen = GetDC(nullptr);
    const int Found = GetDeviceCaps(Screen, LOGPIXELSY);
    ReleaseDC(nullptr, Screen);
    return Found > 0 ? Found : 96;
}

// A host that scales each screen by itself has windows of another scale than the system's.
int DpiOf(HWND Window) noexcept {
    using Ask = UINT(WINAPI*)(HWND);
    const auto Call = reinterpret_cast<Ask>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    const UINT Found = Call != nullptr ? Call(Window) : 0;
    return Found != 0 ? static_cast<int>(Found) : SystemDpi();
}

bool ScreenReaderRuns() noexcept {
    BOOL Runs = FALSE;
    return SystemParametersInfoW(SPI_GETSCREENREADER, 0, &Runs, 0) && Runs;
}

// Some screen readers do not set the flag of one, but listen.
bool ClientsListen() noexcept {
    using Ask = BOOL(WINAPI*)();
    if (Automation == nullptr) return false;
    const auto Call =
        reinterpret_cast<Ask>(reinterpret_cast<void*>(GetProcAddress(Automation, "UiaClientsAreListening")));
    return Call != nullptr && Call();
}

HFONT CreateMessageFont(int WindowDpi) noexcept {
    NONCLIENTMETRICSW Metrics{};
    Metrics.cbSize = sizeof Metrics;
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof Metrics, &Metrics, 0)) return nullptr;
    Metrics.lfMessageFont.lfHeight = MulDiv(Metrics.lfMessageFont.lfHeight, WindowDpi, SystemDpi());
    return CreateFontIndirectW(&Metrics.lfMessageFont);
}

} // namespace

void LoadAppearance() noexcept {
    const Styled WhileItLoads;
    CommonControls = LoadLibraryW(L"comctl32.dll");
    wchar_t Folder[MAX_PATH] = L"";
    GetSystemDirectoryW(Folder, MAX_PATH);
    Automation = LoadLibraryW((std::wstring(Folder) + L"\\UIAutomationCore.dll").c_str());
    if (CommonControls == nullptr) return;
    using Initialise = BOOL(WINAPI*)(const INITCOMMONCONTROLSEX*);
    const auto Call = reinterpret_cast<Initialise>(
        reinterpret_cast<void*>(GetProcAddress(CommonControls, "InitCommonControlsEx")));
    const INITCOMMONCONTROLSEX Wanted{sizeof Wanted, ICC_LISTVIEW_CLASSES | ICC_TAB_CLASSES |
                                                         ICC_STANDARD_CLASSES | ICC_PROGRESS_CLASS};
    if (Call != nullptr) Call(&Wanted);
}

void UnloadAppearance() noexcept {
    ForgetMeasures();
    if (Automation != nullptr) FreeLibrary(Automation);
    Automation = nullptr;
    if (MessageFont != nullptr) DeleteObject(MessageFont);
    MessageFont = nullptr;
    if (CommonControls != nullptr) FreeLibrary(CommonControls);
    CommonControls = nullptr;
}

void ApplyFont(HWND Window) noexcept {
    Dpi = DpiOf(Window);
    ForgetMeasures();
    const HFONT Old = MessageFont;
    MessageFont = CreateMessageFont(Dpi);
    for (const ControlRow& Row : Controls())
        Send(Row.Id, WM_SETFONT, reinterpret_cast<WPARAM>(Font()), FALSE);
    if (Old != nullptr) DeleteObject(Old);
}

HFONT Font() noexcept {
    return MessageFont != nullptr ? MessageFont : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

int DotsPerInch() noexcept { return Dpi; }

bool IsHighContrast() noexcept {
    HIGHCONTRASTW Contrast{};
    Contrast.cbSize = sizeof Contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof Contrast, &Contrast, 0) &&
           (Contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

bool NeedsWords() noexcept { return IsHighContrast() || ScreenReaderRuns() || ClientsListen(); }

} // namespace Native
