#include "controls/QzButton.h"

#include "layout/IQzGuiWndInfo.h"
#include "layout/QzCursorMgr.h"

namespace QzGui
{

namespace
{

// The one button that never takes the mouse capture on a press.
constexpr DWORD kNoCaptureId = 1289;

} // namespace

// States of a press, by message:
//
//   message        | m_bPressed | action
//   ---------------+------------+---------------------------------------------------------
//   button down    | false      | click sound, look 1, capture, 0xF5 to the parent, pressed
//   button down    | true       | click sound, look 1; nothing is sent
//   button up      | true       | look 0, release the capture, code 0 if the mouse is in
//   button up      | false      | look 0 (nothing is sent)
//   double click   | any        | code 5 to the parent
//
// The mouse-in flag is cleared by the frame's mouse-leave check, so dragging off the button
// and releasing there sends no click.
LRESULT CQzButton::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const UINT nFlags = static_cast<UINT>(wParam);
    switch (message)
    {
    case WM_LBUTTONDOWN:
        return OnPress(nFlags, point);
    case WM_LBUTTONUP:
        OnRelease(nFlags, point);
        break;
    case WM_LBUTTONDBLCLK:
        NotifyParent(QZ_BN_DBLCLK);
        return 1;
    default:
        break;
    }
    return CQzCtrl::WindowProc(message, wParam, lParam);
}

LRESULT CQzButton::OnPress(UINT nFlags, POINT point)
{
    CQzCtrl::OnLButtonDown(nFlags, point);
    if (m_bPressed)
        return 1;
    if (m_nId != kNoCaptureId)
        SetCapture();
    NotifyParent(QZ_BN_PRESSED);
    m_bPressed = true;
    return 1;
}

void CQzButton::OnRelease(UINT nFlags, POINT point)
{
    CQzCtrl::OnLButtonUp(nFlags, point);
    if (!m_bPressed)
        return;
    ReleaseCapture();
    if (m_bMouseIn)
        NotifyParent(QZ_BN_CLICKED);
    m_bPressed = false;
}

void CQzButton::ChangeCursor(const char* pszName)
{
    if (!pszName || (m_pWndInfo && m_pWndInfo->TestFlag(WNDINFO_FLAG_CURSOR)))
        return;
    CQzCursorMgr* pCursorMgr = GetCursorMgr();
    if (!pCursorMgr)
        return;
    pCursorMgr->SetCursorByName(pszName);
}

} // namespace QzGui
