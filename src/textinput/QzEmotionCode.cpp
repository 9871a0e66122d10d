#include "textinput/QzEmotionCode.h"

namespace QzGui
{

namespace
{

bool IsDigit(char ch)
{
    return ch >= '0' && ch <= '9';
}

} // namespace

bool IsEmotionCodeAt(const char* pszText, int nPos, int nLen)
{
    if (!pszText || nPos < 0 || nLen < QZ_EMOTION_CODE_LENGTH ||
        nPos > nLen - QZ_EMOTION_CODE_LENGTH)
        return false;
    const char* p = pszText + nPos;
    return p[0] == '#' && p[3] == '|' && IsDigit(p[1]) && IsDigit(p[2]) && IsDigit(p[4]) &&
           IsDigit(p[5]);
}

} // namespace QzGui
