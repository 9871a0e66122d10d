#include "platform/system/window/ProcThunkTable.h"

#include "platform/system/kernel/HandleTable.h"

namespace QzPlatform
{

namespace
{

constexpr uint64_t kThunkTag = 0xA5ull << 56;
constexpr size_t kMaxThunks = 4096;

} // namespace

WNDPROC CProcThunkTable::HandleFor(const WindowProcRef& ref)
{
    size_t index = 0;
    while (index < m_vecThunks.size() && !(m_vecThunks[index] == ref))
        ++index;
    if (index == m_vecThunks.size())
    {
        if (index == kMaxThunks)
            return nullptr;
        m_vecThunks.push_back(ref);
    }
    return ToHandle<WNDPROC>(kThunkTag | (index + 1));
}

WindowProcRef CProcThunkTable::Resolve(WNDPROC value, bool callerUnicode) const
{
    const uint64_t bits = FromHandle(value);
    const uint64_t index = bits & 0xFFFF;
    const bool isThunk = (bits & ~0xFFFFull) == kThunkTag && index >= 1;
    if (isThunk && index <= m_vecThunks.size())
        return m_vecThunks[index - 1];
    if (isThunk)
        return WindowProcRef();
    return WindowProcRef::Single(value, callerUnicode);
}

WNDPROC CProcThunkTable::ValueFor(const WindowProcRef& ref, bool callerUnicode)
{
    if (WNDPROC own = ref.Of(callerUnicode))
        return own;
    if (ref.IsEmpty())
        return nullptr;
    return HandleFor(ref);
}

} // namespace QzPlatform
