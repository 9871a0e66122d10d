// A handle table reuses freed slots oldest first, so a test that needs a new object in the slot
// of a freed one makes and frees objects until one lands there.
#pragma once

#include "platform/system/kernel/HandleTable.h"

#include <cstddef>

// The slot a handle names; every handle table numbers its slots the same way.
template <class H> size_t SlotOf(H handle)
{
    return QzPlatform::CHandleTable<int>::SlotIndex(QzPlatform::FromHandle(handle));
}

// The first object from `make` that sits in the slot of `stale`, freeing the others with
// `release`; a null handle when none gets there.
template <class H, class Make, class Release> H NewInSlotOf(H stale, Make make, Release release)
{
    for (int i = 0; i < 70000; ++i)
    {
        const H next = make();
        if (SlotOf(next) == SlotOf(stale))
            return next;
        release(next);
    }
    return H();
}
