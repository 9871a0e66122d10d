#include "platform/system/QzGlobalHeap.h"

#include "platform/system/QzWinKernel.h"

#include <new>
#include <utility>

namespace QzPlatform
{

namespace
{

// More than any clipboard text needs; a larger request is treated as out of memory.
const SIZE_T kMaxBlockSize = SIZE_T(1) << 30;

} // namespace

CQzGlobalHeap& CQzGlobalHeap::Instance()
{
    static CQzGlobalHeap heap;
    return heap;
}

CQzGlobalHeap::Block* CQzGlobalHeap::Find(HGLOBAL handle)
{
    const auto found = m_mapBlocks.find(handle);
    if (found != m_mapBlocks.end())
        return &found->second;
    SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
}

bool CQzGlobalHeap::IsValid(HGLOBAL handle) const
{
    return m_mapBlocks.count(handle) > 0;
}

HGLOBAL CQzGlobalHeap::Alloc(UINT flags, SIZE_T bytes)
{
    if (bytes > kMaxBlockSize)
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    Block block;
    block.size = bytes;
    block.moveable = (flags & GMEM_MOVEABLE) != 0;
    // Blocks are always zeroed, so GMEM_ZEROINIT needs no work of its own. A fixed block of no
    // bytes still gets an address of its own.
    if (bytes > 0 || !block.moveable)
    {
        block.data.reset(new (std::nothrow) unsigned char[bytes > 0 ? bytes : 1]());
        if (!block.data)
        {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return nullptr;
        }
    }
    // Moveable handles end in binary 1000: heap addresses are 16-byte aligned.
    HGLOBAL handle = block.moveable ? reinterpret_cast<HGLOBAL>((++m_nLastId << 4) | 8)
                                    : static_cast<HGLOBAL>(block.data.get());
    m_mapBlocks.emplace(handle, std::move(block));
    return handle;
}

LPVOID CQzGlobalHeap::Lock(HGLOBAL handle)
{
    Block* block = Find(handle);
    if (!block)
        return nullptr;
    if (block->moveable && block->data)
        ++block->lockCount;
    return block->data.get();
}

BOOL CQzGlobalHeap::Unlock(HGLOBAL handle)
{
    Block* block = Find(handle);
    if (!block)
        return FALSE;
    if (!block->moveable)
        return TRUE;
    if (block->lockCount == 0)
    {
        SetLastError(ERROR_NOT_LOCKED);
        return FALSE;
    }
    if (--block->lockCount > 0)
        return TRUE;
    SetLastError(ERROR_SUCCESS);
    return FALSE;
}

HGLOBAL CQzGlobalHeap::Free(HGLOBAL handle)
{
    if (!handle)
        return nullptr;
    if (!Find(handle))
        return handle;
    m_mapBlocks.erase(handle);
    return nullptr;
}

SIZE_T CQzGlobalHeap::Size(HGLOBAL handle)
{
    const Block* block = Find(handle);
    return block ? block->size : 0;
}

void CQzGlobalHeap::Reset()
{
    m_mapBlocks.clear();
}

} // namespace QzPlatform

HGLOBAL GlobalAlloc(UINT uFlags, SIZE_T dwBytes)
{
    return QzPlatform::CQzGlobalHeap::Instance().Alloc(uFlags, dwBytes);
}

LPVOID GlobalLock(HGLOBAL hMem)
{
    return QzPlatform::CQzGlobalHeap::Instance().Lock(hMem);
}

BOOL GlobalUnlock(HGLOBAL hMem)
{
    return QzPlatform::CQzGlobalHeap::Instance().Unlock(hMem);
}

HGLOBAL GlobalFree(HGLOBAL hMem)
{
    return QzPlatform::CQzGlobalHeap::Instance().Free(hMem);
}

SIZE_T GlobalSize(HGLOBAL hMem)
{
    return QzPlatform::CQzGlobalHeap::Instance().Size(hMem);
}
