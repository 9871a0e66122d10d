#include "controls/QzScrollButton.h"

namespace QzGui
{

namespace
{

// The repeat timer of a held button.
constexpr DWORD kRepeatTimerId = 1;
// lParam of the toggle report.
constexpr LPARAM kToggleLParam = 1;

} // namespace

CQzScrollButton::~CQzScrollButton() = default;

BOOL CQzScrollButton::Attach(CQzBaseWindow* pTarget, BYTE byKind)
{
    SetTarget(pTarget);
    m_byKind = byKind;
    m_bAttached = true;
    return 1;
}

void CQzScrollButton::SetTarget(CQzBaseWindow* pTarget)
{
    if (pTarget)
        m_pTarget = pTarget;
}

// A button without a target ignores the press altogether: no capture, no repeat, no look.
void CQzScrollButton::OnLButtonDown(UINT nFlags, POINT point)
{
    if (!m_pTarget)
        return;
    SetCapture();
    SetTimer(kRepeatTimerId, m_nInterval);
    SendPressStep();
    CQzCtrl::OnLButtonDown(nFlags, point);
}

// The release ends the scroll (the toggle kind has nothing to end), even after a press that
// began elsewhere.
void CQzScrollButton::OnLButtonUp(UINT nFlags, POINT point)
{
    ReleaseCapture();
    KillTimer(kRepeatTimerId);
    if (m_byKind != QZ_SCROLL_TOGGLE)
        SendScroll(SB_ENDSCROLL);
    CQzCtrl::OnLButtonUp(nFlags, point);
}

// Only the line kinds repeat; the page kinds step once per press.
void CQzScrollButton::OnTimer(DWORD)
{
    if (m_byKind == QZ_SCROLL_LINEUP)
        SendScroll(SB_LINEUP);
    else if (m_byKind == QZ_SCROLL_LINEDOWN)
        SendScroll(SB_LINEDOWN);
}

void CQzScrollButton::SendPressStep()
{
    switch (m_byKind)
    {
    case QZ_SCROLL_LINEUP:
        SendScroll(SB_LINEUP);
        break;
    case QZ_SCROLL_LINEDOWN:
        SendScroll(SB_LINEDOWN);
        break;
    case QZ_SCROLL_PAGEUP:
        SendScroll(SB_PAGEUP);
        break;
    case QZ_SCROLL_PAGEDOWN:
        SendScroll(SB_PAGEDOWN);
        break;
    case QZ_SCROLL_TOGGLE:
        m_bToggle = !m_bToggle;
        m_pTarget->SendMessage(QZ_WM_SCROLLTOGGLE, m_bToggle ? 1 : 0, kToggleLParam);
        break;
    default:
        break;
    }
}

void CQzScrollButton::SendScroll(WPARAM nCode)
{
    if (m_pTarget)
        m_pTarget->SendMessage(WM_VSCROLL, nCode, 0);
}

} // namespace QzGui
