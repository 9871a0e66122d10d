#include "AllocationCounter.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace
{

std::atomic<bool> g_bCounting{false};
std::atomic<int> g_nAllocations{0};

} // namespace

// Never inlined, so that a memory checker that puts its own in their place replaces all of them
// (and then nothing is counted). Left out under AddressSanitizer: the libraries' blocks come from
// its operator new and must go back to its operator delete.
#ifndef __SANITIZE_ADDRESS__
__attribute__((noinline)) void* operator new(size_t size)
{
    if (g_bCounting.load(std::memory_order_relaxed))
        g_nAllocations.fetch_add(1, std::memory_order_relaxed);
    if (void* block = std::malloc(size ? size : 1))
        return block;
    throw std::bad_alloc();
}

__attribute__((noinline)) void operator delete(void* block) noexcept
{
    std::free(block);
}

__attribute__((noinline)) void operator delete(void* block, size_t) noexcept
{
    std::free(block);
}
#endif

CAllocationCounter::CAllocationCounter()
{
    g_nAllocations = 0;
    g_bCounting = true;
}

CAllocationCounter::~CAllocationCounter()
{
    g_bCounting = false;
}

int CAllocationCounter::Count() const
{
    return g_nAllocations.load();
}
