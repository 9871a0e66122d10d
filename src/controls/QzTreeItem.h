// One item of a tree: its id and place in the hierarchy, its flags, the host's two values, its
// text and tip, and its children (owned, in order). Beside that it keeps what the view needs
// without walking the tree: its position among its siblings, how many rows its children take
// when it is expanded, and running row totals over its children, so that the visible position
// of an item and the item at a visible position are found along one path from the root.
#pragma once

#include "platform/system/QzSystem.h"

#include <cstddef>
#include <string>
#include <vector>

namespace QzGui
{

struct QzTreeItem
{
    DWORD nId = 0;
    QzTreeItem* pParent = nullptr; // null only for the hidden root
    DWORD nLevel = 0;              // the hidden root 0, top-level items 1
    BOOL bExpanded = 0;
    DWORD dwData = 0;
    BOOL bChecked = 0;
    DWORD dwDataEx = 0;
    std::string strText;
    std::string strTip;
    std::vector<QzTreeItem*> vecChildren; // owned

    size_t nIndex = 0;  // position in the parent's vecChildren
    int nChildRows = 0; // rows of the whole subtree below, counted as if this item were expanded

    bool HasChildren() const { return !vecChildren.empty(); }
    // Rows the item takes in the visible order when it is itself visible.
    int GetRows() const { return 1 + (bExpanded ? nChildRows : 0); }
    // Rows of children 0 .. nChild - 1 (nChild up to the child count).
    int RowsBefore(size_t nChild);
    // The child whose rows hold row nRow of the children's rows (nRow below nChildRows).
    size_t ChildAtRow(int nRow);
    // The running totals from child nChild on are out of date.
    void ForgetRowsFrom(size_t nChild);

private:
    // m_vecRowsBefore[i] = RowsBefore(i); only the entries still up to date are kept.
    std::vector<int> m_vecRowsBefore;
};

} // namespace QzGui
