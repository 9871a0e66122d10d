// Reading the extra keys of a window record (keys that only some window classes know).
#pragma once

#include "layout/IQzGuiWndInfo.h"
#include "platform/services/QzText.h"

namespace QzGui
{

// The decimal value of an extra key of the record, when the record gives the key.
inline bool ReadExtraInt(const IQzGuiWndInfo* pInfo, const char* pszKey, int* pValue)
{
    const char* pszText = pInfo->GetExtraValue(pszKey);
    if (!pszText)
        return false;
    *pValue = QzPlatform::TextToInt(pszText);
    return true;
}

} // namespace QzGui
