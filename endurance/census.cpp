#include "endurance/census.h"

#include <windows.h>

#include <psapi.h>

#include <oleauto.h>

#include <algorithm>
#include <cstring>

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

// --- COM's task memory, to which automation strings, arrays and the contents of Variants belong

long TaskBlocks = 0;

class Spy final : public IMallocSpy {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** Object) override {
        *Object = static_cast<IMallocSpy*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    void* STDMETHODCALLTYPE PostAlloc(void* Block) override {
        if (Block != nullptr) ++TaskBlocks;
        return Block;
    }
    // Blocks from before the watch were not counted and are not counted off.
    void* STDMETHODCALLTYPE PreFree(void* Block, BOOL IsSpied) override {
        if (Block != nullptr && IsSpied) --TaskBlocks;
        return Block;
    }

    SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T Size) override { return Size; }
    void STDMETHODCALLTYPE PostFree(BOOL) override {}
    SIZE_T STDMETHODCALLTYPE PreRealloc(void* Block, SIZE_T Size, void** New, BOOL) override {
        *New = Block;
        return Size;
    }
    void* STDMETHODCALLTYPE PostRealloc(void* Block, BOOL) override { return Block; }
    void* STDMETHODCALLTYPE PreGetSize(void* Block, BOOL) override { return Block; }
    SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T Size, BOOL) override { return Size; }
    void* STDMETHODCALLTYPE PreDidAlloc(void* Block, BOOL) override { return Block; }
    int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int Actual) override { return Actual; }
    void STDMETHODCALLTYPE PreHeapMinimize() override {}
    void STDMETHODCALLTYPE PostHeapMinimize() override {}
};

// --- Memory

struct HeapUse {
    long Blocks = 0, Bytes = 0;
};

HeapUse WalkHeaps() {
    HANDLE Heaps[64];
    const DWORD Count = std::min<DWORD>(GetProcessHeaps(64, Heaps), 64);
    HeapUse Found;
    for (DWORD At = 0; At < Count; ++At) {
        PROCESS_HEAP_ENTRY Entry{};
        while (HeapWalk(Heaps[At], &Entry)) {
            if ((Entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0) continue;
            ++Found.Blocks;
            Found.Bytes += static_cast<long>(Entry.cbData);
        }
    }
    return Found;
}

long Committed() {
    PROCESS_MEMORY_COUNTERS Memory{};
    Memory.cb = sizeof Memory;
    GetProcessMemoryInfo(GetCurrentProcess(), &Memory, sizeof Memory);
    return static_cast<long>(Memory.PagefileUsage / 1024);
}

constexpr SIZE_T SomeBytes = 256 * 1024;

void* MakePages() {
    void* const Pages = VirtualAlloc(nullptr, SomeBytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    return std::memset(Pages, 1, SomeBytes);
}

void* MakeBlock() { return std::memset(HeapAlloc(GetProcessHeap(), 0, SomeBytes), 1, SomeBytes); }
void DropBlock(void* Block) { HeapFree(GetProcessHeap(), 0, Block); }

void* MakeWindow() {
    return CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
}

} // namespace

const std::vector<Kind> Kinds = {
    {"handles", Handles, 2, [] { return static_cast<void*>(CreateEventW(nullptr, FALSE, FALSE, nullptr)); },
     [](void* Made) { CloseHandle(Made); }, 1},
    {"windows", Windows, 0, MakeWindow, [](void* Made) { DestroyWindow(static_cast<HWND>(Made)); }, 1},
    {"menus", Menus, 0, [] { return static_cast<void*>(CreatePopupMenu()); },
     [](void* Made) { DestroyMenu(static_cast<HMENU>(Made)); }, 1},
    {"GDI objects", GdiObjects, 2, [] { return static_cast<void*>(CreateSolidBrush(RGB(1, 2, 3))); },
     [](void* Made) { DeleteObject(Made); }, 1},
    {"USER objects", [] { return static_cast<long>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS)); },
     0, MakeWindow, [](void* Made) { DestroyWindow(static_cast<HWND>(Made)); }, 1},
    {"task memory blocks", [] { return TaskBlocks; }, 0,
     [] { return static_cast<void*>(SysAllocString(L"a string")); },
     [](void* Made) { SysFreeString(static_cast<BSTR>(Made)); }, 1},
    {"heap blocks", [] { return WalkHeaps().Blocks; }, 100, MakeBlock, DropBlock, 1},
    {"heap bytes", [] { return WalkHeaps().Bytes; }, 64 * 1024, MakeBlock, DropBlock, SomeBytes},
    {"committed KB", Committed, 2048, MakePages, [](void* Made) { VirtualFree(Made, 0, MEM_RELEASE); },
     SomeBytes / 1024},
};

void Begin() {
    static Spy Only;
    CoRegisterMallocSpy(&Only);
}

bool IsCounted(const Kind& Tried) {
    constexpr long Pieces = 8;
    void* Made[Pieces];
    const long Before = Tried.Count();
    for (void*& Item : Made) Item = Tried.Make();
    const long With = Tried.Count();
    for (void* const Item : Made) Tried.Drop(Item);
    const long Allowed = Tried.Unit - 1; // pages and blocks also come and go by themselves
    return With - Before >= Pieces * Tried.Unit - Allowed && Tried.Count() - Before <= Allowed;
}

long CountOf(const std::string& Name) { return std::ranges::find(Kinds, Name, &Kind::Name)->Count(); }

std::vector<long> Take() {
    std::vector<long> Counts;
    for (const Kind& Counter : Kinds) Counts.push_back(Counter.Count());
    return Counts;
}

} // namespace Census
