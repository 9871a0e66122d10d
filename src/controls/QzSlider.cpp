#include "controls/QzSlider.h"

#include "controls/QzLookHash.h"

#include "layout/IQzGuiWndInfo.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzAniStore.h"
#include "platform/services/QzNumeric.h"
#include "platform/services/QzText.h"

#include <algorithm>
#include <climits>

namespace QzGui
{

namespace
{

// Where a slider created without PreSetParam says so.
constexpr int kNoPresetLine = 40;
constexpr const char* kSource = "QzSlider";
// 2^31: the first float past the int range.
constexpr float kIntLimit = 2147483648.0f;

int TruncToInt(float fValue)
{
    if (fValue >= kIntLimit)
        return INT_MAX;
    if (fValue < -kIntLimit)
        return INT_MIN;
    return static_cast<int>(fValue);
}

int64_t Length(LONG nStart, LONG nEnd)
{
    return static_cast<int64_t>(nEnd) - nStart;
}

int TrackLength(int64_t nWindowLength, int nThumbLength)
{
    return QzPlatform::ClampToInt(std::max<int64_t>(0, nWindowLength - nThumbLength));
}

} // namespace

CQzSlider::CQzSlider()
{
    m_bShowBack = false;
}

CQzSlider::~CQzSlider() = default;

// A missing PreSetParam is reported and creation goes on with the defaults. The thumb length
// comes from "SliderBtnLen" along the slider's direction, or from the thumb's frame when drawn.
BOOL CQzSlider::LoadWndInfo()
{
    if (!m_bPreSetParam)
        LogMsg("ASSERT(m_bPreSetParam) in %d line of %s", kNoPresetLine, kSource);
    if (!CQzCtrl::LoadWndInfo())
        return 0;
    if (!m_pWndInfo)
        return 1;
    m_nBtnLenH = 0;
    ForgetLook();
    const char* pszLength = m_pWndInfo->GetExtraValue("SliderBtnLen");
    if (!pszLength)
        return 1;
    if (IsHorizontal())
        m_nBtnLenH = QzPlatform::TextToInt(pszLength);
    else
        m_nBtnLenV = QzPlatform::TextToInt(pszLength);
    return 1;
}

void CQzSlider::PreSetParam(WORD wRange, DWORD nStyle)
{
    m_wRange = wRange;
    m_nStyle = nStyle;
    ForgetLook();
    m_bPreSetParam = 1;
}

void CQzSlider::SetTarget(CQzBaseWindow* pTarget)
{
    if (pTarget)
        m_pTarget = pTarget;
}

void CQzSlider::SetExtraPoint(const POINT* pPoint)
{
    if (pPoint)
        m_ptExtra = *pPoint;
}

// ---------------------------------------------------------------------------------------------
// Value and track

int CQzSlider::GetTrackWidth() const
{
    return TrackLength(Length(m_rcWindow.left, m_rcWindow.right), m_nBtnLenH);
}

int CQzSlider::GetTrackHeight() const
{
    return TrackLength(Length(m_rcWindow.top, m_rcWindow.bottom), m_nBtnLenV);
}

int CQzSlider::GetTrackLength() const
{
    return IsHorizontal() ? GetTrackWidth() : GetTrackHeight();
}

// Without a range or a track every value puts the thumb at 0.
void CQzSlider::SetValue(int nValue, BOOL bNotify)
{
    const int64_t nClamped = std::clamp(nValue, 0, static_cast<int>(m_wRange));
    const int nTrack = GetTrackLength();
    m_nThumbPos = 0;
    if (m_wRange != 0 && nTrack > 0)
        m_nThumbPos = static_cast<int>(nClamped * nTrack / m_wRange);
    ForgetLook();
    if (bNotify)
        Notify(QZ_SLIDER_SET);
}

// The quotient is taken in single precision and rounded half up. A thumb left beyond a track
// that has since shrunk gives a value beyond the range, as it always has.
int CQzSlider::GetValue() const
{
    const int nTrack = GetTrackLength();
    if (m_wRange == 0 || nTrack <= 0)
        return 0;
    const int64_t nProduct = static_cast<int64_t>(m_nThumbPos) * m_wRange;
    return TruncToInt(static_cast<float>(nProduct) / static_cast<float>(nTrack) + 0.5f);
}

void CQzSlider::PlaceThumb(int64_t nPos)
{
    m_nThumbPos = QzPlatform::ClampToInt(std::clamp<int64_t>(nPos, 0, GetTrackLength()));
    ForgetLook();
}

// ---------------------------------------------------------------------------------------------
// Mouse
//
//   message      | condition            | action
//   -------------+----------------------+-----------------------------------------------------
//   button down  |                      | capture, dragging, not moved, remember the point
//   mouse move   | dragging and enabled | thumb follows the mouse along the track, 100, moved
//   button up    | not moved            | thumb centred on the point, 102
//   button up    | moved                | 101
//
// The release does not ask whether the press was on the slider.

void CQzSlider::OnLButtonDown(UINT nFlags, POINT point)
{
    SetCapture();
    m_bDragging = true;
    m_bMoved = false;
    m_ptLast = point;
    CQzCtrl::OnLButtonDown(nFlags, point);
}

// A move that leaves the thumb where it was (at an end of the track, or to the same point)
// still reports and still counts as a drag.
void CQzSlider::OnMouseMove(UINT nFlags, POINT point)
{
    if (m_bDragEnable && m_bDragging)
    {
        const int64_t nDelta = IsHorizontal() ? static_cast<int64_t>(point.x) - m_ptLast.x
                                              : static_cast<int64_t>(point.y) - m_ptLast.y;
        PlaceThumb(m_nThumbPos + nDelta);
        Notify(QZ_SLIDER_DRAG);
        m_ptLast = point;
        m_bMoved = true;
    }
    CQzCtrl::OnMouseMove(nFlags, point);
}

void CQzSlider::OnLButtonUp(UINT nFlags, POINT point)
{
    ReleaseCapture();
    m_bDragging = false;
    if (m_bMoved)
    {
        Notify(QZ_SLIDER_DRAGEND);
    }
    else
    {
        const int64_t nPos = IsHorizontal()
                                 ? static_cast<int64_t>(point.x) - m_rcWindow.left - m_nBtnLenH / 2
                                 : static_cast<int64_t>(point.y) - m_rcWindow.top - m_nBtnLenV / 2;
        PlaceThumb(nPos);
        Notify(QZ_SLIDER_JUMP);
    }
    m_bMoved = false;
    CQzCtrl::OnLButtonUp(nFlags, point);
}

void CQzSlider::Notify(WORD nCode)
{
    if (m_pTarget)
        m_pTarget->SendMessage(IsHorizontal() ? WM_HSCROLL : WM_VSCROLL, nCode, m_nId);
}

// ---------------------------------------------------------------------------------------------
// Drawing

// The thumb's section, place, state and learnt lengths (Show changes the lengths: the digest
// before a Show that learns one differs from the one after).
uint64_t CQzSlider::ThumbLook() const
{
    CQzLookHash hash;
    if (!StartLook(hash))
        return 0;
    hash.Add(uint64_t(uint32_t(m_nThumbPos)) << 32 | m_nStyle);
    hash.Add(uint64_t(uint32_t(m_nBtnLenH)) << 32 | uint32_t(m_nBtnLenV));
    return hash.Get();
}

BOOL CQzSlider::Show()
{
    if (!IsWindowVisible())
        return 0;
    UpdateState();
    CheckMouseLeave();
    UpdateEffects();
    DrawThumb();
    DrawFrontEffect();
    return 1;
}

// The look state's frame (modulo the section's frames, so that a one-frame thumb stays on hover
// and while dragged), centred across the track at the thumb's place along it. A thumb
// length not configured is learnt from the frame: the horizontal one first, the vertical one on
// a later frame once the horizontal one is known.
void CQzSlider::DrawThumb()
{
    const char* pszSection = GetAniName();
    QzPlatform::CAniHandle handle;
    if (!pszSection ||
        !QzPlatform::GetAniStore()->LoadAni(handle, QzPlatform::kControlAniFile, pszSection))
        return;
    const int nFrameCount = handle.GetFrameCount();
    if (nFrameCount <= 0)
        return;
    const int nFrame = m_wState % nFrameCount;
    int nFrameWidth = 0;
    int nFrameHeight = 0;
    handle.GetFrameSize(nFrame, nFrameWidth, nFrameHeight);
    if (m_nBtnLenH == 0 || m_nBtnLenV == 0)
        ForgetLook();
    if (m_nBtnLenH == 0)
        m_nBtnLenH = nFrameWidth;
    else if (m_nBtnLenV == 0)
        m_nBtnLenV = nFrameHeight;

    const int64_t nWidth = Length(m_rcWindow.left, m_rcWindow.right);
    const int64_t nHeight = Length(m_rcWindow.top, m_rcWindow.bottom);
    int64_t x = static_cast<int64_t>(m_rcWindow.left) + m_nThumbPos;
    int64_t y = static_cast<int64_t>(m_rcWindow.top) + m_nThumbPos;
    if (IsHorizontal())
        y = m_rcWindow.top + std::max<int64_t>(0, nHeight / 2 - nFrameHeight / 2);
    else
        x = m_rcWindow.left + std::max<int64_t>(0, nWidth / 2 - nFrameWidth / 2);
    handle.Draw(nFrame, QzPlatform::ClampToInt(x), QzPlatform::ClampToInt(y));
}

} // namespace QzGui
