// Line helpers shared by the text readers of ini/ files.
#pragma once

#include <cstring>

namespace QzGui
{

// Removes one line ending; a CR LF pair counts as one, as text-mode reading on Windows gives it.
inline void StripLineFeed(char* pszLine)
{
    size_t length = std::strlen(pszLine);
    if (length == 0 || pszLine[length - 1] != '\n')
        return;
    pszLine[--length] = 0;
    if (length > 0 && pszLine[length - 1] == '\r')
        pszLine[length - 1] = 0;
}

// ";" or "//" at the start of the line.
inline bool IsCommentLine(const char* pszLine)
{
    return pszLine[0] == ';' || (pszLine[0] == '/' && pszLine[1] == '/');
}

} // namespace QzGui
