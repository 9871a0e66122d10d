// The face name that ini/font.ini gives the edit controls: the first word of its first line
// ("face size"; the size is not used).
#pragma once

#include <cstddef>

namespace QzGui
{

// Reads the face into the buffer (empty when the line names none). False when the file does
// not open; that is logged as "open file failed" with the caller's source unit and line.
bool ReadFontIniFace(char* pszFace, size_t nSize, const char* pszSource, int nLine);

} // namespace QzGui
