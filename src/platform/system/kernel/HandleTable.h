// A table of objects named by handles that carry a generation count. A handle holds a tag (which
// table), the slot and the generation the slot had when the object was stored; removing the
// object bumps the generation, so an old handle never names the object that later takes the
// slot. Handles are numbers, never addresses: a stale handle finds nothing instead of freed
// memory. Their top byte is the tag, so they are no valid address either.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

namespace QzPlatform
{

// The tag of each table of the hosted system. Every table has its own, so that a handle of one
// kind (a font, say) never names an object of another kind that sits in the same slot.
enum HandleTag : uint8_t
{
    kWindowHandleTag = 0x11,
    kInputContextHandleTag,
    kCursorHandleTag,
    kFontHandleTag,
    kRegionHandleTag,
    kGlobalMemoryHandleTag,
    kFileHandleTag,
    kModuleHandleTag,
};

template <class H> H ToHandle(uint64_t value)
{
    return reinterpret_cast<H>(static_cast<uintptr_t>(value));
}

template <class H> uint64_t FromHandle(H handle)
{
    return static_cast<uint64_t>(reinterpret_cast<uintptr_t>(handle));
}

template <class T> class CHandleTable
{
public:
    CHandleTable(uint8_t tag, size_t maxSlots) : m_byTag(tag), m_nMaxSlots(maxSlots) {}

    // Stores the object and returns its handle; 0 when every slot is taken. Freed slots are
    // reused oldest first, which keeps a just-freed slot out of use for as long as possible.
    uint64_t Add(std::unique_ptr<T> object)
    {
        size_t index = m_vecSlots.size();
        if (!m_dqFree.empty())
        {
            index = m_dqFree.front();
            m_dqFree.pop_front();
        }
        else if (m_vecSlots.size() < m_nMaxSlots)
            m_vecSlots.push_back(Slot());
        else
            return 0;
        m_vecSlots[index].pObject = std::move(object);
        return MakeHandle(index);
    }

    T* Find(uint64_t handle) const
    {
        const Slot* slot = SlotOf(handle);
        return slot ? slot->pObject.get() : nullptr;
    }

    // Takes the object out (the caller decides when it dies) and retires the handle.
    std::unique_ptr<T> Remove(uint64_t handle)
    {
        const Slot* slot = SlotOf(handle);
        if (!slot)
            return nullptr;
        const size_t index = static_cast<size_t>(slot - m_vecSlots.data());
        return Retire(index);
    }

    // Live handles in slot order.
    std::vector<uint64_t> Handles() const
    {
        std::vector<uint64_t> handles;
        for (size_t i = 0; i < m_vecSlots.size(); ++i)
        {
            if (m_vecSlots[i].pObject)
                handles.push_back(MakeHandle(i));
        }
        return handles;
    }

    // Removes every object; no handle given out before stays valid.
    void Clear()
    {
        for (size_t i = 0; i < m_vecSlots.size(); ++i)
        {
            if (m_vecSlots[i].pObject)
                Retire(i);
        }
    }

    static size_t SlotIndex(uint64_t handle)
    {
        return static_cast<size_t>(handle & kIndexMask) - 1;
    }

private:
    static constexpr uint64_t kIndexMask = 0xFFFFFF;

    struct Slot
    {
        std::unique_ptr<T> pObject;
        uint32_t nGeneration = 1;
    };

    uint64_t MakeHandle(size_t index) const
    {
        return (static_cast<uint64_t>(m_byTag) << 56) |
               (static_cast<uint64_t>(m_vecSlots[index].nGeneration) << 24) | (index + 1);
    }

    const Slot* SlotOf(uint64_t handle) const
    {
        if ((handle >> 56) != m_byTag)
            return nullptr;
        const uint64_t position = handle & kIndexMask;
        if (position == 0 || position > m_vecSlots.size())
            return nullptr;
        const Slot& slot = m_vecSlots[position - 1];
        const auto generation = static_cast<uint32_t>(handle >> 24);
        if (!slot.pObject || slot.nGeneration != generation)
            return nullptr;
        return &slot;
    }

    std::unique_ptr<T> Retire(size_t index)
    {
        Slot& slot = m_vecSlots[index];
        std::unique_ptr<T> object = std::move(slot.pObject);
        ++slot.nGeneration;
        m_dqFree.push_back(index);
        return object;
    }

    uint8_t m_byTag;
    size_t m_nMaxSlots;
    std::vector<Slot> m_vecSlots;
    std::deque<size_t> m_dqFree;
};

} // namespace QzPlatform
