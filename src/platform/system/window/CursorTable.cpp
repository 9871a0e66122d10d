#include "platform/system/window/CursorTable.h"

#include <algorithm>
#include <iterator>

namespace QzPlatform
{

namespace
{

constexpr size_t kMaxCursors = 65536;

bool IsStandardId(WORD id)
{
    static const WORD kIds[] = {32512, 32513, 32514, 32515, 32516, 32640, 32641, 32642,
                                32643, 32644, 32645, 32646, 32648, 32649, 32650, 32651};
    return std::find(std::begin(kIds), std::end(kIds), id) != std::end(kIds);
}

} // namespace

CCursorTable::CCursorTable() : m_table(kCursorHandleTag, kMaxCursors) {}

HCURSOR CCursorTable::Standard(WORD id)
{
    if (!IsStandardId(id))
        return nullptr;
    const auto found = m_mapStandard.find(id);
    if (found != m_mapStandard.end())
        return found->second;
    auto cursor = std::make_unique<HostedCursor>();
    cursor->standardId = id;
    const auto handle = ToHandle<HCURSOR>(m_table.Add(std::move(cursor)));
    if (handle)
        m_mapStandard[id] = handle;
    return handle;
}

HCURSOR CCursorTable::AddFile(const std::string& resolvedPath)
{
    auto cursor = std::make_unique<HostedCursor>();
    cursor->file = resolvedPath;
    return ToHandle<HCURSOR>(m_table.Add(std::move(cursor)));
}

const HostedCursor* CCursorTable::Find(HCURSOR cursor) const
{
    return m_table.Find(FromHandle(cursor));
}

bool CCursorTable::Destroy(HCURSOR cursor)
{
    const HostedCursor* found = Find(cursor);
    if (!found)
        return false;
    if (found->standardId != 0)
        return true;
    m_table.Remove(FromHandle(cursor));
    if (m_hCurrent == cursor)
        m_hCurrent = nullptr;
    return true;
}

void CCursorTable::Clear()
{
    m_table.Clear();
    m_mapStandard.clear();
    m_hCurrent = nullptr;
}

} // namespace QzPlatform
