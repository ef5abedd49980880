// A dialog template: words, strings, and controls on four-byte boundaries.
#include "host/win32/dialog_template.h"

#include <cstring>

DialogTemplate::DialogTemplate(TextView Title, short Width, short Height, WORD Controls) {
    DLGTEMPLATE Header{};
    Header.style = DS_MODALFRAME | DS_SETFONT | WS_POPUP | WS_CAPTION | WS_SYSMENU;
    Header.cdit = Controls;
    Header.cx = Width;
    Header.cy = Height;
    Append(&Header, sizeof Header);
    Word(0); // no menu
    Word(0); // the dialog class
    Text(Title);
    AppendFont();
}

void DialogTemplate::Control(TextView Class, WORD Id, DWORD Style, TextView Caption, const RECT& Area) {
    while (Bytes.size() % 4 != 0) Bytes.push_back(0);
    DLGITEMTEMPLATE Item{};
    Item.style = Style | WS_CHILD | WS_VISIBLE;
    Item.x = static_cast<short>(Area.left);
    Item.y = static_cast<short>(Area.top);
    Item.cx = static_cast<short>(Area.right - Area.left);
    Item.cy = static_cast<short>(Area.bottom - Area.top);
    Item.id = Id;
    Append(&Item, sizeof Item);
    Text(Class);
    Text(Caption);
    Word(0); // no creation data
}

const DLGTEMPLATE* DialogTemplate::Get() const noexcept {
    return reinterpret_cast<const DLGTEMPLATE*>(Bytes.data());
}

// As message boxes and the plug-in's window have it.
void DialogTemplate::AppendFont() {
    NONCLIENTMETRICSW Metrics{};
    Metrics.cbSize = sizeof Metrics;
    const bool Known = SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof Metrics, &Metrics, 0) != FALSE;
    const HDC Screen = GetDC(nullptr);
    const int Points = MulDiv(-Metrics.lfMessageFont.lfHeight, 72, GetDeviceCaps(Screen, LOGPIXELSY));
    ReleaseDC(nullptr, Screen);
    Word(static_cast<WORD>(Known && Points > 0 ? Points : 8));
    Text(Known ? Metrics.lfMessageFont.lfFaceName : L"MS Shell Dlg");
}

void DialogTemplate::Append(const void* Data, std::size_t Size) {
    const std::size_t At = Bytes.size();
    Bytes.resize(At + Size);
    std::memcpy(Bytes.data() + At, Data, Size);
}

void DialogTemplate::Word(WORD Value) { Append(&Value, sizeof Value); }

void DialogTemplate::Text(TextView Value) {
    Append(Value.data(), Value.size() * sizeof(wchar_t));
    Word(0);
}
