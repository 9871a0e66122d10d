// Emotion codes in text: "#" two digits "|" two digits (for example "#01|03"), six bytes that
// both edit boxes treat as one unit, drawn as an icon and deleted whole.
#pragma once

namespace QzGui
{

constexpr int QZ_EMOTION_CODE_LENGTH = 6;

// True when the six bytes at pos, all inside text[0..len), form an emotion code.
bool IsEmotionCodeAt(const char* pszText, int nPos, int nLen);

} // namespace QzGui
