#include "controls/QzTreeItem.h"

#include <algorithm>

namespace QzGui
{

// The totals are rebuilt lazily from the first stale one: appending children and changing the
// last branch, the usual ways of filling a tree, leave the earlier totals standing.
int QzTreeItem::RowsBefore(size_t nChild)
{
    nChild = std::min(nChild, vecChildren.size());
    if (m_vecRowsBefore.empty())
        m_vecRowsBefore.push_back(0);
    while (m_vecRowsBefore.size() <= nChild)
    {
        const size_t nPrevious = m_vecRowsBefore.size() - 1;
        m_vecRowsBefore.push_back(m_vecRowsBefore.back() + vecChildren[nPrevious]->GetRows());
    }
    return m_vecRowsBefore[nChild];
}

// Every child takes at least one row, so the totals rise strictly and a binary search finds
// the last child starting at or before the row.
size_t QzTreeItem::ChildAtRow(int nRow)
{
    RowsBefore(vecChildren.size());
    const auto end = m_vecRowsBefore.begin() + static_cast<std::ptrdiff_t>(vecChildren.size());
    const auto after = std::upper_bound(m_vecRowsBefore.begin(), end, nRow);
    return static_cast<size_t>(after - m_vecRowsBefore.begin()) - 1;
}

void QzTreeItem::ForgetRowsFrom(size_t nChild)
{
    if (m_vecRowsBefore.size() > nChild)
        m_vecRowsBefore.resize(nChild);
}

} // namespace QzGui
