// Global memory blocks (GlobalAlloc and friends), held so that a bad or freed handle is
// recognised. A GMEM_FIXED handle is the block's address, as on Windows (Win32 code uses it as
// the pointer), so fixed blocks are kept by address. A GMEM_MOVEABLE handle comes from a handle
// table (HandleTable.h): no address can equal it, it stays invalid after the block is freed even
// when a new block takes its slot, and its block is reached through GlobalLock.
#pragma once

#include "platform/system/QzWinTypes.h"
#include "platform/system/kernel/HandleTable.h"

#include <memory>
#include <unordered_map>

namespace QzPlatform
{

class CQzGlobalHeap
{
public:
    static CQzGlobalHeap& Instance();

    CQzGlobalHeap();

    HGLOBAL Alloc(UINT flags, SIZE_T bytes);
    LPVOID Lock(HGLOBAL handle);
    BOOL Unlock(HGLOBAL handle);
    HGLOBAL Free(HGLOBAL handle);
    SIZE_T Size(HGLOBAL handle);
    bool IsValid(HGLOBAL handle) const;
    void Reset();

private:
    struct Block
    {
        std::unique_ptr<unsigned char[]> data; // null for an empty moveable block
        SIZE_T size = 0;
        bool moveable = false;
        unsigned lockCount = 0;
    };

    Block* Lookup(HGLOBAL handle) const;
    // Lookup, with ERROR_INVALID_HANDLE when the handle names no block.
    Block* Find(HGLOBAL handle);
    HGLOBAL Store(std::unique_ptr<Block> block);

    CHandleTable<Block> m_moveable;
    std::unordered_map<HGLOBAL, std::unique_ptr<Block>> m_mapFixed;
};

} // namespace QzPlatform
