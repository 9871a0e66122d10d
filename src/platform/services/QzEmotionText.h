// The logic library's emotion-text drawing: narrow text with inline emotion codes drawn as icons,
// through CMyBitmap::ShowEmotionStringEx.
#pragma once

#include "platform/render/C3Types.h"
#include "platform/render/DataSet.h"
#include "platform/system/QzSystem.h"

namespace QzPlatform
{

// Draws text (ANSI code page) at (x, y) in colour with the icon set (may be null) and face (null:
// the default face) at size (0 or less: the default size); lines are at least iconCell high.
// flag, reserved, reserved2 and style are passed on and do not change the drawing. out (may be
// null) gets the drawn size. FALSE when nothing was drawn (null or empty text).
BOOL DrawEmotionText(int x, int y, DWORD colour, const char* text, IDataIcon* icons,
                     const char* face, int size, int flag, int iconCell, int reserved,
                     int reserved2, int style, DWORD shadowColour, C3_SIZE* out);

} // namespace QzPlatform
