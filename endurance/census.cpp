#include "endurance/census.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace Census {

namespace {

// From the system's table of all handles: Wine answers 0 to a process that asks for its own number.
long Handles() {
    struct Entry {
        USHORT Process, Unused;
        UCHAR Type, Flags;
        USHORT Handle;
        void* Object;
        ULONG Access;
    };
    constexpr ULONG AllHandles = 16;
    using Query = LONG(WINAPI*)(ULONG, void*, ULONG, ULONG*);
    static const auto Ask = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    static std::vector<ULONG> Table(1024 * 1024);
    if (Ask(AllHandles, Table.data(), static_cast<ULONG>(Table.size() * sizeof(ULONG)), nullptr) != 0)
        return 0;
    const auto* const First = reinterpret_cast<const Entry*>(Table.data() + 1);
    return static_cast<long>(std::count_if(First, First + Table[0], [](const Entry& Item) {
        return Item.Process == static_cast<USHORT>(GetCurrentProcessId());
    }));
}

BOOL CALLBACK AddOne(HWND, LPARAM Sum) {
    ++*reinterpret_cast<long*>(Sum);
    return TRUE;
}

BOOL CALLBACK AddWithChildren(HWND Window, LPARAM Sum) {
    EnumChildWindows(Window, AddOne, Sum);
    return AddOne(Window, Sum);
}

// Message-only windows are in no list of the thread's windows.
long Windows() {
    long Sum = 0;
    EnumThreadWindows(GetCurrentThreadId(), AddWithChildren, reinterpret_cast<LPARAM>(&Sum));
    for (HWND Each = nullptr; (Each = FindWindowExW(HWND_MESSAGE, Each, nullptr, nullptr)) != nullptr;)
        if (GetWindowThreadProcessId(Each, nullptr) == GetCurrentThreadId()) ++Sum;
    return Sum;
}

// Wine takes the lower half of a menu's handle for the whole.
long Menus() {
    long Sum = 0;
    for (ULONG_PTR Low = 0x20; Low < 0xFFFF; Low += 2)
        if (IsMenu(reinterpret_cast<HMENU>(Low))) ++Sum;
    return Sum;
}

// From the table that the process shares with the graphics system: Wine answers 0 to GetGuiResources.
long GdiObjects() {
    struct Entry {
        ULONGLONG Object;
        ULONG Owner;
        USHORT Unique;
        UCHAR Type, Flags;
        ULONGLONG User;
    };
    constexpr int TableOffset = 0x94, MostObjects = 0x4000; // in the block that fs:[0x30] points to
    const char* Block = nullptr;
    __asm__("movl %%fs:0x30, %0" : "=r"(Block));
    const Entry* First = nullptr;
    std::memcpy(&First, Block + TableOffset, sizeof First);
    if (First == nullptr) return 0;
    return static_cast<long>(
        std::count_if(First, First + MostObjects, [](const Entry& Item) { return Item.Type != 0; }));
}

// Wine 8 keeps a block of this size for each label that was given a font.
constexpr DWORD LabelSize = 12;

struct HeapUse {
    long Labels = 0, Blocks = 0, Bytes = 0; // blocks and bytes without those of labels
};

HeapUse WalkHeaps() {
    HANDLE Heaps[64];
    const DWORD Count = std::min<DWORD>(GetProcessHeaps(64, Heaps), 64);
    HeapUse Found;
    for (DWORD At = 0; At < Count; ++At) {
        PROCESS_HEAP_ENTRY Entry{};
        while (HeapWalk(Heaps[At], &Entry)) {
            if ((Entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0) continue;
            ++(Entry.cbData == LabelSize ? Found.Labels : Found.Blocks);
            if (Entry.cbData != LabelSize) Found.Bytes += static_cast<long>(Entry.cbData);
        }
    }
    return Found;
}

} // namespace

const std::vector<Kind> Kinds = {
    {"handles", Handles, 2, 0, 1}, // one for a file dialog
    {"windows", Windows, 0},
    {"menus", Menus, 0},
    {"GDI objects", GdiObjects, 2},
    {"heap blocks", [] { return WalkHeaps().Blocks; }, 100},
    {"heap bytes", [] { return WalkHeaps().Bytes; }, 64 * 1024},
    {"blocks of a label's size", [] { return WalkHeaps().Labels; }, 100, 42, 14},
};

long CountOf(const std::string& Name) { return std::ranges::find(Kinds, Name, &Kind::Name)->Count(); }

std::vector<long> Take() {
    std::vector<long> Counts;
    for (const Kind& Counter : Kinds) {
        Counts.push_back(Counter.Count());
        if (Counts.back() == 0) throw std::runtime_error(std::string(Counter.Name) + " are not counted");
    }
    return Counts;
}

} // namespace Census
