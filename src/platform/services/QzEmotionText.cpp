#include "platform/services/QzEmotionText.h"

#include "platform/render/MyBitmap.h"

namespace QzPlatform
{

BOOL DrawEmotionText(int x, int y, DWORD colour, const char* text, IDataIcon* icons,
                     const char* face, int size, int flag, int iconCell, int reserved,
                     int reserved2, int style, DWORD shadowColour, C3_SIZE* out)
{
    const C3_SIZE drawn =
        CMyBitmap::ShowEmotionStringEx(x, y, colour, text, icons, face, size, flag != 0, iconCell,
                                       reserved, reserved2, style, shadowColour, C3_POS{0, 0});
    if (out)
        *out = drawn;
    return text && *text ? TRUE : FALSE;
}

} // namespace QzPlatform
