#include "endurance/task_memory.h"

#include <windows.h>

#include <objbase.h>

namespace TaskMemory {

namespace {

long Blocks = 0;

class Spy final : public IMallocSpy {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** Object) override {
        *Object = static_cast<IMallocSpy*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    void* STDMETHODCALLTYPE PostAlloc(void* Block) override {
        if (Block != nullptr) ++Blocks;
        return Block;
    }
    // Blocks from before the watch were not counted and are not counted off.
    void* STDMETHODCALLTYPE PreFree(void* Block, BOOL IsSpied) override {
        if (Block != nullptr && IsSpied) --Blocks;
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

} // namespace

void Watch() {
    static Spy Only;
    CoRegisterMallocSpy(&Only);
}

long Alive() { return Blocks; }

} // namespace TaskMemory
