#include "platform/system/kernel/QzGlobalHeap.h"

#include "platform/system/QzWinKernel.h"

#include <new>
#include <utility>

namespace QzPlatform
{

namespace
{

// More than any clipboard text needs; a larger request is treated as out of memory.
const SIZE_T kMaxBlockSize = SIZE_T(1) << 30;
// Far more moveable blocks than the clipboard ever holds at once.
const size_t kMaxMoveableBlocks = 65536;

} // namespace

CQzGlobalHeap& CQzGlobalHeap::Instance()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CQzGlobalHeap& heap = *new CQzGlobalHeap;
    return heap;
}

CQzGlobalHeap::CQzGlobalHeap() : m_moveable(kGlobalMemoryHandleTag, kMaxMoveableBlocks) {}

CQzGlobalHeap::Block* CQzGlobalHeap::Lookup(HGLOBAL handle) const
{
    if (Block* moveable = m_moveable.Find(FromHandle(handle)))
        return moveable;
    const auto fixed = m_mapFixed.find(handle);
    return fixed == m_mapFixed.end() ? nullptr : fixed->second.get();
}

CQzGlobalHeap::Block* CQzGlobalHeap::Find(HGLOBAL handle)
{
    Block* block = Lookup(handle);
    if (!block)
        SetLastError(ERROR_INVALID_HANDLE);
    return block;
}

bool CQzGlobalHeap::IsValid(HGLOBAL handle) const
{
    return Lookup(handle) != nullptr;
}

HGLOBAL CQzGlobalHeap::Store(std::unique_ptr<Block> block)
{
    if (block->moveable)
        return ToHandle<HGLOBAL>(m_moveable.Add(std::move(block)));
    const HGLOBAL address = block->data.get();
    m_mapFixed.emplace(address, std::move(block));
    return address;
}

HGLOBAL CQzGlobalHeap::Alloc(UINT flags, SIZE_T bytes)
{
    if (bytes > kMaxBlockSize)
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    auto block = std::make_unique<Block>();
    block->size = bytes;
    block->moveable = (flags & GMEM_MOVEABLE) != 0;
    // Blocks are always zeroed, so GMEM_ZEROINIT needs no work of its own. A fixed block of no
    // bytes still gets an address of its own.
    if (bytes > 0 || !block->moveable)
    {
        block->data.reset(new (std::nothrow) unsigned char[bytes > 0 ? bytes : 1]());
        if (!block->data)
        {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return nullptr;
        }
    }
    const HGLOBAL handle = Store(std::move(block));
    if (!handle)
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
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
    if (!m_moveable.Remove(FromHandle(handle)))
        m_mapFixed.erase(handle);
    return nullptr;
}

SIZE_T CQzGlobalHeap::Size(HGLOBAL handle)
{
    const Block* block = Find(handle);
    return block ? block->size : 0;
}

void CQzGlobalHeap::Reset()
{
    m_moveable.Clear();
    m_mapFixed.clear();
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
