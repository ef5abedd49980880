// rundll32 qrvudpfw.dll,ShowState [FILE]: shows a person what the packet filter does, in a box with the first
// addresses of each port, or all of it in a file.
#include <windows.h>

#include <exception>
#include <limits>
#include <string>

#include "filter/win32/engine_view.h"
#include "filter/win32/failure_text.h"
#include "version.h"

namespace {

constexpr std::size_t AddressesInBox = 10;

bool IsElevated() {
    HANDLE Token = nullptr;
    TOKEN_ELEVATION Elevation{};
    DWORD Size = 0;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &Token)) return false;
    GetTokenInformation(Token, TokenElevation, &Elevation, sizeof Elevation, &Size);
    CloseHandle(Token);
    return Elevation.TokenIsElevated != 0;
}

std::wstring ProgramOf(DWORD Process) {
    wchar_t Path[MAX_PATH] = L"";
    DWORD Length = MAX_PATH;
    if (const HANDLE Opened = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, Process)) {
        if (!QueryFullProcessImageNameW(Opened, 0, Path, &Length)) Length = 0;
        CloseHandle(Opened);
        return L" " + std::wstring(Path, Length);
    }
    return {};
}

std::wstring Dotted(std::uint32_t Address) {
    std::wstring Text = std::to_wstring(Address >> 24);
    for (const unsigned Shift : {16U, 8U, 0U}) Text += L'.' + std::to_wstring(Address >> Shift & 0xFF);
    return Text;
}

// The rules are sorted by process, port and address.
std::wstring RulesText(const std::vector<HeldRule>& Rules, std::size_t MostAddresses) {
    std::wstring Text;
    for (auto First = Rules.begin(); First != Rules.end();) {
        auto Last = First;
        while (Last != Rules.end() && Last->Process == First->Process &&
               Last->Blocked.Port == First->Blocked.Port)
            ++Last;
        const auto Count = static_cast<std::size_t>(Last - First);
        Text += L"\r\nProcess " + std::to_wstring(First->Process) + ProgramOf(First->Process) + L"\r\nPort " +
                std::to_wstring(First->Blocked.Port) + L", blocked addresses: " + std::to_wstring(Count) +
                L"\r\n";
        for (std::size_t Index = 0; Index < Count && Index < MostAddresses; ++Index)
            Text += L"  " + Dotted(First[static_cast<std::ptrdiff_t>(Index)].Blocked.Address) + L"\r\n";
        if (Count > MostAddresses) Text += L"  ...\r\n";
        First = Last;
    }
    return Text.empty() ? L"\r\nNo process has rules there.\r\n" : Text;
}

std::wstring StateText(std::size_t MostAddresses) {
    const EngineView View = ViewEngine();
    std::wstring Text = L"Vantor packet filter " VANTOR_VERSION_TEXT L"\r\n\r\nThis view is elevated: ";
    Text += IsElevated() ? L"yes\r\n" : L"no\r\n";
    Text += L"Asked: " + (View.Library.empty() ? L"no engine" : View.Library);
    Text += View.IsSandbox ? L", which is the sandbox's and blocks no packet of this machine\r\n" : L"\r\n";
    if (View.Failed)
        return Text + L"Windows Filtering Platform: not reachable. " +
               FailureText(View.Failed, L" This view needs an elevated command prompt.") + L"\r\n";
    Text += L"Windows Filtering Platform: reachable\r\n" + RulesText(View.Rules, MostAddresses);
    Text += L"\r\nPackets dropped by these rules, as far as Windows remembers: ";
    return Text + (View.Dropped ? std::to_wstring(*View.Dropped) : L"unknown") + L"\r\n";
}

// A path with blanks comes in quotes, as it was typed.
std::wstring Unquoted(const wchar_t* Given) {
    std::wstring Path = Given == nullptr ? L"" : Given;
    std::erase(Path, L'"');
    return Path;
}

// UTF-16 with a byte order mark, as the system's own editor writes and reads it.
bool WriteFileWhole(const std::wstring& Path, const std::wstring& Text) {
    const HANDLE File = CreateFileW(Path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (File == INVALID_HANDLE_VALUE) return false;
    const std::wstring Marked = L'\xFEFF' + Text;
    const DWORD Size = DWORD{sizeof(wchar_t)} * static_cast<DWORD>(Marked.size());
    DWORD Written = 0;
    const bool IsWritten = WriteFile(File, Marked.data(), Size, &Written, nullptr) && Written == Size;
    CloseHandle(File);
    return IsWritten;
}

} // namespace

extern "C" void CALLBACK ShowStateW(HWND Owner, HINSTANCE, const wchar_t* Given, int) {
    try {
        const std::wstring Path = Unquoted(Given);
        const bool IsForFile = !Path.empty();
        std::wstring Text = StateText(IsForFile ? std::numeric_limits<std::size_t>::max() : AddressesInBox);
        if (IsForFile && WriteFileWhole(Path, Text)) return;
        if (IsForFile) Text = L"The file cannot be written.";
        MessageBoxW(Owner, Text.c_str(), L"Packet filter", MB_OK | MB_ICONINFORMATION);
    } catch (const std::exception&) {
        MessageBoxW(Owner, L"There is not enough memory.", L"Packet filter", MB_OK | MB_ICONERROR);
    }
}
