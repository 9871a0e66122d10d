// Reads ini/Cursor.ini: blocks of exactly three lines, "[name]", "type=N", "cur=value". Lines
// before a header that do not begin with "[" are skipped. The first broken block stops the
// load; the blocks before it stay in the table.
#pragma once

#include "layout/QzCursorEntry.h"
#include "platform/services/QzFile.h"
#include "platform/system/QzSystem.h"

#include <map>
#include <string>

namespace QzGui
{

class CQzCursorReader
{
public:
    // Adds the file's cursors to the table (a later block of the same name replaces the
    // earlier one). False when the file cannot be opened or a block is broken (logged).
    static BOOL Read(const char* pszPath, std::map<std::string, QzCursorEntry>& table);

private:
    static BOOL Fail(QzPlatform::QzFileHandle hFile, const char* pszMessage, const char* pszPath,
                     const char* pszLine);
};

} // namespace QzGui
