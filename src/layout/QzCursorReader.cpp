#include "layout/QzCursorReader.h"

#include "layout/QzLineText.h"
#include "platform/services/QzLog.h"

#include <cstdio>
#include <cstring>

namespace QzGui
{

BOOL CQzCursorReader::Read(const char* pszPath, std::map<std::string, QzCursorEntry>& table)
{
    QzPlatform::CQzFileService& files = QzPlatform::GetFileService();
    QzPlatform::QzFileHandle hFile = files.Open(pszPath, "r");
    if (!hFile)
        return FALSE;
    char szLine[1024];
    while (files.ReadLine(szLine, sizeof(szLine), hFile))
    {
        // Empty lines, comments and any other line before a header.
        if (szLine[0] != '[')
            continue;
        StripLineFeed(szLine);
        char szWord[1024];
        if (std::sscanf(szLine, "[%1023s", szWord) != 1)
            continue;
        char* pszClose = std::strchr(szWord, ']');
        if (!pszClose)
            return Fail(hFile, "data error", pszPath, szLine);
        *pszClose = 0;
        QzCursorEntry entry;
        entry.name = szWord;
        if (files.Scanf(hFile, "type=%d\n", &entry.type) != 1)
            return Fail(hFile, "data error when read type", pszPath, szLine);
        char szCursor[1024];
        if (files.Scanf(hFile, "cur=%1023s\n", szCursor) != 1)
            return Fail(hFile, "data error when read cursor", pszPath, szLine);
        entry.cursor = szCursor;
        table[entry.name] = std::move(entry);
    }
    files.Close(hFile);
    return TRUE;
}

BOOL CQzCursorReader::Fail(QzPlatform::QzFileHandle hFile, const char* pszMessage,
                           const char* pszPath, const char* pszLine)
{
    QzPlatform::GetFileService().Close(hFile);
    QzPlatform::LogEvent(
        pszMessage, "QzCursorReader", __LINE__,
        {QzPlatform::LogText("file_name", pszPath), QzPlatform::LogText("line", pszLine)});
    return FALSE;
}

} // namespace QzGui
