// Ctrl+C in the grid and in the lists.
#include <cstring>

#include "game/mdlVNT.h"
#include "game/show_msg.h"
#include "window/win32/native.h"

namespace Native {

namespace {

// The cells with a tab between two, as a table of another program takes them.
std::wstring SelectedRowText(int Id) {
    const LRESULT Row = Send(Id, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    std::wstring Text;
    for (int Column = 0; Row >= 0 && Column < SortableColumns(); ++Column)
        Text += (Column > 0 ? L"\t" : L"") + CellText(Id, static_cast<int>(Row), Column);
    return Text;
}

void PutOnClipboard(const std::wstring& Text) {
    const std::size_t Size = (Text.size() + 1) * sizeof(wchar_t);
    if (!OpenClipboard(FrameWindow()))
        Fail(ErrorNumber::DeviceUnavailable, L"Another program holds the clipboard.");
    const HGLOBAL Memory = GlobalAlloc(GMEM_MOVEABLE, Size);
    if (Memory != nullptr) {
        std::memcpy(GlobalLock(Memory), Text.c_str(), Size);
        GlobalUnlock(Memory);
        EmptyClipboard();
        // cppcheck-suppress doubleFree ; the system takes the memory only if it succeeds
        if (SetClipboardData(CF_UNICODETEXT, Memory) == nullptr) GlobalFree(Memory);
    }
    CloseClipboard();
}

} // namespace

void CopySelected(int Id) noexcept {
    Trapped(L"Copy", mdlVNT::CurrentProfile, [&] {
        const ListBox List{Id};
        const std::wstring Text = KindOf(Id) == Kind::Grid ? SelectedRowText(Id) : List.Item(List.Selected());
        if (!Text.empty()) PutOnClipboard(Text);
    });
}

} // namespace Native
