// Cursors by handle: the shared standard cursors (one handle per IDC_ id, made on first use)
// and cursors loaded from files, with the current cursor.
#pragma once

#include "platform/system/QzWinTypes.h"
#include "platform/system/kernel/HandleTable.h"

#include <map>
#include <string>

namespace QzPlatform
{

struct HostedCursor
{
    WORD standardId = 0; // IDC_ id of a shared cursor, 0 for a file cursor
    std::string file;    // the resolved path of a file cursor
};

class CCursorTable
{
public:
    CCursorTable();

    // The shared handle of a standard id; null for an id that is no standard cursor.
    HCURSOR Standard(WORD id);
    // Null when the table is full.
    HCURSOR AddFile(const std::string& resolvedPath);
    const HostedCursor* Find(HCURSOR cursor) const;
    // False for a bad handle; a shared cursor stays.
    bool Destroy(HCURSOR cursor);

    HCURSOR Current() const { return m_hCurrent; }
    void SetCurrent(HCURSOR cursor) { m_hCurrent = cursor; }

    void Clear();

private:
    CHandleTable<HostedCursor> m_table;
    std::map<WORD, HCURSOR> m_mapStandard;
    HCURSOR m_hCurrent = nullptr;
};

} // namespace QzPlatform
