// Global memory blocks (GlobalAlloc and friends), held in a table so that a bad or freed
// handle is recognised. A GMEM_FIXED handle is the block's address, as on Windows; a
// GMEM_MOVEABLE handle is a number that no address can equal, and its block is reached through
// GlobalLock. Handles are never reused.
#pragma once

#include "platform/system/QzWinTypes.h"

#include <cstdint>
#include <memory>
#include <unordered_map>

namespace QzPlatform
{

class CQzGlobalHeap
{
public:
    static CQzGlobalHeap& Instance();

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

    Block* Find(HGLOBAL handle);

    std::unordered_map<HGLOBAL, Block> m_mapBlocks;
    uintptr_t m_nLastId = 0;
};

} // namespace QzPlatform
