#include "controls/QzCheck.h"

#include "layout/IQzGuiWndInfo.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzText.h"

namespace QzGui
{

namespace
{

// Pixels between a left-aligned caption and the box picture after it.
constexpr int kCaptionGap = 5;
constexpr WORD kDefaultTextFormat = 2;
// The hover look of an unchecked box shares frame 3 with the disabled look.
constexpr WORD kHoverUnchecked = QZ_STATE_DISABLED;

} // namespace

// The box picture follows a left-aligned caption; other alignments keep it at the left.
BOOL CQzCheck::LoadWndInfo()
{
    if (!CQzCtrl::LoadWndInfo())
        return 0;
    const IQzGuiWndInfo* pInfo = m_pWndInfo;
    if (!pInfo)
        return 1;
    const char* pszFormat = pInfo->GetExtraValue("TextFormat");
    m_wTextFormat =
        pszFormat ? static_cast<WORD>(QzPlatform::TextToInt(pszFormat)) : kDefaultTextFormat;
    SetPicOffset(0, 0);
    if (m_wTextFormat == 0 && !m_strText.empty())
        SetPicOffset(CMyBitmap::CalcuTextExtent(m_strText.c_str()).iWidth + kCaptionGap, 0);
    return 1;
}

// The press and the double click both start a press; every message then takes the control's
// own path, so a press plays the click sound a second time in OnLButtonDown.
LRESULT CQzCheck::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK)
        OnPress();
    return CQzCtrl::WindowProc(message, wParam, lParam);
}

void CQzCheck::OnPress()
{
    PlayClickSound();
    if (m_bPressed)
        return;
    SetCapture();
    NotifyParent(QZ_BN_PRESSED);
    m_bPressed = true;
}

void CQzCheck::OnLButtonDown(UINT, POINT)
{
    PlayClickSound();
}

// A release inside the box after a press on it toggles the check, unless the box is disabled;
// the click is reported either way.
void CQzCheck::OnLButtonUp(UINT, POINT)
{
    if (!m_bPressed)
        return;
    ReleaseCapture();
    if (CanToggle() && m_bMouseIn)
        SetCheck(!GetCheck());
    if (m_bMouseIn)
        NotifyParent(QZ_BN_CLICKED);
    m_bPressed = false;
}

// Disabled is look state 3 (the host greys a box with SetCtrlState). The hover look also gives
// state 3 to an unchecked box under the mouse, so such a box takes the window's enabled state.
bool CQzCheck::CanToggle()
{
    return m_bHoverLook ? IsWindowEnabled() != 0 : m_wState != QZ_STATE_DISABLED;
}

// With the hover look: frame 3 or 4 under the mouse (unchecked, checked), else 0 or 1. A
// disabled box keeps its disabled look.
WORD CQzCheck::UpdateState()
{
    if (!m_bHoverLook || !IsWindowEnabled())
        return m_wState;
    if (m_bMouseIn)
        SetState(m_bCheck ? QZ_STATE_HOVER_CHECKED : kHoverUnchecked);
    else
        SetState(m_bCheck ? QZ_STATE_PRESSED : QZ_STATE_NORMAL);
    return m_wState;
}

} // namespace QzGui
