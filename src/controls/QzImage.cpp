#include "controls/QzImage.h"

namespace QzGui
{

CQzImage::CQzImage()
{
    m_bShowBack = false;
}

void CQzImage::OnLButtonDown(UINT, POINT)
{
    PlayClickSound();
}

// The dialog draws only visible controls; an image checks neither visibility nor timers.
BOOL CQzImage::Show()
{
    CheckMouseLeave();
    UpdateEffects();
    UpdateState();
    DrawBack();
    DrawBackEffect();
    OnShowImage();
    ShowText();
    DrawFrontEffect();
    return 1;
}

} // namespace QzGui
